// Extracts the members of a cabinet into a folder.
#pragma once

#include <string>
#include <vector>

#include "cabarc/CabinetReader.h"
#include "cabarc/Status.h"

namespace cabinet {

struct ExtractOptions {
  ReadOptions read;
  bool keepPaths = false;  ///< make the folders that the names give; otherwise only the last part of a name counts
  bool salvage = false;    ///< extract what is whole of a damaged cabinet; the result is a failure nevertheless
  bool overwrite = false;  ///< replace files that are there; otherwise one such file stops the extraction
  std::vector<std::string> names;  ///< what to extract, "*" and "?" allowed; all when empty
  std::string target;              ///< the folder; empty is the current one
};

/// Extracts from an open cabinet. All names are examined before the first file is written: unsafe ones, two that are
/// the same, and names that match nothing are refused; and of a cabinet of this archiver, all data. A file appears
/// under its name only when it is complete. `extracted` counts the files that do, also when the extraction fails later.
Status Extract(CabinetReader& reader, const ExtractOptions& options, std::size_t& extracted);

}  // namespace cabinet
