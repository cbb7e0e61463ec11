// The archiver as a command: arguments in, text and exit code out.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace cabarc {

/// Runs the command that `arguments` (UTF-8, without the program's name) give. Writes UTF-8 to `out` and `err`;
/// returns an ExitCode.
int Run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace cabarc
