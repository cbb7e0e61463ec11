// What a cabinet cannot hold is refused before it is begun; what fails later leaves nothing.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "RawCabinet.h"
#include "Workspace.h"
#include "cabarc/CabinetReader.h"
#include "cabarc/CabinetWriter.h"

using namespace cabarc;

namespace {

class Limits : public Workspace {
 protected:
  static SourceFile File(const std::string& name, std::uint64_t size) {
    SourceFile file{name, name, {}};
    file.info.kind = platform::Kind::File;
    file.info.size = size;
    return file;
  }

  static ExitCode Plan(const std::vector<SourceFile>& files, Method method = Method::MsZip) {
    cabinet::Structure structure;
    return PlanRecords(files, method, structure).code;
  }

  // The exit code while no file can grow beyond `bytes`: to the archiver, a disk that is full.
  static ExitCode CabarcWithRoom(rlim_t bytes, const std::string& commandLine) {
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{bytes, before.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    const ExitCode code = Cabarc(commandLine).code;
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    return code;
  }
};

TEST_F(Limits, OfTheFormat) {
  EXPECT_EQ(ExitCode::Files, Plan({}));
  EXPECT_EQ(ExitCode::Ok, Plan({File("a", kMaxFolderSize)}));
  EXPECT_EQ(ExitCode::Files, Plan({File("a", kMaxFolderSize + 1)}));
  EXPECT_EQ(ExitCode::Ok, Plan({File(std::string(255, 'n'), 1)}));
  EXPECT_EQ(ExitCode::Files, Plan({File(std::string(256, 'n'), 1)}));
  EXPECT_EQ(ExitCode::UnsafeName, Plan({File("\xFF", 1)}));
  const std::uint64_t large = 0x7FE00000;  // twice this and the records: just below 4 GB
  EXPECT_EQ(ExitCode::Ok, Plan({File("a", large), File("b", large)}, Method::None));
  EXPECT_EQ(ExitCode::Files, Plan({File("a", large), File("b", large), File("c", 0x400000)}, Method::None));

  std::vector<SourceFile> many;
  for (int i = 0; i < 65535; ++i) many.push_back(File(std::to_string(i), 0));
  EXPECT_EQ(ExitCode::Ok, Plan(many));
  many.push_back(File("one more", 0));
  EXPECT_EQ(ExitCode::Files, Plan(many));
}

TEST_F(Limits, DataBeyondOneFolderGoIntoTheNext) {
  cabinet::Structure structure;
  const std::vector<SourceFile> files = {File("a", kMaxFolderSize - 1), File("b", 1), File("c", 1), File("d", 9)};
  ASSERT_EQ(ExitCode::Ok, PlanRecords(files, Method::MsZip, structure).code);
  ASSERT_EQ(2u, structure.folders.size());
  const std::pair<int, std::uint64_t> expected[] = {{0, 0}, {0, kMaxFolderSize - 1}, {1, 0}, {1, 1}};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(expected[i], std::pair(int{structure.members[i].folder}, std::uint64_t{structure.members[i].at}));
  }
}

TEST_F(Limits, AFullFolderAndAFullCabinetAreReadToTheirEnds) {
  Write("sparse", "");
  fs::resize_file("sparse", kMaxFolderSize);
  Write("behind", "x");
  Succeeds("n s.cab sparse behind");
  EXPECT_TRUE(Runs("cabextract -q -t s.cab >/dev/null"));
  Succeeds("x s.cab behind out/");
  EXPECT_EQ((Tree{{"behind", ".x"}}), Read("out"));
  fs::remove("sparse");

  Write("empty", "");
  std::vector<SourceFile> many;
  for (int i = 0; i < 65535; ++i) many.push_back({"empty", std::to_string(i), platform::InfoOf("empty")});
  std::uint32_t size = 0;
  ASSERT_EQ(ExitCode::Ok, WriteCabinet(many, "f.cab", {}, size).code);
  EXPECT_TRUE(Cabarc("l f.cab").out.ends_with("\n65535 files, 0 bytes\n"));
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
    EXPECT_EQ(1u, Read().size()) << change;  // neither a cabinet nor a part of one
  }
}

