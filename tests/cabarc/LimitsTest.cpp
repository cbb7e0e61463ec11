// What a cabinet cannot hold is refused before it is begun; what fails later leaves nothing.
#include <sys/resource.h>

#include <csignal>
#include <cstdlib>

#include "RawCabinet.h"
#include "Workspace.h"
#include "cabarc/CabinetReader.h"
#include "cabarc/CabinetWriter.h"

namespace fs = std::filesystem;
using namespace cabinet;

namespace {

class Limits : public Workspace {
 protected:
  static SourceFile File(const std::string& name, std::uint64_t size) {
    SourceFile file{name, name, {}};
    file.info.kind = platform::Kind::File;
    file.info.size = size;
    return file;
  }

  static ExitCode Plan(const std::vector<SourceFile>& files, Method method, CabinetRecords&& records = {}) {
    return PlanRecords(files, method, records).code;
  }
};

TEST_F(Limits, OfTheFormat) {
  EXPECT_EQ(ExitCode::Files, Plan({}, Method::MsZip));
  EXPECT_EQ(ExitCode::Ok, Plan({File("a", kMaxFolderSize)}, Method::MsZip));
  EXPECT_EQ(ExitCode::Files, Plan({File("a", kMaxFolderSize + 1)}, Method::MsZip));
  EXPECT_EQ(ExitCode::Ok, Plan({File(std::string(255, 'n'), 1)}, Method::MsZip));
  EXPECT_EQ(ExitCode::Files, Plan({File(std::string(256, 'n'), 1)}, Method::MsZip));
  EXPECT_EQ(ExitCode::UnsafeName, Plan({File("\xFF", 1)}, Method::MsZip));
  const std::uint64_t large = 0x7FE00000;  // twice this and the records: just below 4 GB
  EXPECT_EQ(ExitCode::Ok, Plan({File("a", large), File("b", large)}, Method::None));
  EXPECT_EQ(ExitCode::Files, Plan({File("a", large), File("b", large), File("c", 0x400000)}, Method::None));

  std::vector<SourceFile> many;
  many.reserve(65536);
  for (int i = 0; i < 65535; ++i) many.push_back(File(std::to_string(i), 0));
  EXPECT_EQ(ExitCode::Ok, Plan(many, Method::MsZip));
  many.push_back(File("one more", 0));
  EXPECT_EQ(ExitCode::Files, Plan(many, Method::MsZip));
}

TEST_F(Limits, DataBeyondOneFolderGoIntoTheNext) {
  CabinetRecords records;
  ASSERT_EQ(ExitCode::Ok, PlanRecords({File("a", kMaxFolderSize - 1), File("b", 1), File("c", 1), File("d", 9)},
                                      Method::MsZip, records)
                              .code);
  ASSERT_EQ(2u, records.folders.size());
  const std::pair<int, std::uint64_t> expected[] = {{0, 0}, {0, kMaxFolderSize - 1}, {1, 0}, {1, 1}};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(expected[i], std::pair(int{records.members[i].folder}, std::uint64_t{records.members[i].at}));
  }
}

TEST_F(Limits, AFileThatChangedAfterItWasListedStopsThePacking) {
  Write("a", "0123456789");
  const platform::FileInfo now = platform::InfoOf("a");
  for (int change = 0; change < 4; ++change) {
    SourceFile file{change == 3 ? "vanished" : "a", "a", now};
    if (change == 0) file.info.size = 11;
    if (change == 1) file.info.size = 9;
    if (change == 2) ++file.info.modified;
    std::uint32_t size = 0;
    EXPECT_EQ(ExitCode::Files, WriteCabinet({file}, "new.cab", {}, size).code) << change;
    EXPECT_EQ(1u, Read(".").size()) << change;  // neither a cabinet nor a part of one
  }
}

TEST_F(Limits, AFailedPackingKeepsTheCabinetThatWasThere) {
  Write("a", "x");
  Write("old.cab", "what was there");
  EXPECT_EQ(2, Cabarc({"n", "old.cab", "a", "missing"}).code);
  fs::create_symlink("nowhere", "link");
  EXPECT_EQ(2, Cabarc({"n", "old.cab", "*.*"}).code);
  fs::remove("link");
  EXPECT_EQ((Tree{{"a", ".x"}, {"old.cab", ".what was there"}}), Read("."));
  EXPECT_EQ(2, Cabarc({"n", "no/folder.cab", "a"}).code);
  EXPECT_EQ(0, Cabarc({"n", "old.cab", "*.*"}).code);  // it does not pack itself
  EXPECT_EQ((Tree{{"a", ".x"}}), Extracted("old.cab", 0));
}

// While it lives, no file grows beyond a size: to the archiver, a disk that is full.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }

 private:
  rlimit before_{};
  void (*handler_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

TEST_F(Limits, AFullDiskLeavesNoCabinetAndNoUnfinishedFile) {
  Write("small", "x");
  Write("large", Noise(500000, 1));
  ASSERT_EQ(0, Cabarc({"n", "whole.cab", "small", "large"}).code);
  const Tree before = Read(".");
  for (const rlim_t room : {0u, 100u, 300000u}) {
    const FullDisk disk(room);
    EXPECT_EQ(2, Cabarc({"n", "new.cab", "small", "large"}).code) << room;
    EXPECT_TRUE(before == Read(".")) << room;
  }
  {
    const FullDisk disk(300000);
    EXPECT_EQ(2, Cabarc({"x", "whole.cab", "out\\"}).code);
  }
  EXPECT_EQ((Tree{{"small", ".x"}}), Read("out"));
}

// To a reader, a checksum of 0 means that there is none.
TEST_F(Limits, NoBlockEverGetsAChecksumOfZero) {
  for (const std::string method : {"MSZIP", "NONE"}) {
    // The last four bytes make up for all before them. MSZIP stores noise behind seven bytes of its own.
    std::string packed = method == "NONE" ? "" : std::string("CK\x01\xE9\x03\x16\xFC", 7);
    const std::string data = Noise(method == "NONE" ? 1004 : 1001, 3);
    packed += data;
    Bytes block(packed.begin(), packed.end());
    Bytes sizes(4);
    Put16(sizes.data(), static_cast<std::uint32_t>(packed.size()));
    Put16(sizes.data() + 2, static_cast<std::uint32_t>(data.size()));
    std::uint8_t* const last = block.data() + block.size() - 4;
    Put32(last, Get32(last) ^ Checksum(sizes.data(), 4, Checksum(block.data(), block.size(), 0)));
    ASSERT_EQ(0u, Checksum(sizes.data(), 4, Checksum(block.data(), block.size(), 0)));

    WriteBytes("a", Bytes(block.end() - static_cast<std::ptrdiff_t>(data.size()), block.end()));
    ASSERT_EQ(0, Cabarc({"-m", method, "n", "zero.cab", "a"}).code);
    EXPECT_EQ(Read(".")["a"], Extracted("zero.cab", 0)["a"]) << method;
    fs::create_directory("peer");
    EXPECT_EQ(0, std::system("cabextract -q -d peer zero.cab"));
    EXPECT_EQ(Read(".")["a"], Read("peer")["a"]) << method;
    fs::remove_all("peer");
  }
}

}  // namespace
