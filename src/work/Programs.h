// What every job works with, and external programs: run hidden, with a line in the operation log where they go wrong.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "app/Application.h"
#include "work/Sights.h"

namespace work {

/// The disk, other programs, the screen that must stay alive meanwhile, the log, this program's own folder, the clock,
/// and how far the job is. References only: whoever hands them out keeps the objects alive.
struct Tools {
  host::FileSystem& files;
  host::Processes& processes;
  host::MessageLoop& messageLoop;
  app::OperationLog& log;
  const std::string& programFolder;
  host::Clock& clock;
  app::Progress& progress;
};

inline Tools ToolsOf(app::Application& application) {
  const host::Host& host = application.host;
  return {host.files, host.processes,      host.messageLoop, application.log, application.state.StartupDirectory,
          host.clock, application.progress};
}

/// Windows refuses a command line of more characters (UTF-16 units) than this.
inline constexpr std::size_t kLongestCommandLine = 32'766;

struct ProgramEnd {
  bool started = false;
  std::optional<std::uint32_t> exitCode;  ///< nothing when it could not be had
  std::string description;                ///< what went wrong, with the command line; empty after success
  std::string systemError;                ///< why it was not started, where the system has said so
  bool Succeeded() const { return exitCode == 0u; }
  /// What went wrong, in all words that are known.
  std::string Cause() const {
    return description + (description.empty() || systemError.empty() ? "" : "; ") + systemError;
  }
  /// Done when the program was started, whatever came of it; a failure otherwise.
  base::Outcome Started() const { return started ? base::Outcome() : base::Failure(Cause()); }
};

/// Starts a command hidden and waits for its end, while the user interface is served and the job's progress is seen by
/// `sight`. Nothing is logged.
ProgramEnd RunAndWait(const Tools& tools, const std::string& command, host::Where where = host::Where::ProgramsOnly,
                      const Sight& sight = {});

/// The same; a command that is not started, or ends with another exit code than 0, leaves a warning in the operation
/// log that names it, its exit code and `category` (the job it belongs to): most callers go on regardless, and nothing
/// would tell that data is missing.
ProgramEnd RunProgram(const Tools& tools, const std::string& command, const std::string& category,
                      host::Where where = host::Where::ProgramsOnly, const Sight& sight = {});

/// Splits a job item at its last "\" and runs the name with the folder current; the folder `back` is current
/// afterwards. An item without a folder, or with one that cannot be entered, counts as a program that is not started.
/// What it writes there moves the part of the job that is named for the item, where one is planned.
ProgramEnd RunInItsFolder(const Tools& tools, const std::string& item, const std::string& back,
                          const std::string& category);

/// `name` as one argument of a command line: in quotes when it holds a blank or anything else but
/// letters and digits of ASCII, ".", "_" and "-".
std::string CommandArgument(const std::string& name);

/// Makes a folder current for the time of its life, then another one again.
class CurrentFolderScope {
 public:
  /// `folder` is made current now, where that is possible, and `back` at the end.
  CurrentFolderScope(host::FileSystem& files, const std::string& folder, std::string back);
  ~CurrentFolderScope();
  CurrentFolderScope(const CurrentFolderScope&) = delete;
  CurrentFolderScope& operator=(const CurrentFolderScope&) = delete;

  /// Done when the folder could be made current.
  const base::Outcome& Entered() const { return entered_; }

 private:
  host::FileSystem& files_;
  std::string back_;
  base::Outcome entered_;
};

}  // namespace work
