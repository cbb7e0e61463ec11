// The cutting of a joined archive: every byte in its piece, whatever the size.
#include "backup/ArchivePieces.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "backup/FloppyFormat.h"
#include "fakes/FakeHost.h"

namespace {

constexpr const char* kFolder = "C:\\Work\\CABFILE\\";

/// Bytes that repeat neither with a block nor with a piece.
std::string Pattern(std::size_t size) {
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>((i * 31 + i / 251) & 0xFFu);
  return bytes;
}

struct Cut {
  std::uint32_t size;
  std::vector<std::size_t> pieces;
  std::uint32_t disks;
};

const Cut kCuts[] = {
    {1, {1}, 1},
    {31'999, {31'999}, 1},
    {32'000, {32'000}, 1},
    {32'001, {32'001}, 1},
    {1'399'999, {1'399'999}, 1},
    {1'400'000, {1'400'000}, 2},
    {1'400'001, {1'400'000, 1}, 2},
    {2'800'000, {1'400'000, 1'400'000}, 3},
    {2'800'001, {1'400'000, 1'400'000, 1}, 3},
};

TEST(ArchivePieces, HoldEveryByteInOrder) {
  for (const Cut& cut : kCuts) {
    SCOPED_TRACE(cut.size);
    fakes::FakeHost host;
    host.disk.AddDrive('C', "", 64 * 1024 * 1024);
    const std::string archive = Pattern(cut.size);
    host.disk.Write(std::string(kFolder) + "FDDivide.cab", archive);
    EXPECT_EQ(backup::SplitArchive(host.Contracts(), kFolder, cut.size), app::kDone);
    EXPECT_EQ(backup::FloppyDiskCount(cut.size), cut.disks);
    auto files = host.disk.Tree(kFolder);
    EXPECT_EQ(files.size(), cut.pieces.size() + 1);
    std::string joined;
    for (std::size_t i = 0; i < cut.pieces.size(); ++i) {
      const std::string& piece = files["FDDivide00" + std::to_string(i + 1)];
      EXPECT_EQ(piece.size(), cut.pieces[i]);
      joined += piece;
    }
    EXPECT_TRUE(joined == archive);
    EXPECT_EQ(host.messageLoop.yields, static_cast<int>(cut.pieces.size()));
    EXPECT_EQ(host.disk.Find(std::string(kFolder) + "FDDivide.cab")->readers, 0);
  }
}

TEST(ArchivePieces, FailureIsToldWhereverItHappens) {
  struct Fault {
    const char* name;
    std::uint32_t size;
    void (*arrange)(fakes::FakeHost&);
  };
  const Fault faults[] = {
      {"nothing to cut", 0, [](fakes::FakeHost&) {}},
      {"shorter than said", 1'500'001, [](fakes::FakeHost&) {}},
      {"no archive", 1'500'000, [](fakes::FakeHost& h) { h.disk.Remove("C:\\Work\\CABFILE\\FDDivide.cab"); }},
      {"read fails", 1'500'000, [](fakes::FakeHost& h) { h.calls.FailFrom("BinaryReader", "Read", 45); }},
      {"first piece refused", 1'500'000, [](fakes::FakeHost& h) { h.calls.FailFrom("FileSystem", "CreateBinary"); }},
      {"next piece refused", 1'500'000, [](fakes::FakeHost& h) { h.calls.FailFrom("FileSystem", "CreateBinary", 2); }},
      {"write fails", 1'500'000, [](fakes::FakeHost& h) { h.calls.FailFrom("BinaryWriter", "Write", 46); }},
      {"close fails", 1'500'000, [](fakes::FakeHost& h) { h.calls.FailFrom("BinaryWriter", "Close", 2); }},
      {"disk full", 1'500'000, [](fakes::FakeHost& h) { h.disk.FindDrive("C:")->capacity = 2'950'000; }},
  };
  for (const Fault& fault : faults) {
    SCOPED_TRACE(fault.name);
    fakes::FakeHost host;
    host.disk.AddDrive('C', "", 64 * 1024 * 1024);
    host.disk.Write(std::string(kFolder) + "FDDivide.cab", Pattern(1'500'000));
    fault.arrange(host);
    EXPECT_EQ(backup::SplitArchive(host.Contracts(), kFolder, fault.size), app::kFailed);
  }
}

/// Gives a few bytes at a time, as a device may.
class SlowReader : public host::BinaryReader {
 public:
  explicit SlowReader(std::string bytes) : bytes_(std::move(bytes)) {}
  std::int64_t Read(std::byte* data, std::size_t count) override {
    const std::size_t taken = std::min({count, std::size_t{7'001}, bytes_.size() - at_});
    std::transform(bytes_.data() + at_, bytes_.data() + at_ + taken, data,
                   [](char c) { return static_cast<std::byte>(c); });
    at_ += taken;
    return static_cast<std::int64_t>(taken);
  }

 private:
  std::string bytes_;
  std::size_t at_ = 0;
};

TEST(ArchivePieces, GoOnWhereTheSourceStandsHoweverItReads) {
  fakes::FakeHost host;
  host.disk.AddDrive('C', "", 64 * 1024 * 1024);
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
