// Starting programs, waiting for them, and seeing which ones run.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Outcome.h"

namespace host {

enum class WindowStyle {
  Hidden,  ///< no window, no console on the screen
  Normal,  ///< shown and focused
};

/// A program that was started. Letting go of the object does not end the program.
class StartedProgram {
 public:
  virtual ~StartedProgram() = default;

  /// Never 0.
  virtual std::uint32_t Id() const = 0;

  /// Waits until the program has ended, however long that takes, while the user
  /// interface's events are served. Uses no measurable processor time and returns as
  /// soon as the program ends. Returns the exit code; nothing when it cannot be had.
  virtual std::optional<std::uint32_t> Wait() = 0;
};

class Processes {
 public:
  virtual ~Processes() = default;

  /// Starts a command line: a program with its arguments, or a batch file. A program
  /// without a path is looked for beside this executable first, then in the current
  /// folder, the system folders and PATH.
  virtual base::Obtained<StartedProgram> Start(const std::string& commandLine, WindowStyle style) = 0;

  /// File names of the executables that run now, this one's included. Empty on failure.
  virtual std::vector<std::string> RunningExecutables() = 0;

  /// Whether another instance of this program was running when this one started.
  virtual bool HasPreviousInstance() = 0;

  /// Ends this process at once.
  [[noreturn]] virtual void EndThisProcess() = 0;
};

}  // namespace host
