// The command-line tools that every workstation has, at work on the imaginary
// disks: xcopy, copy /B, cabarc, reg save. Exit codes are those of Windows, and so is
// what they do not say: none of them is kinder than the real one.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "fakes/Cabinet.h"
#include "fakes/Disk.h"

namespace fakes {

using Words = std::vector<std::string>;

/// `words` are all words of the command line; the disk's current folder is the program's.
/// "CMD /C ...": knows xcopy (with /S and /Y) and Copy /B. A line that is too long does nothing, and exits with 0. In
/// the others it expands %TEMP%.
///
/// xcopy passes over hidden and system files, and over what has a path too long for it together with the rest of that
/// folder, and says nothing. It makes no empty folders. At the first file that it cannot read or write it stops with
/// exit code 4; the files of a folder come before its subfolders. The copies are not read-only.
std::uint32_t RunCommandInterpreter(Disk& disk, const Words& words);
/// The same with one of the versions of xcopy that end with 0 after a failure in a subfolder: the rest of that one is
/// not copied, the others are.
std::uint32_t RunSilentCommandInterpreter(Disk& disk, const Words& words);
/// "cabarc -r -p n CABINET ITEM..." and "cabarc -r -p X CABINET [FOLDER]". Takes hidden files and long paths, as the
/// host's archiver does, and gives files their attributes back. One file that it cannot read, or whose stored path a
/// cabinet does not take, and there is no cabinet.
std::uint32_t RunCabarc(Disk& disk, const Words& words);
/// "Reg.exe save KEY FILE": the file names the key that it holds.
std::uint32_t RunReg(Disk& disk, const Words& words);

}  // namespace fakes
