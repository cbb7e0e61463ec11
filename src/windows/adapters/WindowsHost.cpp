// Everything outside the program, as it is on a Windows workstation.
#include "windows/adapters/WindowsHost.h"

namespace windows {

WindowsHost::WindowsHost() : components_(&messageLoop_), files_(&messageLoop_), processes_(messageLoop_) {
  // A drive without a disk is an answer to us, not a reason for the system to show a box of its own.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
}

host::Host WindowsHost::Contracts() {
  return {qx32_,  qx32lib_, qxNetDB_,   components_, catalogue_, compactor_,
          files_, drives_,  processes_, shell_,      clock_,     messageLoop_};
}

}  // namespace windows
