// One of the host's DLLs, loaded at run time: its exports, and the texts that go in and come out.
//
// A DLL or an export that is not there is a normal answer: the program then reports it like a failed call.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "base/Outcome.h"
#include "windows/adapters/Results.h"
#include "windows/adapters/Text.h"

namespace windows {

/// One export, of the DLL's own type. Every call of one that is not there fails.
template <typename Function>
class HostExport {
 public:
  /// Calls it and puts what it answers into `answer`. Failed only where there is no such export.
  template <typename... Arguments>
  base::Outcome Ask(long& answer, Arguments... arguments) const {
    if (function_ == nullptr) return Failed(name_, absence_);
    answer = function_(arguments...);
    return {};
  }

  /// Calls it, and takes its answer for a failure where `rule` says so.
  template <typename... Arguments>
  base::Outcome Call(FailsAt rule, Arguments... arguments) const {
    long answer = 0;
    base::Outcome asked = Ask(answer, arguments...);
    return asked.IsDone() ? OutcomeOfAnswer(rule, answer, name_) : asked;
  }

  /// With the DLL's name, such as "QX32.dll _QXGetString@8".
  const std::string& Name() const { return name_; }

 private:
  friend class HostLibrary;

  Function* function_ = nullptr;
  std::string name_;
  DWORD absence_ = ERROR_PROC_NOT_FOUND;
};

class HostLibrary {
 public:
  /// Looks for `fileName` in the program's own folder and in the system folder, nowhere else:
  /// a DLL planted in the current folder or on PATH must not get in.
  explicit HostLibrary(const wchar_t* fileName);

  /// Connects `target` with the export of exactly that name.
  template <typename Function>
  void Find(const char* exportName, HostExport<Function>& target) {
    const FARPROC address = Address(exportName, target.absence_);
    target.function_ = reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
    target.name_ = fileName_ + " " + exportName;
  }

  struct Export {
    const char* name;
    bool found;
  };
  /// What was looked for so far, in that order: an installation is examined by it.
  const std::vector<Export>& Exports() const { return exports_; }
  bool IsLoaded() const { return library_ != nullptr; }

 private:
  FARPROC Address(const char* exportName, DWORD& absence);

  std::string fileName_;
  DWORD loadError_ = ERROR_SUCCESS;
  Library library_;
  std::vector<Export> exports_;
};

/// A buffer for a text that a host library writes.
class AnsiBuffer {
 public:
  /// `capacity` is the number of characters that the host's interface states.
  explicit AnsiBuffer(std::size_t capacity) : capacity_(capacity), bytes_(capacity + kSlack, '\0') {}

  char* Data() { return bytes_.data(); }

  /// The text before the first NUL, at most the stated number of characters, in UTF-8.
  std::string Text() const { return FromCodePage({bytes_.data(), strnlen(bytes_.data(), capacity_)}); }

 private:
  // The libraries know no buffer sizes: they copy what their database holds. What runs over
  // the stated size must land here and not in the rest of the program.
  static constexpr std::size_t kSlack = 4096;

  std::size_t capacity_;
  std::vector<char> bytes_;
};

}  // namespace windows
