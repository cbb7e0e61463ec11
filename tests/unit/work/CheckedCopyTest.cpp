// Copies that are held against what they were made of. What xcopy leaves out in a whole backup or restore is tried in
// faults/LeftOutTest.cpp.
#include "work/CheckedCopy.h"

#include "unit/Station.h"

namespace {

constexpr const char* kFrom = "C:\\From\\";
constexpr const char* kTo = "C:\\To\\";
constexpr std::uint64_t kSecond = 10'000'000;

/// A disk on which some folders are links to other places.
class DiskWithLinks : public fakes::FakeFileSystem {
 public:
  using FakeFileSystem::FakeFileSystem;
  base::Outcome List(const std::string& folder, const std::string& pattern,
                     std::vector<host::FolderEntry>& entries) override {
    base::Outcome listed = FakeFileSystem::List(folder, pattern, entries);
    for (host::FolderEntry& entry : entries) entry.isLink = entry.name.starts_with("link");
    return listed;
  }
};

class CheckedCopy : public testing::Test, public JobStation {
 public:
  work::CopyResult CopyFolder() { return work::CopyFolderChecked(ToolsOn(files), "C:\\From\\", kTo, "X"); }
  void Put(const std::string& path, const std::string& bytes, std::uint64_t second = 100) {
    EXPECT_TRUE(host.disk.Write(path, bytes));
    host.disk.Find(path)->modified = second * kSecond;
  }
  std::size_t Warnings() {
    const std::string log = host.disk.Read(fakes::kLogFile);
    std::size_t count = 0;
    for (std::size_t at = 0; (at = log.find("[Warning]", at)) != std::string::npos; ++at) ++count;
    return count;
  }

  DiskWithLinks files{host.disk, host.calls};
};

TEST_F(CheckedCopy, TakesEmptyFoldersAndMarksAndFollowsNoLink) {
  Put(std::string(kFrom) + "marked.dat", "x");
  host.disk.Find(std::string(kFrom) + "marked.dat")->attributes = fakes::kReadOnly;
  host.disk.MakeFolders(std::string(kFrom) + "empty\\within");
  Put(std::string(kFrom) + "linked\\elsewhere.dat", "not of this folder");
  host.disk.Hold(std::string(kFrom) + "linked\\elsewhere.dat");
  const work::CopyResult copied = CopyFolder();
  EXPECT_EQ(copied.files, 1u);
  EXPECT_EQ(copied.missing, 0u) << "what stands behind a link is missed by nobody";
  EXPECT_TRUE(host.disk.IsFolder("C:\\To\\From\\empty\\within"));
  EXPECT_EQ(host.disk.Find("C:\\To\\From\\marked.dat")->attributes, fakes::kReadOnly);
  EXPECT_EQ(Warnings(), 0u);
}

TEST_F(CheckedCopy, NamesTwentyLossesAndCountsTheRest) {
  for (int i = 10; i < 33; ++i) {
    const std::string path = kFrom + std::string("held") + std::to_string(i);
    Put(path, "x");
    host.disk.Hold(path);
  }
  Put(std::string(kFrom) + "z.dat", "behind them all");
  const work::CopyResult copied = CopyFolder();
  EXPECT_EQ(copied.missing, 23u);
  EXPECT_EQ(NamesBelow(kTo), Names{"From\\z.dat"});
  EXPECT_TRUE(WasWarnedOf("Not copied: C:\\From\\held10") && WasWarnedOf("Not copied: C:\\From\\held29"));
  EXPECT_FALSE(WasWarnedOf("held30"));
  EXPECT_TRUE(WasWarnedOf("Not copied: 3 more (X)"));
  EXPECT_EQ(Warnings(), 21u);
}

// A pattern and an empty folder may lawfully stand for nothing; a name that is spelt out may not.
TEST_F(CheckedCopy, WarnsOfTheMissingFileThatIsNamed) {
  Put("C:\\From\\a.dat", "x");
  host.disk.MakeFolders("C:\\Empty");
  struct Case {
    const char* source;
    std::size_t files, warnings;
  };
  const Case cases[] = {
      {"C:\\From\\a.dat", 1, 0},  {"C:\\From\\A.*", 1, 0}, {"C:\\From\\none.dat", 0, 1}, {"C:\\From\\*.none", 0, 0},
      {"C:\\Empty\\?.dat", 0, 0}, {"C:\\None\\*", 0, 1},   {"C:\\None\\a.dat", 0, 1},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.source);
    host.disk.Remove("C:\\To");
    const std::size_t before = Warnings();
    const work::CopyResult copied = work::CopyFilesChecked(tools, each.source, kTo, "X");
    EXPECT_EQ(copied.files, each.files);
    EXPECT_EQ(copied.Produced(), each.files > 0);
    EXPECT_EQ(Warnings() - before, each.warnings);
  }
}

