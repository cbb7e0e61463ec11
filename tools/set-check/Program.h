// The set checker as a command: arguments in, text and exit code out.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace setcheck {

enum class ExitCode : int { Sound = 0, PartsLost = 1, NotRestorable = 2, WrongUse = 3 };

/// Where the text goes, UTF-8.
class Output {
 public:
  virtual ~Output() = default;
  /// False when not all of it could be written.
  virtual bool Answer(std::string_view text) = 0;
  virtual void Complain(std::string_view text) = 0;
  /// Replaces the line that shows how far the work is; empty takes it away. Nothing where nobody looks.
  virtual void ShowProgress(std::string_view text) = 0;
};

/// `arguments`: without the program's name, UTF-8.
ExitCode Run(const std::vector<std::string>& arguments, Output& output);

}  // namespace setcheck
