// The command-line tools that every workstation has, at work on the imaginary
// disks: xcopy, copy /B, cabarc, reg save. Exit codes are those of Windows.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "fakes/Disk.h"

namespace fakes {

using Words = std::vector<std::string>;

/// What a cabinet holds: stored path, with "\", and contents. The format is the fakes' own behind a real cabinet's
/// header; a cabinet that was cut, padded or joined wrongly is not read.
using CabinetContents = std::map<std::string, std::string>;

std::string MakeCabinet(const CabinetContents& contents);
/// Nothing when `bytes` is not a whole cabinet.
std::optional<CabinetContents> ReadCabinet(const std::string& bytes);

/// `words` are all words of the command line; the disk's current folder is the program's.
/// "CMD /C ...": knows xcopy (with /S and /Y) and Copy /B. A line that is too long does nothing, and exits with 0.
std::uint32_t RunCommandInterpreter(Disk& disk, const Words& words);
/// "cabarc -r -p n CABINET ITEM..." and "cabarc -r -p X CABINET [FOLDER]".
std::uint32_t RunCabarc(Disk& disk, const Words& words);
/// "Reg.exe save KEY FILE": the file names the key that it holds.
std::uint32_t RunReg(Disk& disk, const Words& words);

}  // namespace fakes
