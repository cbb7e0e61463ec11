// Which file a command line starts.
//
// Windows itself looks in the current folder before its own: whoever can put a file there would decide what runs.
#pragma once

#include <string>

#include "host/Processes.h"

namespace windows {

/// What CreateProcess is to be told.
struct Starting {
  std::wstring program;      ///< full path of the executable; empty when nothing was found
  std::wstring commandLine;  ///< as it was given, but for a batch file, which the command interpreter runs
  bool isInterpreter = false;
};

/// Finds the program of a command line by the rules of host::Processes::Start. A batch file is run by the system's own
/// command interpreter; Windows would look for that, too.
Starting FindProgram(const std::wstring& commandLine, host::Where where);

}  // namespace windows
