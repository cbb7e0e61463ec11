// Cabinets as every archiver makes and reads them, their data not packed.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace fakes {

struct CabinetMember {
  std::string path;  ///< as it is stored, with "\"
  std::string bytes;
  unsigned attributes = 0;     ///< as the disks have them
  std::uint64_t modified = 0;  ///< likewise; a cabinet keeps whole pairs of seconds alone
};

/// In the order in which they lie there. Two of one path are legal.
using CabinetMembers = std::vector<CabinetMember>;

/// Stored path and contents, for tests that want no more; of two members of one path the later one.
using CabinetContents = std::map<std::string, std::string>;

/// The longest stored path, in bytes, and the most members.
inline constexpr std::size_t kLongestMemberPath = 255;
inline constexpr std::size_t kMostMembers = 65535;

/// The path of no member may be longer than a cabinet takes.
std::string MakeCabinet(const CabinetContents& contents);
std::string MakeCabinetOf(const CabinetMembers& members);

/// Nothing when `bytes` is not a whole cabinet: one whose every size, offset and checksum is right.
std::optional<CabinetContents> ReadCabinet(const std::string& bytes);
std::optional<CabinetMembers> ReadCabinetMembers(const std::string& bytes);

}  // namespace fakes
