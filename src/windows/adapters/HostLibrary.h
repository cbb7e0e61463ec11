// One of the host's DLLs, loaded at run time. A DLL or an export that is not
// there is a normal answer: the program then reports it like a failed call.
#pragma once

#include "windows/adapters/Handles.h"

namespace windows {

class HostLibrary {
 public:
  /// Looks for `fileName` in the program's own folder and in the system folder, nowhere else:
  /// a DLL planted in the current folder or on PATH must not get in.
  explicit HostLibrary(const wchar_t* fileName);

  /// Sets `function` to the export of exactly that name, or to null.
  template <typename Function>
  void Find(const char* exportName, Function*& function) const {
    function = reinterpret_cast<Function*>(reinterpret_cast<void*>(Address(exportName)));
  }

 private:
  FARPROC Address(const char* exportName) const;

  Library library_;
};

}  // namespace windows
