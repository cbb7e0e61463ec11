// Packing what was gathered, and collecting the archives.
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

}  // namespace
