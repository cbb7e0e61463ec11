// Starting programs, waiting for them, and seeing which ones run.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/Outcome.h"

namespace host {

enum class WindowStyle {
  Hidden,  ///< no window, no console on the screen
  Normal,  ///< shown and focused
};

/// Where a program is looked for whose command line gives it no path.
enum class Where {
  /// In this executable's own folder, then in the system's folders, then in those of PATH. Never in the current folder,
  /// where others may have put a file of a tool's name.
  ProgramsOnly,
  /// In the current folder before all these: for what the host's own job items name there. The caller has made their
  /// folder current.
  CurrentFolder,
};

/// What is to be done from time to time while a program is waited for, and at once when the wait begins. Returns after
/// how long it wants to be called again.
using Meanwhile = std::function<std::chrono::milliseconds()>;

/// A program that was started. Letting go of the object does not end the program.
class StartedProgram {
 public:
  virtual ~StartedProgram() = default;

  /// Never 0.
  virtual std::uint32_t Id() const = 0;

  /// Waits until the program has ended, however long that takes, while the user interface's events are served and,
  /// where there is one, `meanwhile` is called. Uses no measurable processor time beside that and returns as soon as
  /// the program ends. Returns the exit code; nothing when it cannot be had.
  virtual std::optional<std::uint32_t> Wait(const Meanwhile& meanwhile = {}) = 0;
};

class Processes {
 public:
  virtual ~Processes() = default;

  /// Starts a command line: a program with its arguments, or a batch file. The program gets the text as it stands, a
  /// batch file its own full path as %0.
  ///
  /// A program with a path ("\" or ":") is that file; another one is looked for as `where` says. A name without an
  /// ending stands for ".exe", ".com", ".bat" or ".cmd", in this order in each folder. Of a path with blanks that is
  /// not in quotes the longest that is a file's is meant, of a name the shortest.
  ///
  /// The command interpreter, started by `ProgramsOnly`, looks for what its command names by the same rule, so far as
  /// the system knows one.
  virtual base::Obtained<StartedProgram> Start(const std::string& commandLine, WindowStyle style,
                                               Where where = Where::ProgramsOnly) = 0;

  /// File names of the executables that run now, this one's included. Empty on failure.
  virtual std::vector<std::string> RunningExecutables() = 0;

  /// Whether another instance of this program was running on this machine, in whatever session, when this one started.
  virtual bool HasPreviousInstance() = 0;

  /// Whether this process may do what an administrator may, which Windows withholds from an ordinary start even of
  /// such a user's.
  virtual bool HasAdministratorsRights() = 0;

  /// Ends this process at once.
  [[noreturn]] virtual void EndThisProcess() = 0;
};

}  // namespace host
