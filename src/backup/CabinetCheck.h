// What a cabinet says of itself, against what was put into it or came out of it.
//
// The archiver is a program of the host's, and it can say that all went well when it did not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "app/Application.h"

namespace backup {

struct CabinetHeader {
  std::uint32_t size = 0;   ///< bytes that the cabinet is to have
  std::uint16_t files = 0;  ///< members
};

/// The header of the cabinet in the file `path`; nothing when there is none or it cannot be read.
std::optional<CabinetHeader> ReadCabinetHeader(app::Application& application, const std::string& path);

/// How many files stand in `folder`, which ends in "\", and in all folders below it but the one directly in
/// it that is named `leftOut`.
std::size_t CountFiles(app::Application& application, const std::string& folder, const std::string& leftOut = {});

/// Leaves a warning with `category` in the operation log when the file `archive` is no whole cabinet, or
/// has other than `files` members.
void WarnUnlessWhole(app::Application& application, const std::string& archive, std::size_t files,
                     const std::string& category);

}  // namespace backup
