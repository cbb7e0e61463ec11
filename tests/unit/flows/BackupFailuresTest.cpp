// Backups that fail: what the operator is told, and that nothing is left behind.
#include <gtest/gtest.h>

#include "unit/flows/Session.h"

namespace flows {
namespace {

struct Failure {
  const char* name;
  Ticks ticks;
  void (*arrange)(Session&);
  std::vector<std::int32_t> messages;
};

void PrintTo(const Failure& failure, std::ostream* out) {
  *out << failure.name;
}

void ReplaceJobs(Session& session, const std::vector<std::string>& lines) {
  session.WriteLines(std::string(fakes::kSystemFolder) + "BackupList.ini", lines);
}

/// Leaves only `room` bytes on the system disk.
void FillUp(Session& session, std::uint64_t room) {
  fakes::Drive& drive = *session.disk.FindDrive("C:");
  drive.capacity -= static_cast<std::uint64_t>(session.disk.FreeSpace("C:")) - room;
}

class GatheringFailure : public testing::TestWithParam<Failure> {};

TEST_P(GatheringFailure, IsShownAndLeavesTheDialogOpen) {
  Session session;
  GetParam().arrange(session);
  session.BeginBackup(GetParam().ticks);
  for (const std::int32_t message : GetParam().messages) session.person.ExpectMessage(message);
  session.LeaveBackup();
  session.Run();
  EXPECT_EQ(session.ChangedHostFiles(), std::vector<std::string>());
  EXPECT_TRUE(session.disk.Tree("D:\\").empty());
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
  EXPECT_EQ(session.qx32.texts.count("BackupDate"), 0u);
}

const Failure kGatheringFailures[] = {
    {"NoTemporaryFolder", {.report = true}, [](Session& s) { s.files.temporaryFolder = "E:\\Temp\\"; }, {60360}},
    {"NoJobFile", kEverything, [](Session& s) { s.disk.Remove("C:\\Tarsus\\System\\BackupList.ini"); }, {60371}},
    {"SectionMissing",
     kEverything,
     [](Session& s) {
       ReplaceJobs(s, {"[PATIENT_BACKUP]", "Folder=Patient"});
     },
     {60370}},
    {"SectionInOtherCase",
     {.report = true},
     [](Session& s) {
       ReplaceJobs(s, {"[Report_Backup]", "Folder=Report"});
     },
     {60370}},
    {"SectionWithBlank",
     {.report = true},
     [](Session& s) {
       ReplaceJobs(s, {"[REPORT_BACKUP] ", "Folder=Report"});
     },
     {60370}},
    {"EmptySection",
     {.report = true},
     [](Session& s) {
       ReplaceJobs(s, {"[REPORT_BACKUP]", "[X]", "Folder=Report"});
     },
     {60371}},
    {"KeyNotRecognised",
     {.report = true},
     [](Session& s) {
       ReplaceJobs(s, {"[REPORT_BACKUP]", "Folder =Report", "folder=Report", " Folder=Report"});
     },
     {60371}},
    {"UnknownVariable",
     {.report = true},
     [](Session& s) {
       ReplaceJobs(s, {"[REPORT_BACKUP]", "Folder=Report", "CommonFile=%Nowhere%\\x.dat"});
     },
     {60326, 60371}},
    {"OneCategoryProducesNothing", kEverything, [](Session& s) { s.disk.Remove("C:\\Tarsus\\Report"); }, {60371}},
    {"BatchFileMissing",
     {.patient = true},
     [](Session& s) { s.calls.FailFrom("Processes", "Start", 1, "DumpPatients.bat"); },
     {60371}},
    {"NoArchiver",
     {.report = true},
     [](Session& s) { s.calls.FailFrom("Processes", "Start", 1, "cabarc -r -p n ReportData.cab .\\Report\\*.*"); },
     {60371}},
    {"ArchiverMakesNothing",
     {.report = true},
     [](Session& s) {
       s.processes.Install("C:\\Tarsus\\Backup\\cabarc.exe", [](fakes::Disk&, const fakes::Words&) { return 0u; });
     },
     {60371}},
    {"NoCommandInterpreter", {.report = true}, [](Session& s) { s.calls.FailFrom("Processes", "Start"); }, {60371}},
    {"NoFilter",
     {.report = true},
     [](Session& s) { s.calls.FailFrom("ComponentFactory", "CreatePersonalInfoFilter"); },
     {60371}},
    {"NoDeleteListEntry", {.report = true}, [](Session& s) { s.qx32.pathTable.erase("DeleteListDB"); }, {60371}},
    {"SystemDiskFullForTheFiles",
     {.report = true},
     [](Session& s) { s.processes.beforeWork = [&s](const std::string&) { FillUp(s, 5); }; },
     {60371}},
    {"SystemDiskFullForTheArchive",
     {.report = true},
     [](Session& s) {
       s.processes.beforeWork = [&s](const std::string& command) {
         if (command.starts_with("cabarc")) FillUp(s, 20);
       };
     },
     {60371}},
};

INSTANTIATE_TEST_SUITE_P(All, GatheringFailure, testing::ValuesIn(kGatheringFailures),
                         [](const auto& test) { return test.param.name; });

class WritingFailure : public testing::TestWithParam<Failure> {};

TEST_P(WritingFailure, IsShownAndClosesTheSelection) {
  Session session;
  GetParam().arrange(session);
  session.BeginBackup({.report = true});
  session.AcceptFolder("D:\\Set");
  for (const std::int32_t message : GetParam().messages)
    session.person.ExpectMessage(message, message == 64302 || message == 64305 ? app::kConsented : 0);
  session.LeaveBackup();
  session.Run();
  EXPECT_EQ(session.ChangedHostFiles(), std::vector<std::string>());
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
  EXPECT_EQ(session.qx32.texts.count("BackupDate"), 0u);
  EXPECT_FALSE(session.person.WasShown(65300));
}

bool CopiesToMedium(const std::string& command) {
  return command.find("\"D:\\") != std::string::npos;
}

const Failure kWritingFailures[] = {
    {"PreparationFails",
     {},
     [](Session& s) {
       s.calls.FailFrom("MediaComponent", "PrepareDrive");
       s.Told().mediaStatuses['D'] = {3, 2};
     },
     {64305, 60382, 60382}},
    {"LabelNotSet",
     {},
     [](Session& s) {
       s.calls.FailFrom("Drives", "SetVolumeLabel");
       s.Told().mediaStatuses['D'] = {3, 2};
     },
     {64305, 60383}},
    {"FolderNotMade",
     {},
     [](Session& s) {
       s.disk.FindDrive("D:")->writable = false;
       s.Told().mediaStatuses['D'] = {3, 3};
     },
     {64302, 63413}},
    {"NoVersionFile", {}, [](Session& s) { s.disk.Remove("C:\\Tarsus\\System\\BackupVersion.ini"); }, {64302, 60372}},
    {"NoVersionOfTheCategory",
     {},
     [](Session& s) {
       s.WriteLines("C:\\Tarsus\\System\\BackupVersion.ini", {"PatientData=1", "ReportData =2", "ReportData="});
     },
     {64302, 60372}},
    {"MediumVanishes",
     {},
     [](Session& s) {
       s.processes.beforeWork = [&s](const std::string& command) {
         if (CopiesToMedium(command)) s.disk.FindDrive("D:")->ready = false;
       };
     },
     {64302, 60351}},
    {"MediumFillsUp",
     {},
     [](Session& s) {
       s.processes.beforeWork = [&s](const std::string& command) {
         if (CopiesToMedium(command)) s.disk.FindDrive("D:")->capacity = 50;
       };
     },
     {64302, 60351}},
    {"ArchiveVanishes",
     {},
     [](Session& s) {
       s.processes.beforeWork = [&s](const std::string& command) {
         if (CopiesToMedium(command)) s.disk.Remove("C:\\Users\\Operator\\Temp\\120315093012\\ReportData.cab");
       };
     },
     {64302, 60352}},
    {"CopyNotStarted",
     {},
     [](Session& s) {
       s.calls.FailFrom("Processes", "Start", 1,
                        "CMD /C xcopy \"C:\\Users\\Operator\\Temp\\120315093012\\ReportData.cab\" \"D:\\Set\\\" /S /Y");
     },
     {64302, 60351}},
};

INSTANTIATE_TEST_SUITE_P(All, WritingFailure, testing::ValuesIn(kWritingFailures),
                         [](const auto& test) { return test.param.name; });

// The set is whole on its medium by then, and dated.
TEST(BackupFailures, RefusedAuditRecordIsShownThoughTheSetIsWritten) {
  Session session;
  session.calls.FailFrom("AuditTrail", "RecordCategoryPhase", 2);
  session.BeginBackup({.system = true, .report = true});
  session.AcceptFolder("D:\\");
  session.person.ExpectMessage(60510);
  session.LeaveBackup();
  session.Run();
  EXPECT_EQ(session.qx32.texts["BackupDate"], "20120315");
  EXPECT_TRUE(session.disk.IsFile("D:\\BackupInfo.ini"));
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
}

// The free space must be greater than the set: not even equal.
TEST(BackupFailures, SpaceMustBeGreaterThanTheSet) {
  for (const int spare : {0, 1}) {
    Session session;
    session.BeginBackup({.report = true});
    session.person.Expect<frmSelectFolder>([&](frmSelectFolder& form) {
      const auto set = session.disk.Read("C:\\Users\\Operator\\Temp\\120315093012\\ReportData.cab");
      session.disk.FindDrive("D:")->capacity = set.size() + static_cast<std::uint64_t>(spare);
      fakes::Type(form.txtFolder, "D:\\");
      fakes::Press(form.cmdOK);
    });
    if (spare == 0) {
      session.person.ExpectMessage(62360).ExpectMessage(65301);
      session.CancelFolder();
    } else {
      session.person.ExpectMessage(60351);  // the descriptor no longer fits
    }
    session.LeaveBackup();
    session.Run();
    EXPECT_TRUE(session.IsTemporaryFolderEmpty());
  }
}

TEST(BackupFailures, MediaDatabaseFaultsAreShownAndAnotherFolderCanBeChosen) {
  const std::pair<void (*)(Session&), std::vector<std::int32_t>> cases[] = {
      {[](Session& s) { s.qx32.pathTable.erase("NetConfigDB"); }, {60326}},
      {[](Session& s) { s.qxNetDB.location = "elsewhere"; }, {60323}},
      {[](Session& s) { s.calls.FailFrom("QXNetDB", "GetEquip"); }, {}},
      {[](Session& s) { s.calls.FailFrom("QXNetDB", "GetDriveInfo", 2); }, {}},
      {[](Session& s) { s.qxNetDB.records[1].attribute = "writable"; }, {}}};
  for (const auto& [plant, messages] : cases) {
    Session session;
    plant(session);
    session.BeginBackup({.report = true});
    for (const std::int32_t message : messages) session.person.ExpectMessage(message);
    session.person.Expect<frmSelectFolder>([](frmSelectFolder& form) {
      EXPECT_EQ(form.txtFolder.Text(), ":\\20120315093012\\");
      fakes::Type(form.txtFolder, "D:\\");
      fakes::Press(form.cmdOK);
    });
    session.person.ExpectMessage(65300);
    session.EndMenu();
    session.Run();
    EXPECT_FALSE(session.qxNetDB.open);
    EXPECT_EQ(session.qxNetDB.closes, messages == std::vector<std::int32_t>{60326} ? 0 : 1);
  }
}

TEST(BackupFailures, WithoutMediaComponentNothingCanBeWritten) {
  Session session;
  session.calls.FailFrom("ComponentFactory", "CreateMediaComponent");
  session.BeginBackup({.report = true});
  session.AcceptFolder();
  session.person.ExpectMessage(63310).ExpectMessage(65301);
  session.CancelFolder();
  session.LeaveBackup();
  session.Run();
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
}

// Questions that cannot be put are not consented to: the logs stay.
TEST(BackupFailures, WithoutMessageDialogNothingIsDeleted) {
  Session session;
  session.calls.FailFrom("ComponentFactory", "CreateMessageDialog");
  session.BeginBackup({.log = true, .deleteLogs = true});
  session.AcceptFolder("D:\\");
  session.CancelFolder();
  session.LeaveBackup();
  session.Run();
  EXPECT_EQ(session.ChangedHostFiles(), std::vector<std::string>());
  EXPECT_TRUE(session.disk.Tree("D:\\").empty());
}

TEST(BackupFailures, FailedLogDeletionIsShownAfterTheSuccess) {
  Session session;
  session.disk.Find("C:\\Tarsus\\Log\\Host\\host.log")->readers = 1;
  session.disk.Find("C:\\Tarsus\\System\\Tarsus.log")->readers = 1;
  session.BeginBackup({.log = true, .deleteLogs = true});
  session.AcceptFolder("D:\\");
  session.person.ExpectMessage(64304, app::kConsented).ExpectMessage(65300).ExpectMessage(60390);
  session.EndMenu();
  session.Run();
  EXPECT_EQ(session.ChangedHostFiles(), std::vector<std::string>());
}

TEST(BackupFailures, StagingFolderThatCannotBeRemovedIsShown) {
  Session session;
  session.calls.FailFrom("FileSystem", "RemoveFolder", 1, "C:\\Users\\Operator\\Temp\\120315093012");
  session.BeginBackup({.report = true});
  session.AcceptFolder("D:\\");
  session.person.ExpectMessage(65300).ExpectMessage(60361);
  session.EndMenu();
  session.Run();
  EXPECT_TRUE(session.disk.IsFile("D:\\ReportData.cab"));
}

// A failed backup can be put right and started again from the same dialog.
TEST(BackupFailures, NextStartSucceeds) {
  Session session;
  const auto report = session.disk.Tree("C:\\Tarsus\\Report");
  session.disk.Remove("C:\\Tarsus\\Report");
  session.BeginBackup({.report = true});
  session.person.ExpectMessage(60371, 0, [&] {
    for (const auto& [path, bytes] : report) session.disk.Write("C:\\Tarsus\\Report\\" + path, bytes);
    session.clock.Advance(1);
  });
  session.StartBackup({.report = true});
  session.AcceptFolder("D:\\");
  session.person.ExpectMessage(65300);
  session.EndMenu();
  session.Run();
  EXPECT_EQ(session.Unpacked("D:\\ReportData.cab").size(), 1u);
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
}

}  // namespace
}  // namespace flows
