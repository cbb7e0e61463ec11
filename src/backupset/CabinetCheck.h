// What a cabinet says of itself, against what was put into it or came out of it.
//
// The archiver is a program of the host's, and it can say that all went well when it did not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "work/Programs.h"

namespace backupset {

struct CabinetHeader {
  std::uint32_t size = 0;   ///< bytes that the cabinet is to have
  std::uint16_t files = 0;  ///< members
};

/// The header of the cabinet in the file `path`; nothing when there is none or it cannot be read.
std::optional<CabinetHeader> ReadCabinetHeader(host::FileSystem& files, const std::string& path);

/// How many files stand in `folder`, which ends in "\", and in all folders below it but the one directly in
/// it that is named `leftOut`. Serves the user interface after each folder.
std::size_t CountFiles(const work::Tools& tools, const std::string& folder, const std::string& leftOut = {});

/// Whether the file `archive` is a whole cabinet of `files` members. The cause of a failure says what it is instead.
base::Outcome CheckWhole(host::FileSystem& files, const std::string& archive, std::size_t members);

}  // namespace backupset
