// The command-line tools that every workstation has, at work on the imaginary
// disks: xcopy, copy /B, cabarc, reg save. Exit codes are those of Windows.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "fakes/Disk.h"

namespace fakes {

using Words = std::vector<std::string>;

/// `words` are all words of the command line; the disk's current folder is the program's.
/// "CMD /C ...": knows xcopy (with /S and /Y) and Copy /B. A line that is too long does nothing, and exits with 0.
std::uint32_t RunCommandInterpreter(Disk& disk, const Words& words);
/// "cabarc -r -p n CABINET ITEM..." and "cabarc -r -p X CABINET [FOLDER]".
std::uint32_t RunCabarc(Disk& disk, const Words& words);
/// "Reg.exe save KEY FILE": the file names the key that it holds.
std::uint32_t RunReg(Disk& disk, const Words& words);

}  // namespace fakes
