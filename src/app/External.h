// The path table, INI files and external programs.
#pragma once

#include <cstdint>
#include <string>

#include "app/ResultCodes.h"

namespace app {

class Application;

/// The message that callers show when a path-table entry cannot be read.
inline constexpr std::int32_t kPathEntryUnreadable = 60326;

/// Reads the path-table entry `name`. Returns 0, or -1 and leaves `value` alone.
ResultCode GetPathEntry(Application& application, const std::string& name, std::string& value);

/// The text before the first NUL; with `stripPrefix`, first drops everything up to and
/// including the first ":".
std::string CutAtNul(const std::string& text, bool stripPrefix = false);

/// The trimmed value of the first line anywhere in the file that begins with `key` and "=";
/// empty when there is none. Sections do not count, a blank before "=" or the key hides the
/// line, and "*", "?", "#" and "[...]" in the key are wildcards.
std::string ReadIniValue(Application& application, const std::string& folder, const std::string& fileName,
                         const std::string& key);

/// Starts a command hidden and waits for its end. Returns its process ID, 0 when it could
/// not be started. The exit code is not looked at: a failing command counts as run.
std::uint32_t RunAndWait(Application& application, const std::string& command);

/// Makes a job item's folder current for the time of its life, then another one again.
class CurrentFolderScope {
 public:
  /// `folder` is made current now, where that is possible, and `back` at the end.
  CurrentFolderScope(Application& application, const std::string& folder, std::string back);
  ~CurrentFolderScope();
  CurrentFolderScope(const CurrentFolderScope&) = delete;
  CurrentFolderScope& operator=(const CurrentFolderScope&) = delete;

  /// Whether the folder could be made current.
  bool Entered() const { return entered_; }

 private:
  Application& application_;
  std::string back_;
  bool entered_;
};

}  // namespace app
