// Everything outside the program, as one bundle that start-up hands down.
#pragma once

#include "host/CatalogueTable.h"
#include "host/Clock.h"
#include "host/Components.h"
#include "host/DatabaseCompactor.h"
#include "host/Drives.h"
#include "host/FileSystem.h"
#include "host/MessageLoop.h"
#include "host/Processes.h"
#include "host/QX32.h"
#include "host/QX32lib.h"
#include "host/QXNetDB.h"
#include "host/Shell.h"

namespace host {

/// References only: whoever builds it owns the objects and keeps them alive.
struct Host {
  QX32& qx32;
  QX32lib& qx32lib;
  QXNetDB& qxNetDB;
  ComponentFactory& components;
  CatalogueTable& catalogue;
  DatabaseCompactor& compactor;
  FileSystem& files;
  Drives& drives;
  Processes& processes;
  Shell& shell;
  Clock& clock;
  MessageLoop& messageLoop;
};

}  // namespace host
