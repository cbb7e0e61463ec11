// Running a section, and packing what it gathers.
#include "backup/JobRunner.h"

#include "backup/Categories.h"
#include "backup/Packing.h"
#include "unit/backup/JobFixture.h"

namespace {

constexpr const char* kArchive = "C:\\Work\\CABFILE\\UserData.cab";

struct SectionRun {
  const char* name;
  app::Operation operation;
  std::vector<std::string> lines;
  app::ResultCode personalInfo;
  int count;
  Names asked;
  bool unknownVariable = false;
};

const auto kBackup = app::Operation::Backup;
const auto kMaintenance = app::Operation::MaintenanceLogBackup;
const std::string kInfo = "personal info of USER_BACKUP";
const SectionRun kRuns[] = {
    {"three kinds", kBackup, {"BatFile=%System%\\DumpPatients.bat", "Folder=User", "RegFile="}, 0, 3, {kInfo}},
    {"batch files do not count", kBackup, {"BatFile=%System%\\DumpPatients.bat"}, 1, 0, {kInfo}},
    {"nothing gathered", kBackup, {"Folder=None"}, 0, 0, {kInfo}},
    {"failure abandons it", kBackup, {"Folder=User", "CommonFile=%X%\\a"}, 0, 0, {kInfo}, true},
    {"personal info fails", kBackup, {"Folder=User"}, -1, 0, {kInfo}},
    {"maintenance counts batch files",
     kMaintenance,
     {"BatFile=%System%\\DumpPatients.bat", "Folder=User"},
     1,
     2,
     {"script 1", kInfo, "script 2", "script 3"}},
    {"maintenance survives a failure",
     kMaintenance,
     {"Folder=User", "CommonFile=%X%\\a"},
     -1,
     1,
     {"script 1", kInfo, "script 2", "script 3"},
     true},
    {"maintenance without anything to pack", kMaintenance, {"Folder=None"}, 0, 0, {"script 1", kInfo, "script 2"}},
};

TEST_F(JobTest, SectionsAreGatheredAndPacked) {
  for (const SectionRun& each : kRuns) {
    SCOPED_TRACE(each.name);
    host.disk.Remove("C:\\Work");
    host.disk.MakeFolders(each.operation == kMaintenance ? "C:\\Work\\BCP" : kStaging);
    application.state.CurrentOperation = each.operation;
    collectors.asked.clear();
    collectors.personalInfo = each.personalInfo;
    LoadSection("USER_BACKUP", each.lines);
    if (each.unknownVariable) host.person.ExpectMessage(60326);
    EXPECT_EQ(backup::RunSectionItems(job, "USER_BACKUP", "UserData"), each.count);
    EXPECT_EQ(collectors.asked, each.asked);
    EXPECT_EQ(host.disk.IsFile(kArchive), each.count > 0);
    EXPECT_EQ(Staged(), each.count > 0 ? Names{"CABFILE\\UserData.cab"} : Names{})
        << "nothing may leak into the next category";
  }
}

TEST_F(JobTest, PackingNamesEverythingAndEmptiesTheStagingFolder) {
  for (const char* name :
       {"plain.dat", "two words.dat", "a&b.txt", "Tree\\x\\1.dat", "My Tree\\2.dat", "cabfile\\OldData.cab"}) {
    host.disk.Write(std::string("C:\\Work\\") + name, name);
  }
  host.disk.Find("C:\\Work\\plain.dat")->attributes = fakes::kReadOnly;
  EXPECT_EQ(backup::PackCategory(application, "UserData"), app::kDone);
  ASSERT_EQ(host.processes.started.size(), 1u);
  EXPECT_EQ(host.processes.started[0].commandLine,
            "cabarc -r -p n UserData.cab \"a&b.txt\" \".\\My Tree\\*.*\" plain.dat .\\Tree\\*.* \"two words.dat\"");
  EXPECT_EQ(host.processes.started[0].currentFolder, "C:\\Work");
  EXPECT_EQ(host.Unpacked(kArchive).size(), 5u);
  EXPECT_EQ(Staged(), (Names{"cabfile\\OldData.cab", "cabfile\\UserData.cab"}));
  EXPECT_EQ(host.disk.CurrentFolder(), fakes::kProgramFolder);
  EXPECT_EQ(backup::PackCategory(application, "MenuData"), app::kStopped) << "only the archive folder is left";
  EXPECT_EQ(backup::CollectArchives(application), app::kDone);
  EXPECT_EQ(Staged(), (Names{"OldData.cab", "UserData.cab"}));
}

struct PackFault {
  const char* name;
  void (*arrange)(fakes::FakeHost&);
  const char* warning;
};

const PackFault kPackFaults[] = {
    {"archiver missing", [](fakes::FakeHost& h) { h.disk.Remove("C:\\Tarsus\\Backup\\cabarc.exe"); },
     "Not started: cabarc"},
    {"archiver makes nothing",
     [](fakes::FakeHost& h) {
       h.processes.Install("C:\\Tarsus\\Backup\\cabarc.exe", [](fakes::Disk&, const fakes::Words&) { return 3u; });
     },
     "Exit code 3: cabarc -r -p n UserData.cab f.dat (UserData)"},
    {"archive cannot be moved", [](fakes::FakeHost& h) { h.calls.FailFrom("FileSystem", "MoveTo"); }, ""},
    {"staging folder cannot be listed", [](fakes::FakeHost& h) { h.calls.FailFrom("FileSystem", "List"); }, ""},
    {"staging folder cannot be entered", [](fakes::FakeHost& h) { h.calls.FailFrom("FileSystem", "SetCurrentFolder"); },
     ""},
};

TEST(PackingFaults, AreFailures) {
  for (const PackFault& fault : kPackFaults) {
    SCOPED_TRACE(fault.name);
    JobStation station;
    station.host.disk.Write("C:\\Work\\f.dat", "x");
    fault.arrange(station.host);
    EXPECT_EQ(backup::PackCategory(station.application, "UserData"), app::kFailed);
    EXPECT_EQ(station.WasWarnedOf(fault.warning), *fault.warning != '\0');
    EXPECT_TRUE(station.host.disk.IsFile("C:\\Work\\f.dat"));
  }
}

// The command begins with 27 characters; with names of 30 characters each, 1056 fit and 1057 do not.
TEST_F(JobTest, ListThatExceedsACommandLineIsNotCut) {
  for (int i = 0; i < 1056; ++i) {
    std::string name = std::to_string(i);
    host.disk.Write("C:\\Work\\" + std::string(30 - name.size(), 'f') + name, "x");
  }
  EXPECT_EQ(backup::PackCategory(application, "UserData"), app::kDone);
  EXPECT_EQ(host.processes.started[0].commandLine.size(), 27u + 1056u * 31u);
  for (int i = 0; i < 1057; ++i) {
    std::string name = std::to_string(i);
    host.disk.Write("C:\\Work\\" + std::string(30 - name.size(), 'f') + name, "x");
  }
  EXPECT_EQ(backup::PackCategory(application, "MenuData"), app::kFailed);
  EXPECT_EQ(host.processes.started.size(), 1u);
  EXPECT_TRUE(WasWarnedOf("Too many files for one command line"));
}

struct Group {
  const char* name;
  backup::CategoryChoice choice;
  std::vector<std::string> sectionsWithData;
  app::ResultCode result;
  Names archives;
};

const Group kGroups[] = {
    {"one of the system group", {.system = true}, {"USER_BACKUP"}, 0, {"UserData.cab"}},
    {"none of the system group", {.system = true}, {}, -1, {}},
    {"patient data empty", {.patient = true, .report = true}, {"REPORT_BACKUP"}, -1, {}},
    {"report empty", {.patient = true, .report = true}, {"PATIENT_BACKUP"}, -1, {"CABFILE\\PatientData.cab"}},
    {"all four",
     {true, true, true, true},
     {"PATIENT_BACKUP", "MENU_BACKUP", "LOG_BACKUP", "REPORT_BACKUP"},
     0,
     {"LogData.cab", "MenuData.cab", "PatientData.cab", "ReportData.cab"}},
};

TEST_F(JobTest, TickedCategoriesMustYieldAnArchive) {
  for (const Group& group : kGroups) {
    SCOPED_TRACE(group.name);
    host.disk.Remove("C:\\Work");
    host.disk.MakeFolders(kStaging);
    std::vector<std::string> lines;
    for (const char* section : {"PATIENT_BACKUP", "MENU_BACKUP", "SYSTEM_BACKUP", "USER_BACKUP", "EXPLANATION_BACKUP",
                                "REPORTSET_BACKUP", "LOG_BACKUP", "REPORT_BACKUP"}) {
      lines.push_back(std::string("[") + section + "]");
      for (const std::string& full : group.sectionsWithData) {
        if (full == section) lines.emplace_back("Folder=Menu");
      }
    }
    host.WriteLines("C:\\Tarsus\\System\\BackupList.ini", lines);
    application.state.Present = {true, true, true, true, true, true, true, true};
    ASSERT_EQ(backup::LoadBackupSections(job, group.choice), app::kDone);
    EXPECT_EQ(backup::PackCategories(job, group.choice), group.result);
    EXPECT_EQ(Staged(), group.archives);
  }
  EXPECT_EQ(collectors.asked.front(), "personal info of MENU_BACKUP");
  EXPECT_TRUE(application.state.Present.IPCounter) << "raised by the logs";
  EXPECT_FALSE(application.state.Present.UserData);
}

}  // namespace
