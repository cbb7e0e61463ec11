// Extracts what can be saved of a damaged cabinet.
#pragma once

#include <string>
#include <vector>

#include "cabarc/CabinetReader.h"

namespace cabarc {

struct SalvageOptions {
  ExtractOptions extract;
  bool partial = false;  ///< write members of which a part is lost too, under their name and ".partial"
  bool look = false;     ///< write nothing, and report the members alone that are not whole
};

enum class Fate {
  Whole,
  Doubtful,  ///< whole, but a part of its data may be of another cabinet
  Partial,
  Lost,
};

struct SalvagedMember {
  Fate fate = Fate::Lost;
  std::string name;         ///< UTF-8 that may hold anything
  std::uint32_t size = 0;   ///< bytes, as they were packed
  std::uint64_t saved = 0;  ///< how many of them are left
};

/// What became of the members.
struct SalvageReport {
  std::size_t whole = 0;  ///< the doubtful ones included
  std::size_t partial = 0;
  std::size_t lost = 0;
  bool damaged = false;  ///< anything at all was wrong with the cabinet
  std::vector<std::string> warnings;
  std::vector<SalvagedMember> members;
};

/// A member's line, as it is shown.
std::string Told(const SalvagedMember& member);

/// Extracts the wanted members of the cabinet that `source` is. Wherever it is damaged, only what touches the damage is
/// lost: blocks that do not fit their checksums are passed over, records that contradict each other are told from their
/// neighbours. No member that comes out under its own name has a byte that was not in the cabinet when it was written,
/// as far as checksums can tell. Unsafe names are changed. Fails where nothing can be read, or something not written.
Status Salvage(Source& source, const SalvageOptions& options, SalvageReport& report);

}  // namespace cabarc
