// Writes a cabinet.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cabarc/CabFormat.h"
#include "cabarc/FileTree.h"
#include "cabarc/Status.h"

namespace cabinet {

struct PackOptions {
  Method method = Method::MsZip;
  unsigned threads = 1;  ///< at least 1; has no influence on the bytes that are written
};

/// Lays out a cabinet of `files` in their order: sizes and places of the members, folders without their data. Refuses
/// what the format cannot hold, unsafe names, and two files of the same name.
Status PlanRecords(const std::vector<SourceFile>& files, Method method, CabinetRecords& records);

/// Packs `files` into the cabinet `path`, which replaces a file of that name only when it is complete. A file that
/// changed since it was listed is an error. `size` gets the cabinet's size in bytes.
Status WriteCabinet(const std::vector<SourceFile>& files, const std::string& path, const PackOptions& options,
                    std::uint32_t& size);

}  // namespace cabinet
