// An archiver that makes something else than it was told to, and may say that all went well.
#pragma once

#include <cstdint>
#include <string>

#include "fakes/FakeProcesses.h"

namespace fakes {

/// What is wrong with the archives that it makes.
enum class ArchiveFlaw {
  Missing,       ///< there is none
  Stub,          ///< 60 bytes, and no cabinet
  Half,          ///< cut in the middle
  OneFileLess,   ///< a whole cabinet, but a file is not in it
  OtherContent,  ///< header and length are right, the data are not
};

/// cabarc with that flaw in the archive of this name, in each that it makes when the name is empty; the rest of it is
/// as it should be. Packing ends with `exitCode`.
ProgramAction FaultyArchiver(ArchiveFlaw flaw, const std::string& archive = {}, std::uint32_t exitCode = 0);

}  // namespace fakes
