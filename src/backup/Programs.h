// External programs, run hidden, with a line in the operation log where they go wrong.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "app/Application.h"

namespace backup {

/// Windows refuses a command line of more characters (UTF-16 units) than this.
inline constexpr std::size_t kLongestCommandLine = 32'766;

struct ProgramEnd {
  bool started = false;
  std::optional<std::uint32_t> exitCode;  ///< nothing when it could not be had
  bool Succeeded() const { return exitCode == 0u; }
};

/// Runs a command hidden and waits for its end. A command that is not started, or ends with another
/// exit code than 0, leaves a warning in the operation log that names it, its exit code and `category`
/// (the job it belongs to): most callers go on regardless, and nothing would tell that data is missing.
ProgramEnd RunProgram(app::Application& application, const std::string& command, const std::string& category);

/// Splits a job item at its last "\" and runs the name with the folder current; the staging folder
/// is current afterwards. An item without a folder, or with one that cannot be entered, counts as a
/// program that is not started.
ProgramEnd RunInItsFolder(app::Application& application, const std::string& item, const std::string& category);

/// Leaves a warning in the operation log: `what` happened in the job `category`.
void WarnOfLoss(app::Application& application, const std::string& what, const std::string& category);

/// `name` as one argument of a command line: in quotes when it holds a blank or anything else but
/// letters and digits of ASCII, ".", "_" and "-".
std::string CommandArgument(const std::string& name);

/// Length of a UTF-8 text in UTF-16 units, as Windows counts it.
std::size_t WideLength(const std::string& text);

}  // namespace backup
