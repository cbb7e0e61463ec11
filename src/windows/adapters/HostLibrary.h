// One of the host's DLLs, loaded at run time. A DLL or an export that is not
// there is a normal answer: the program then reports it like a failed call.
#pragma once

#include <vector>

#include "windows/adapters/Handles.h"

namespace windows {

class HostLibrary {
 public:
  /// Looks for `fileName` in the program's own folder and in the system folder, nowhere else:
  /// a DLL planted in the current folder or on PATH must not get in.
  explicit HostLibrary(const wchar_t* fileName);

  /// Sets `function` to the export of exactly that name, or to null.
  template <typename Function>
  void Find(const char* exportName, Function*& function) {
    function = reinterpret_cast<Function*>(reinterpret_cast<void*>(Address(exportName)));
  }

  struct Export {
    const char* name;
    bool found;
  };
  /// What was looked for so far, in that order: an installation is examined by it.
  const std::vector<Export>& Exports() const { return exports_; }
  bool IsLoaded() const { return library_ != nullptr; }

 private:
  FARPROC Address(const char* exportName);

  Library library_;
  std::vector<Export> exports_;
};

}  // namespace windows
