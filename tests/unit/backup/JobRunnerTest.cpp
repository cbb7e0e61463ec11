// Running a section, and packing what it gathers.
#include "backup/JobRunner.h"

#include "backup/Packing.h"
#include "unit/Station.h"

namespace {

using base::Result;
using enum base::MessageId;

constexpr const char* kArchive = "C:\\Work\\CABFILE\\UserData.cab";
constexpr auto kBackup = app::Operation::Backup;
constexpr auto kMaintenance = app::Operation::MaintenanceLogBackup;
const std::string kUnknown = "CommonFile=%X%\\a";
constexpr const char* kDump = "BatFile=%System%\\DumpPatients.bat";

struct SectionRun {
  const char* name;
  app::Operation operation;
  Names lines;
  int count;
  Result personalInfo = Result::Done;
};

const SectionRun kRuns[] = {
    {"three kinds", kBackup, {kDump, "Folder=User", "RegFile="}, 3},
    {"batch files do not count", kBackup, {kDump}, 0, Result::Stopped},
    {"nothing gathered", kBackup, {"Folder=None"}, 0},
    {"failure abandons it", kBackup, {"Folder=User", kUnknown}, 0},
    {"personal info fails", kBackup, {"Folder=User"}, 0, Result::Failed},
    {"maintenance counts batch files", kMaintenance, {kDump, "Folder=User"}, 2, Result::Stopped},
    {"maintenance survives a failure", kMaintenance, {"Folder=User", kUnknown}, 1, Result::Failed},
    {"maintenance without anything to pack", kMaintenance, {"Folder=None"}, 0},
};

// Only a maintenance log has its script, the last time after packing. Nothing may leak into the next category.
TEST_F(JobTest, SectionsAreGatheredAndPacked) {
  for (const SectionRun& each : kRuns) {
    SCOPED_TRACE(each.name);
    host.disk.Remove("C:\\Work");
    host.disk.MakeFolders(each.operation == kMaintenance ? "C:\\Work\\BCP" : kStaging);
    application.state.CurrentOperation = each.operation;
    collectors.asked.clear();
    collectors.personalInfo = each.personalInfo;
    LoadSection("USER_BACKUP", each.lines);
    if (each.lines.back() == kUnknown) host.person.ExpectMessage(PathEntryUnreadable);
    EXPECT_EQ(backup::RunSectionItems(job, "USER_BACKUP", "UserData"), each.count);
    Names asked = {"personal info of USER_BACKUP"};
    if (each.operation == kMaintenance) asked = {"script 1", asked[0], "script 2"};
    if (each.operation == kMaintenance && each.count > 0) asked.push_back("script 3");
    EXPECT_EQ(collectors.asked, asked);
    EXPECT_EQ(Staged(), each.count > 0 ? Names{"CABFILE\\UserData.cab"} : Names{});
  }
}

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
