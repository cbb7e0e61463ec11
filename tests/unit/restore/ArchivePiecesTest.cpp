// The cutting of a joined archive: every byte in its piece, whatever the size.
#include "backup/ArchivePieces.h"

#include "backup/FloppyFormat.h"
#include "unit/Arrange.h"

namespace {

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
  std::vector<std::size_t> pieces;
  std::uint32_t disks;
};

const Cut kCuts[] = {
    {1, {1}, 1},
    {200'000, {200'000}, 1},
    {200'001, {200'001}, 1},
    {1'399'999, {1'399'999}, 1},
    {1'400'000, {1'400'000}, 2},
    {1'400'001, {1'400'000, 1}, 2},
    {2'800'000, {1'400'000, 1'400'000}, 3},
    {2'800'001, {1'400'000, 1'400'000, 1}, 3},
};

TEST(ArchivePieces, HoldEveryByteInOrder) {
  for (const Cut& cut : kCuts) {
    SCOPED_TRACE(cut.size);
    Archived host(cut.size);
    EXPECT_EQ(backup::SplitArchive(host.Contracts(), kFolder, cut.size), app::kDone);
    EXPECT_EQ(backup::FloppyDiskCount(cut.size), cut.disks);
    std::string joined;
    for (std::size_t i = 0; i < cut.pieces.size(); ++i) {
      const std::string piece = host.disk.Read(kFolder + "FDDivide00" + std::to_string(i + 1));
      EXPECT_EQ(piece.size(), cut.pieces[i]);
      joined += piece;
    }
    EXPECT_TRUE(joined == Pattern(cut.size));
    EXPECT_EQ(host.disk.Children(kFolder).size(), cut.pieces.size() + 1);
    EXPECT_EQ(host.messageLoop.yields, static_cast<int>(cut.pieces.size()));
  }
}

TEST(ArchivePieces, FailureIsTold) {
  const std::pair<std::uint32_t, Arrangement> faults[] = {{0, Nothing},
                                                          {1'500'001, Nothing},  // shorter than said
                                                          {1'500'000, Gone(kFolder + "FDDivide.cab")},
                                                          {1'500'000, Capacity("C:", 2'950'000)}};
  for (const auto& [size, arrange] : faults) {
    Archived host(1'500'000);
    arrange(host);
    EXPECT_EQ(backup::SplitArchive(host.Contracts(), kFolder, size), app::kFailed);
  }
}

/// Gives a few bytes at a time, as a device may.
class SlowReader : public host::BinaryReader {
 public:
  explicit SlowReader(std::string bytes) : bytes_(std::move(bytes)) {}
  std::int64_t Read(std::byte* data, std::size_t count) override {
    const std::string taken = bytes_.substr(at_, std::min(count, std::size_t{7'001}));
    std::transform(taken.begin(), taken.end(), data, [](char c) { return static_cast<std::byte>(c); });
    at_ += taken.size();
    return static_cast<std::int64_t>(taken.size());
  }

 private:
  std::string bytes_;
  std::size_t at_ = 0;
};

TEST(ArchivePieces, GoOnWhereTheSourceStandsHoweverItReads) {
  Archived host(1);
  const std::string bytes = Pattern(100'000);
  SlowReader source(bytes);
  EXPECT_EQ(backup::WritePiece(host.files, source, "C:\\0", 0), app::kFailed);
  EXPECT_FALSE(host.disk.IsFile("C:\\0"));
  EXPECT_EQ(backup::WritePiece(host.files, source, "C:\\1", 40'000), app::kDone);
  EXPECT_EQ(backup::WritePiece(host.files, source, "C:\\2", 60'000), app::kDone);
  EXPECT_TRUE(host.disk.Read("C:\\1") + host.disk.Read("C:\\2") == bytes);
  EXPECT_EQ(backup::WritePiece(host.files, source, "C:\\3", 1), app::kFailed);
}

}  // namespace
