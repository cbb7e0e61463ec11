// Everything outside the program, as one bundle that start-up hands down.
#pragma once

#include "host/Components.h"
#include "host/Databases.h"
#include "host/Desktop.h"
#include "host/FileSystem.h"
#include "host/Libraries.h"
#include "host/Processes.h"

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
