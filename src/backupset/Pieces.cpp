// The pieces of a floppy set.
#include "backupset/Pieces.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <vector>

#include "backupset/Descriptor.h"
#include "base/Path.h"
#include "base/Text.h"
#include "work/Programs.h"

namespace backupset {
namespace {

// A read may give less than it was asked for; a block is whole or the archive is short.
bool ReadBlock(host::BinaryReader& source, std::vector<std::byte>& block) {
  for (std::size_t have = 0; have < block.size();) {
    const std::int64_t got = source.Read(block.data() + have, block.size() - have);
    if (got <= 0) return false;
    have += static_cast<std::size_t>(got);
  }
  return true;
}

/// Bytes of the first `count` pieces; -1 when one is missing.
std::int64_t SizeOfPieces(host::FileSystem& files, const std::string& folder, std::int32_t count) {
  std::int64_t sum = 0;
  for (std::int32_t i = 1; i <= count; ++i) {
    const std::int64_t size = files.FileSize(folder + PieceName(i));
    if (size < 0) return -1;
    sum += size;
  }
  return sum;
}

/// Whether the set that the staged descriptor speaks of has so many pieces: a set of full pieces declares one disk
/// more.
base::Outcome CheckCount(const work::Tools& tools, const std::string& staging, std::int32_t count) {
  const std::string declared = ReadIniValue(tools, staging, kDescriptorFile, "FDCount");
  const auto disks = ReadDiskNumber(declared);
  const bool lastIsFull = tools.files.FileSize(staging + PieceName(count)) == kPieceSize;
  if (disks && (*disks == count || (*disks == count + 1 && lastIsFull))) return base::Result::Done;
  return base::Failure("the last disk declares \"" + declared + "\" disks for " + std::to_string(count) + " pieces");
}

}  // namespace

std::optional<std::int16_t> ReadDiskNumber(const std::string& text) {
  std::int16_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < 1) return std::nullopt;
  return number;
}

bool IsOnFloppies(const std::string& folder) {
  return base::DriveLetterOf(folder) == "A";
}

std::string PieceName(std::int32_t number) {
  constexpr std::size_t kDigits = 3;
  return kJoinedArchiveName + base::WithLeadingZeros(number, kDigits);
}

void PlanDisk(app::Progress& progress, std::int32_t number, std::uint64_t bytes) {
  progress.Plan(app::Work::Floppy, PieceName(number), bytes);
}

base::Outcome WritePiece(host::FileSystem& files, host::BinaryReader& source, const std::string& piece,
                         std::uint32_t count) {
  if (count < 1) return base::Failure("nothing to write: " + piece);
  const auto target = files.CreateBinary(piece);
  if (!target) return target.Why();
  std::vector<std::byte> block;
  for (std::uint32_t left = count; left > 0; left -= static_cast<std::uint32_t>(block.size())) {
    block.resize(std::min(left, kBlockSize));
    if (!ReadBlock(source, block)) return base::Failure("the joined archive ends before " + piece + " is full");
    if (base::Outcome written = target->Write(block.data(), block.size()); !written.IsDone()) return written;
  }
  return target->Close();
}

base::Outcome SplitArchive(host::FileSystem& files, host::MessageLoop& messageLoop, const std::string& archiveFolder,
                           std::uint32_t size) {
  if (size < 1) return base::Failure("the joined archive is empty");
  const auto source = files.OpenBinary(archiveFolder + kJoinedArchive);
  if (!source) return source.Why();
  std::int32_t number = 0;
  for (std::uint32_t left = size; left > 0;) {
    const std::uint32_t count = std::min(left, kPieceSize);
    base::Outcome written = WritePiece(files, *source, archiveFolder + PieceName(++number), count);
    if (!written.IsDone()) return written;
    left -= count;
    messageLoop.Yield();
  }
  return base::Result::Done;
}

base::Outcome JoinPieces(const work::Tools& tools, const work::WorkFolder& workFolder, std::int32_t count) {
  std::string list;
  for (std::int32_t i = 1; i <= count; ++i) list += PieceName(i) + (i < count ? " + " : " ");
  const std::string& staging = workFolder.StagingFolder();
  if (base::Outcome counted = CheckCount(tools, staging, count); !counted.IsDone()) return counted;
  const work::CurrentFolderScope inStaging(tools.files, staging, workFolder.ProgramFolder());
  if (!inStaging.Entered().IsDone()) return inStaging.Entered();
  const auto end = work::RunProgram(tools, "CMD /C Copy /B " + list + kJoinedArchive, kJoinedArchive);
  if (!end.started) return end.Started();
  const std::int64_t size = tools.files.FileSize(staging + kJoinedArchive);
  if (size > 0 && size == SizeOfPieces(tools.files, staging, count)) return base::Result::Done;
  return base::Failure("the joined archive has not all bytes of its pieces");
}

}  // namespace backupset
