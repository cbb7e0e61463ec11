// The fixed numbers and names of a backup set that is split over floppy disks.
#pragma once

#include <cstdint>

namespace backup {

/// The drive letter that means floppies; a small "a" does not.
inline constexpr char kFloppyDrive[] = "A";

/// Name of the joined archive and head of its pieces' names.
inline constexpr char kJoinedArchiveName[] = "FDDivide";

inline constexpr std::uint32_t kPieceSize = 1'400'000;

/// Disks declared for a joined archive. A size that is an exact multiple of kPieceSize gets one disk
/// more than there are pieces: the format counts so, and its readers expect it.
constexpr std::uint32_t FloppyDiskCount(std::uint32_t joinedSize) {
  return joinedSize / kPieceSize + 1;
}

}  // namespace backup