/// What stands at the target before the copy, and whether the copy must replace it though xcopy does not get so far.
struct Older {
  const char* name;
  std::string bytes;
  std::uint64_t time;
  bool isReplaced;
};

TEST_F(CheckedCopy, ReplacesWhatLooksOtherwiseThanItsSource) {
  const std::uint64_t time = 100 * kSecond;
  Put("C:\\From\\a", "held: xcopy stops here");
  host.disk.Hold("C:\\From\\a");
  const Older cases[] = {{"older, of one size", "old", time - 2 * kSecond, true},
                         {"younger, of one size", "old", time + 2 * kSecond, true},
                         {"as a coarser file system keeps the time", "old", time - 2 * kSecond + 1, false},
                         {"of another size", "older", time, true}};
  for (const Older& each : cases) {
    SCOPED_TRACE(each.name);
    host.disk.Remove("C:\\To");
    Put("C:\\From\\b", "new");
    Put("C:\\To\\From\\b", each.bytes);
    host.disk.Find("C:\\To\\From\\b")->modified = each.time;
    CopyFolder();
    EXPECT_EQ(host.disk.Read("C:\\To\\From\\b"), each.isReplaced ? "new" : each.bytes);
  }
}

// A target keeps the case of its name. It is found all the same, and not copied twice.
TEST_F(CheckedCopy, FindsTargetsInAnyCase) {
  Put("C:\\From\\R\u00f6ntgen.DAT", "new image");
  Put("C:\\From\\Below\\b.dat", "new");
  Put("C:\\To\\From\\R\u00d6NTGEN.dat", "old");
  Put("C:\\To\\From\\BELOW\\B.DAT", "old");
  const work::CopyResult copied = CopyFolder();
  EXPECT_EQ(copied.files, 2u);
  EXPECT_EQ(host.calls.CountOf("FileSystem", "CopyTo"), 0u);
  EXPECT_EQ(host.disk.Tree(kTo), (std::map<std::string, std::string>{{"From\\BELOW\\B.DAT", "new"},
                                                                     {"From\\R\u00d6NTGEN.dat", "new image"}}));
}

// A file that stands where a folder must come, and the other way round, costs what it is about and no more.
TEST_F(CheckedCopy, PassesOverWhatCannotHaveItsPlace) {
  Put("C:\\From\\a\\1", "x");
  Put("C:\\From\\b", "x");
  Put("C:\\From\\c", "x");
  Put("C:\\To\\From\\a", "a file");
  host.disk.MakeFolders("C:\\To\\From\\b");
  const work::CopyResult copied = CopyFolder();
  EXPECT_EQ(copied.files, 1u);
  EXPECT_EQ(copied.missing, 2u);
  EXPECT_EQ(NamesBelow(kTo), (Names{"From\\a", "From\\c"}));
  EXPECT_TRUE(WasWarnedOf("C:\\To\\From\\a") && WasWarnedOf("C:\\From\\b"));
}

}  // namespace
