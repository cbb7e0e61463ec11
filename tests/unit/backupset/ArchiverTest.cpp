// Packing what was gathered, and collecting and unpacking the archives.
#include "backupset/Archiver.h"

#include "unit/Station.h"

namespace {

using base::Result;

constexpr backupset::Incomplete kFails = backupset::Incomplete::Fails;

std::string Described(const backupset::Archive& archive) {
  return archive.name + ", " + std::to_string(archive.size) + " bytes, " + std::to_string(archive.files) + " files";
}

TEST_F(JobTest, PackingNamesEverythingAndEmptiesTheStagingFolder) {
  const std::string staging = kStaging;
  for (const std::string name :
       {"plain.dat", "two words.dat", "a&b.txt", "Tree\\x\\1.dat", "My Tree\\2.dat", "cabfile\\OldData.cab"})
    host.disk.Write(staging + name, name);
  host.disk.Find(staging + "plain.dat")->attributes = fakes::kReadOnly;
  const backupset::Archiver archiver(tools, packed.workFolder);
  backupset::Archive made;
  EXPECT_EQ(archiver.PackCategory("UserData", kFails, made), Result::Done);
  ASSERT_EQ(host.processes.started.size(), 1u);
  EXPECT_EQ(host.processes.started[0].commandLine,
            "cabarc -r -p n UserData.cab \"a&b.txt\" \".\\My Tree\\*.*\" plain.dat .\\Tree\\*.* \"two words.dat\"");
  EXPECT_EQ(host.processes.started[0].currentFolder + "\\", staging);
  EXPECT_EQ(host.Unpacked(staging + "CABFILE\\UserData.cab").size(), 5u);
  EXPECT_EQ(Described(made), "UserData.cab, 0 bytes, 5 files");
  EXPECT_EQ(Staged(), (Names{"cabfile\\OldData.cab", "cabfile\\UserData.cab"}));
  EXPECT_EQ(host.disk.CurrentFolder(), fakes::kProgramFolder);
  EXPECT_EQ(archiver.PackCategory("MenuData", kFails, made), Result::Stopped) << "only the archive folder is left";

  const std::uint64_t size = host.disk.Read(staging + "CABFILE\\UserData.cab").size();
  packed.set.archives = {made};
  host.disk.MakeFolders(staging + "Folder.cab");
  EXPECT_EQ(archiver.CollectArchives(packed.set), Result::Done);
  EXPECT_EQ(Staged(), (Names{"OldData.cab", "UserData.cab"}));
  EXPECT_EQ(packed.set.folder, staging);
  ASSERT_EQ(packed.set.archives.size(), 2u);
  EXPECT_EQ(Described(packed.set.archives[0]), "OldData.cab, 19 bytes, 0 files");
  EXPECT_EQ(Described(packed.set.archives[1]), "UserData.cab, " + std::to_string(size) + " bytes, 5 files");
}

// The command begins with 27 characters; with names of 30 characters each, 1056 fit and 1057 do not.
TEST_F(JobTest, ListThatExceedsACommandLineIsNotCut) {
  const backupset::Archiver archiver(tools, packed.workFolder);
  for (const int files : {1056, 1057}) {
    for (int i = 0; i < files; ++i) {
      const std::string number = std::to_string(i);
      host.disk.Write(kStaging + std::string(30 - number.size(), 'f') + number, "x");
    }
    backupset::Archive made;
    const base::Outcome outcome = archiver.PackCategory("UserData", kFails, made);
    EXPECT_EQ(outcome, files == 1056 ? Result::Done : Result::Failed);
    EXPECT_EQ(outcome.cause, files == 1056 ? "" : "Too many files for one command line: cabarc (UserData)");
    ASSERT_EQ(host.processes.started.size(), 1u);
    EXPECT_EQ(host.processes.started[0].commandLine.size(), 27u + 1056u * 31u);
  }
}

/// What the files of one folder look like.
class DiskWithFolder : public fakes::FakeFileSystem {
 public:
  DiskWithFolder(fakes::FakeHost& host, std::string folder, std::vector<host::FolderEntry> entries)
      : FakeFileSystem(host.disk, host.calls), folder_(std::move(folder)), entries_(std::move(entries)) {}
  base::Outcome List(const std::string& folder, const std::string& pattern,
                     std::vector<host::FolderEntry>& entries) override {
    if (folder != folder_) return FakeFileSystem::List(folder, pattern, entries);
    entries = entries_;
    return Result::Done;
  }

