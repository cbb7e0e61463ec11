// Everything outside the program, as it is on a Windows workstation.
#pragma once

#include "host/Host.h"
#include "windows/adapters/Com.h"
#include "windows/adapters/Components.h"
#include "windows/adapters/Databases.h"
#include "windows/adapters/Libraries.h"
#include "windows/adapters/Win32Desktop.h"
#include "windows/adapters/Win32FileSystem.h"
#include "windows/adapters/Win32Processes.h"

namespace windows {

/// Owns all adapters. Made once, on the thread that shows the dialogs; whatever holds one of
/// its components must be gone before it.
class WindowsHost {
 public:
  WindowsHost() : components_(&messageLoop_), files_(&messageLoop_), processes_(messageLoop_), shell_(messageLoop_) {
    // A drive without a disk is an answer to us, not a reason for the system to show a box of its own.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
  }

  /// The contracts, valid as long as this object.
  host::Host Contracts() {
    return {qx32_,  qx32lib_, qxNetDB_,   components_, catalogue_, compactor_,
            files_, drives_,  processes_, shell_,      clock_,     messageLoop_};
  }
  /// The loop itself, for the toolkit's dialogs and modal loops.
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
