// The command line of the archiver.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cabarc/CabFormat.h"
#include "cabarc/Status.h"

namespace cabarc {

enum class Command { Help, Create, List, Extract };

struct CommandLine {
  Command command = Command::Help;
  bool recurse = false;
  bool keepPaths = false;
  bool overwrite = false;
  bool allowUnchecked = false;
  bool salvage = false;
  bool partial = false;  ///< with salvage
  Method method = Method::MsZip;
  unsigned threads = 1;
  std::string cabinet;                 ///< path of the cabinet
  std::vector<std::string> arguments;  ///< what follows it, list files replaced by their lines
};

/// What --help shows.
extern const std::string_view kHelp;

/// `arguments`: without the program's name, UTF-8.
Status ParseCommandLine(const std::vector<std::string>& arguments, CommandLine& line);

}  // namespace cabarc
