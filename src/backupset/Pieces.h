// The pieces of a set that is split over floppy disks: names, sizes, cutting and joining.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "work/Programs.h"
#include "work/WorkFolder.h"

namespace backupset {

/// The joined archive of a floppy set.
inline constexpr char kJoinedArchive[] = "FDDivide.cab";
/// Its name without ".cab", which is also the head of its pieces' names.
inline constexpr char kJoinedArchiveName[] = "FDDivide";

inline constexpr std::uint32_t kPieceSize = 1'400'000;

/// Bytes that are copied at once: a seventh of a piece, and small enough for a processor's cache.
inline constexpr std::uint32_t kBlockSize = kPieceSize / 7;

/// Whether a set that stands in, or goes to, this folder is split over floppies: one on drive "A:" is. A small "a"
/// does not mean floppies.
bool IsOnFloppies(const std::string& folder);

/// Disks declared for a joined archive. A size that is an exact multiple of kPieceSize gets one disk
/// more than there are pieces: the format counts so, and its readers expect it.
constexpr std::uint32_t FloppyDiskCount(std::uint32_t joinedSize) {
  return joinedSize / kPieceSize + 1;
}

/// A disk count or number as a descriptor holds it: plain decimal, from 1, within 16 bits.
std::optional<std::int16_t> ReadDiskNumber(const std::string& text);

/// "FDDivide001" for 1.
std::string PieceName(std::int32_t number);

/// Plans, for the job's progress, that `bytes` are written to a disk of this number or read from it.
void PlanDisk(app::Progress& progress, std::int32_t number, std::uint64_t bytes);

/// Cuts archive folder + "FDDivide.cab", of `size` bytes, into pieces beside it. Reads the
/// archive once, keeps one block in memory, and serves the user interface between the pieces. Fails when
/// there is nothing to cut, the archive is shorter than `size`, or a piece cannot be written.
base::Outcome SplitArchive(host::FileSystem& files, host::MessageLoop& messageLoop, const std::string& archiveFolder,
                           std::uint32_t size);

/// Copies `count` bytes from where `source` stands into the new file `piece`. Fails when `count` is below 1 or not all
/// of it could be read and written.
base::Outcome WritePiece(host::FileSystem& files, host::BinaryReader& source, const std::string& piece,
                         std::uint32_t count);

/// Joins `count` pieces in the work folder into the joined archive by one binary copy of the
/// command interpreter. Fails when the descriptor in the work folder declares another number of disks (one more than
/// there are pieces is right where all are full), when it cannot be started, or when it leaves anything but all the
/// bytes: with a command line beyond its limit it writes nothing and reports success. The program's own folder is
/// current afterwards.
base::Outcome JoinPieces(const work::Tools& tools, const work::WorkFolder& workFolder, std::int32_t count);

}  // namespace backupset
