// One archive of a set, looked through: its records and names as the archiver judges them before it unpacks, and all of
// its data, unpacked.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "cabarc/Salvage.h"
#include "cabinet/Source.h"
#include "cabinet/Structure.h"
#include "unpack/FolderReader.h"

namespace setcheck {

/// What was found out about an archive.
struct ArchiveState {
  std::uint64_t packed = 0;                  ///< bytes of the file
  std::size_t files = 0;                     ///< as its records say
  std::uint64_t bytes = 0;                   ///< of all files, unpacked
  std::vector<std::string> damage;           ///< what is wrong, in words about "it"; empty: nothing
  std::size_t whole = 0;                     ///< files that are whole although it is damaged
  std::vector<cabarc::SalvagedMember> lost;  ///< those that are not, where they can be told
};

/// Is told how many bytes have been looked through, now and then.
using Progress = std::function<void(std::uint64_t bytes)>;

/// Looks through one archive after the other.
class ArchiveCheck {
 public:
  explicit ArchiveCheck(Progress progress);

  using Look = std::function<void(const cabinet::Structure& structure)>;

  /// `look` is shown the records of an archive that has any. What cannot be read is damaged.
  ArchiveState Run(cabinet::Source& source, const Look& look);

 private:
  void Unpack(cabinet::Source& source, const cabinet::Structure& structure, ArchiveState& state);

  Progress progress_;
  unpack::FolderReader reader_;
};

}  // namespace setcheck
