// Extracts what can be saved of a damaged cabinet.
#pragma once

#include <string>
#include <vector>

#include "cabarc/CabinetReader.h"

namespace cabarc {

struct SalvageOptions {
  ExtractOptions extract;
  bool partial = false;  ///< write members of which a part is lost too, under their name and ".partial"
};

/// What became of the members.
struct SalvageReport {
  std::size_t whole = 0;
  std::size_t partial = 0;
  std::size_t lost = 0;
  bool damaged = false;            ///< anything at all was wrong with the cabinet
  std::vector<std::string> lines;  ///< what was wrong, then one for each member; UTF-8 that may hold anything
};

/// Extracts the wanted members of the cabinet `path`. Wherever it is damaged, only what touches the damage is lost:
/// blocks that do not fit their checksums are passed over, records that contradict each other are told from their
/// neighbours. No member that comes out under its own name has a byte that was not in the cabinet when it was written,
/// as far as checksums can tell. Unsafe names are changed. Fails where nothing can be read, or something not written.
Status Salvage(const std::string& path, const SalvageOptions& options, SalvageReport& report);

}  // namespace cabarc
