// Packing what a section has gathered.
#include "backup/Packing.h"

#include "unit/Station.h"

namespace {

using base::Result;

constexpr const char* kArchive = "C:\\Work\\CABFILE\\UserData.cab";

TEST_F(JobTest, PackingNamesEverythingAndEmptiesTheStagingFolder) {
  for (const std::string name :
       {"plain.dat", "two words.dat", "a&b.txt", "Tree\\x\\1.dat", "My Tree\\2.dat", "cabfile\\OldData.cab"})
    host.disk.Write("C:\\Work\\" + name, name);
  host.disk.Find("C:\\Work\\plain.dat")->attributes = fakes::kReadOnly;
  EXPECT_EQ(backup::PackCategory(application, "UserData"), Result::Done);
  ASSERT_EQ(host.processes.started.size(), 1u);
  EXPECT_EQ(host.processes.started[0].commandLine,
            "cabarc -r -p n UserData.cab \"a&b.txt\" \".\\My Tree\\*.*\" plain.dat .\\Tree\\*.* \"two words.dat\"");
  EXPECT_EQ(host.processes.started[0].currentFolder, "C:\\Work");
  EXPECT_EQ(host.Unpacked(kArchive).size(), 5u);
  EXPECT_EQ(Staged(), (Names{"cabfile\\OldData.cab", "cabfile\\UserData.cab"}));
  EXPECT_EQ(host.disk.CurrentFolder(), fakes::kProgramFolder);
  EXPECT_EQ(backup::PackCategory(application, "MenuData"), Result::Stopped) << "only the archive folder is left";
  EXPECT_EQ(backup::CollectArchives(application), Result::Done);
  EXPECT_EQ(Staged(), (Names{"OldData.cab", "UserData.cab"}));
}

// The command begins with 27 characters; with names of 30 characters each, 1056 fit and 1057 do not.
TEST_F(JobTest, ListThatExceedsACommandLineIsNotCut) {
  for (const int files : {1056, 1057}) {
    for (int i = 0; i < files; ++i) {
      const std::string number = std::to_string(i);
      host.disk.Write("C:\\Work\\" + std::string(30 - number.size(), 'f') + number, "x");
    }
    EXPECT_EQ(backup::PackCategory(application, "UserData"), files == 1056 ? Result::Done : Result::Failed);
    ASSERT_EQ(host.processes.started.size(), 1u);
    EXPECT_EQ(host.processes.started[0].commandLine.size(), 27u + 1056u * 31u);
  }
  EXPECT_TRUE(WasWarnedOf("Too many files for one command line"));
}

}  // namespace