TEST_F(Limits, AFailedPackingKeepsTheCabinetThatWasThere) {
  Write("a", "x");
  Write("old.cab", "what was there");
  Fails(ExitCode::Files, "n old.cab a missing");
  fs::create_symlink("nowhere", "link");
  Fails(ExitCode::Files, "n old.cab *.*");
  fs::remove("link");
  EXPECT_EQ((Tree{{"a", ".x"}, {"old.cab", ".what was there"}}), Read());
  Fails(ExitCode::Files, "n no/folder.cab a");
  Succeeds("n old.cab *.*");  // it does not pack itself
  EXPECT_EQ((Tree{{"a", ".x"}}), Extracted("old.cab"));
}

// Nor what it was before, by whatever path it is named, nor what a killed run left.
TEST_F(Limits, WildcardsFindNeitherTheCabinetNorLeftovers) {
  Write("a", "x");
  Write("~cab123-0.part", "unfinished");
  Write("~cabin.part", "a name like another");
  const Tree expected = {{"a", ".x"}, {"~cabin.part", ".a name like another"}};
  fs::create_directory("sub");
  for (const std::string& name :
       {std::string("c.cab"), std::string("sub/../c.cab"), fs::absolute("c.cab").string(), std::string("link.cab")}) {
    Succeeds("n " + name + " *.*");
    EXPECT_EQ(expected, Extracted(name)) << name;
    if (!fs::exists("link.cab")) fs::create_symlink("c.cab", "link.cab");
  }
}

// A child is packing a file without end while it is told to end.
TEST_F(Limits, ASignalRemovesWhatIsUnfinished) {
  Write("large", "");
  fs::resize_file("large", kMaxFolderSize);
  const pid_t child = fork();
  if (child == 0) {
    platform::RemoveUnfinishedWhenEnded();
    Cabarc("-m NONE n c.cab large");
    _exit(0);
  }
  const auto unfinished = [] {
    return std::any_of(fs::directory_iterator("."), fs::directory_iterator(),
                       [](const fs::directory_entry& entry) { return entry.path().extension() == ".part"; });
  };
  while (!unfinished()) ASSERT_EQ(0, waitpid(child, nullptr, WNOHANG));
  kill(child, SIGTERM);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM);
  EXPECT_FALSE(unfinished());
  EXPECT_FALSE(fs::exists("c.cab"));
}

TEST_F(Limits, AFullDiskLeavesNoCabinetAndNoUnfinishedFile) {
  Write("small", "x");
  Write("large", Noise(500000, 1));
  Succeeds("n whole.cab small large");
  const Tree before = Read();
  for (const rlim_t room : {0u, 100u, 300000u}) {
    EXPECT_EQ(ExitCode::Files, CabarcWithRoom(room, "n new.cab small large")) << room;
    EXPECT_TRUE(before == Read()) << room;
  }
  EXPECT_EQ(ExitCode::Files, CabarcWithRoom(300000, "x whole.cab out\\"));
  EXPECT_EQ((Tree{{"small", ".x"}}), Read("out"));
}

// To a reader, a checksum of 0 means that there is none.
TEST_F(Limits, NoBlockEverGetsAChecksumOfZero) {
  for (const std::string method : {"MSZIP", "NONE"}) {
    // MSZIP stores noise behind seven bytes of its own. The last four bytes make up for all before them.
    const std::string start = method == "NONE" ? "" : std::string("CK\x01\xE9\x03\x16\xFC", 7);
    std::string data = Noise(method == "NONE" ? 1000 : 997, 3) + Number(0, 4);
    const std::string sizes = Number(start.size() + data.size(), 2) + Number(data.size(), 2);
    data.replace(data.size() - 4, 4, Number(::Checksum(sizes, ::Checksum(start + data)), 4));
    ASSERT_EQ(0u, ::Checksum(sizes, ::Checksum(start + data)));

    Write("a", data);
    Succeeds("-m " + method + " n zero.cab a");
    EXPECT_EQ(Read()["a"], Extracted("zero.cab")["a"]) << method;
    EXPECT_EQ(Read()["a"], ExtractedByPeer("cabextract -q ../zero.cab")["a"]) << method;
  }
}

}  // namespace