 private:
  std::string folder_;
  std::vector<host::FolderEntry> entries_;
};

// Before the archiver has worked on it for minutes, and in words that name what is too much.
TEST_F(JobTest, WhatNoArchiveCanHoldIsNotPacked) {
  std::vector<host::FolderEntry> many(65'536);
  for (std::size_t i = 0; i < many.size(); ++i) many[i].name = std::to_string(i);
  const host::FolderEntry large{.name = "large.dat", .size = std::uint64_t{1} << 31};
  host.disk.MakeFolders(kStaging + std::string("Tree"));
  for (const auto& [entries, cause] :
       {std::pair(many, "65536 files; an archive holds 65535"), {{large}, "Tree\\large.dat has 2147483648 bytes"}}) {
    DiskWithFolder files(host, kStaging + std::string("Tree\\"), entries);
    const work::Tools limited = ToolsOn(files);
    backupset::Archive made;
    const base::Outcome outcome = backupset::Archiver(limited, packed.workFolder).PackCategory("X", kFails, made);
    EXPECT_EQ(outcome, Result::Failed);
    EXPECT_PRED_FORMAT2(testing::IsSubstring, cause, outcome.cause);
  }
  EXPECT_TRUE(host.processes.started.empty());
}

// Names are held as UTF-8: a name that Windows allows can be longer than an archive takes, wherever it lies.
TEST_F(JobTest, ANameThatIsTooLongCostsItsOwnFileAlone) {
  std::string longName;
  for (int i = 0; i < 86; ++i) longName += "\u64ae";
  for (const std::string folder : {"", "Tree\\"}) {
    SCOPED_TRACE(folder);
    host.disk.Write(kStaging + folder + longName, "x");
    host.disk.Write(kStaging + folder + "short.dat", "kept");
    backupset::Archive made;
    EXPECT_EQ(backupset::Archiver(tools, packed.workFolder).PackCategory("UserData", kFails, made), Result::Done);
    EXPECT_EQ(made.files, 1u);
    EXPECT_EQ(host.Unpacked(kStaging + std::string("CABFILE\\UserData.cab")),
              (fakes::CabinetContents{{folder + "short.dat", "kept"}}));
    EXPECT_TRUE(WasWarnedOf("longer than an archive can hold: " + folder + longName));
    host.disk.Remove(kStaging + std::string("CABFILE"));
  }
}

// Archivers pack a file twice that two items name; the last one is what comes out. Of the category before, which left
// its files in the same folder, nothing may come into the next.
TEST_F(JobTest, UnpackingBringsTheLastOfOnePathAndNothingOfBefore) {
  host.disk.Write("D:\\Set\\MenuData.cab", fakes::MakeCabinetOf({{"Menu\\a", "menu"}, {"common.dat", "menu's"}}));
  host.disk.Write("D:\\Set\\UserData.cab", fakes::MakeCabinetOf({{"a", "first"}, {"a", "second, and longer"}}));
  const backupset::Archiver archiver(tools, packed.workFolder);
  EXPECT_EQ(archiver.ExtractArchive("D:\\Set\\MenuData", true), Result::Done);
  EXPECT_EQ(archiver.ExtractArchive("D:\\Set\\UserData", true), Result::Done);
  EXPECT_EQ(host.disk.Tree(packed.workFolder.ArchiveFolder()),
            (std::map<std::string, std::string>{{"a", "second, and longer"}}));
  EXPECT_EQ(Staged(), Names{"CABFILE\\a"}) << "the copies of the archives have gone";
}

}  // namespace
