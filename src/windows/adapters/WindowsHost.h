// Everything outside the program, as it is on a Windows workstation.
#pragma once

#include "host/Host.h"
#include "windows/adapters/AdoCatalogueTable.h"
#include "windows/adapters/Com.h"
#include "windows/adapters/Components.h"
#include "windows/adapters/DaoDatabaseCompactor.h"
#include "windows/adapters/Qx32Library.h"
#include "windows/adapters/Qx32libLibrary.h"
#include "windows/adapters/QxNetDBLibrary.h"
#include "windows/adapters/Win32Clock.h"
#include "windows/adapters/Win32Drives.h"
#include "windows/adapters/Win32FileSystem.h"
#include "windows/adapters/Win32MessageLoop.h"
#include "windows/adapters/Win32Processes.h"
#include "windows/adapters/Win32Shell.h"

namespace windows {

/// Owns all adapters. Made once, on the thread that shows the dialogs; whatever holds one of
/// its components must be gone before it.
class WindowsHost {
 public:
  WindowsHost();

  /// The contracts, valid as long as this object.
  host::Host Contracts();
  /// The loop itself, for the toolkit's filter and modal loops.
  Win32MessageLoop& Loop() { return messageLoop_; }

 private:
  ComApartment apartment_;  // first, so that it outlives every component
  Win32MessageLoop messageLoop_;
  Qx32Library qx32_;
  Qx32libLibrary qx32lib_;
  QxNetDBLibrary qxNetDB_;
  ComComponentFactory components_;
  AdoCatalogueTable catalogue_;
  DaoDatabaseCompactor compactor_;
  Win32FileSystem files_;
  Win32Drives drives_;
  Win32Processes processes_;
  Win32Shell shell_;
  Win32Clock clock_;
};

}  // namespace windows
