// The cutting of a joined archive: every byte in its piece, whatever the size.
#include "backupset/Pieces.h"

#include "unit/Station.h"

namespace {

using base::Result;

const std::string kFolder = "C:\\Work\\CABFILE\\";

/// Bytes that repeat neither with a block nor with a piece.
std::string Pattern(std::size_t size) {
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>((i * 31 + i / 251) & 0xFFu);
  return bytes;
}

/// A host with a joined archive of so many bytes.
struct Archived : fakes::FakeHost {
  explicit Archived(std::size_t size) {
    disk.AddDrive('C', "", 64 * 1024 * 1024);
    disk.Write(kFolder + "FDDivide.cab", Pattern(size));
  }
};

struct Cut {
  std::uint32_t size;
  std::size_t pieces;
  std::uint32_t disks;  ///< an exact multiple declares one more
};

const Cut kCuts[] = {{1, 1, 1}, {200'001, 1, 1}, {1'399'999, 1, 1}, {1'400'000, 1, 2}, {2'800'001, 3, 3}};

TEST(ArchivePieces, HoldEveryByteInOrder) {
  for (const Cut& cut : kCuts) {
    SCOPED_TRACE(cut.size);
    Archived host(cut.size);
    EXPECT_EQ(backupset::SplitArchive(host.files, host.messageLoop, kFolder, cut.size), Result::Done);
    EXPECT_EQ(backupset::FloppyDiskCount(cut.size), cut.disks);
    std::string joined;
    for (std::size_t i = 1; i <= cut.pieces; ++i) {
      joined += host.disk.Read(kFolder + "FDDivide00" + std::to_string(i));
      EXPECT_EQ(joined.size(), i < cut.pieces ? i * 1'400'000 : cut.size);
    }
    EXPECT_TRUE(joined == Pattern(cut.size));
    EXPECT_EQ(host.disk.Children(kFolder).size(), cut.pieces + 1);
    EXPECT_EQ(host.messageLoop.yields, static_cast<int>(cut.pieces));
  }
}

TEST(ArchivePieces, FailureIsTold) {
  const std::tuple<std::uint32_t, Arrangement, std::string> faults[] = {
      {0, Nothing, "empty"},
      {1'500'001, Nothing, "ends before " + kFolder + "FDDivide002 is full"},
      {1'500'000, Gone(kFolder + "FDDivide.cab"), kFolder + "FDDivide.cab"},
      {1'500'000, Capacity("C:", 2'950'000), kFolder + "FDDivide002"}};
  for (const auto& [size, arrange, cause] : faults) {
    Archived host(1'500'000);
    arrange(host);
    const base::Outcome split = backupset::SplitArchive(host.files, host.messageLoop, kFolder, size);
    EXPECT_EQ(split, Result::Failed);
    EXPECT_PRED_FORMAT2(testing::IsSubstring, cause, split.cause);
  }
}

struct Joining {
  const char* name;
  std::string count;                ///< that the last disk declares
  std::vector<std::size_t> pieces;  ///< sizes
  bool joins;
};

constexpr std::size_t kFull = backupset::kPieceSize;

const Joining kJoinings[] = {
    {"as declared", "2", {kFull, 5}, true},
    {"a surplus disk", "3", {kFull, kFull}, true},
    {"surplus of one piece", "2", {kFull}, true},
    {"one too few", "3", {kFull, 5}, false},
    {"two too few", "4", {kFull, kFull}, false},
    {"one too many", "1", {kFull, 5}, false},
    {"no descriptor", "", {5}, false},
    {"no number", "two", {kFull, 5}, false},
    {"one only", "1", {5}, true},
};

// The descriptor in the work folder is the last disk's.
TEST(ArchivePieces, AreJoinedWhenTheLastDiskDeclaresAsMany) {
  for (const Joining& each : kJoinings) {
    SCOPED_TRACE(each.name);
    JobStation station;
    std::string whole;
    for (std::size_t i = 0; i < each.pieces.size(); ++i) {
      const std::string piece(each.pieces[i], static_cast<char>('a' + i));
      station.host.disk.Write(JobStation::kStaging + backupset::PieceName(static_cast<std::int32_t>(i + 1)), piece);
      whole += piece;
    }
    if (!each.count.empty())
      station.host.WriteLines(JobStation::kStaging + std::string("BackupInfo.ini"), {"FDCount=" + each.count});
    const base::Outcome joined =
        backupset::JoinPieces(station.tools, station.packed.workFolder, static_cast<std::int32_t>(each.pieces.size()));
    EXPECT_EQ(joined.IsDone(), each.joins) << joined.cause;
    const std::string made = station.host.disk.Read(JobStation::kStaging + std::string("FDDivide.cab"));
    EXPECT_TRUE(made == (each.joins ? whole : ""));
    EXPECT_EQ(station.host.disk.CurrentFolder(), fakes::kProgramFolder);
  }
}

/// Gives a few bytes at a time, as a device may.
struct SlowReader : host::BinaryReader {
  std::int64_t Read(std::byte* data, std::size_t count) override {
    const std::size_t taken = bytes.copy(reinterpret_cast<char*>(data), std::min(count, std::size_t{7'001}), at);
    at += taken;
    return static_cast<std::int64_t>(taken);
  }
  bool Seek(std::uint64_t) override { return false; }
  const std::string bytes = Pattern(100'000);
  std::size_t at = 0;
};

TEST(ArchivePieces, GoOnWhereTheSourceStandsHoweverItReads) {
  Archived host(1);
  SlowReader source;
  EXPECT_EQ(backupset::WritePiece(host.files, source, "C:\\0", 0), Result::Failed);
  EXPECT_FALSE(host.disk.IsFile("C:\\0"));
  EXPECT_EQ(backupset::WritePiece(host.files, source, "C:\\1", 40'000), Result::Done);
  EXPECT_EQ(backupset::WritePiece(host.files, source, "C:\\2", 60'000), Result::Done);
  EXPECT_TRUE(host.disk.Read("C:\\1") + host.disk.Read("C:\\2") == source.bytes);
  EXPECT_EQ(backupset::WritePiece(host.files, source, "C:\\3", 1), Result::Failed);
}

}  // namespace
