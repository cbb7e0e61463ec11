// The command line of the set checker.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "set-check/SetCheck.h"

namespace setcheck {

struct CommandLine {
  bool help = false;
  bool json = false;
  SetCheck::Options check;
  std::string workstation;  ///< its system folder; empty: none
  std::string unpack;       ///< the folder to unpack into; empty: none
  std::string compare;      ///< the folder to compare with; empty: none
  std::vector<std::string> paths;
};

/// What --help shows.
extern const std::string_view kHelp;

/// `arguments`: without the program's name, UTF-8. Returns what is wrong with them; nothing when they are right.
std::string Parse(const std::vector<std::string>& arguments, CommandLine& line);

}  // namespace setcheck
