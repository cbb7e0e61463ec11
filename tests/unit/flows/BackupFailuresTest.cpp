// Backups that fail: what the operator is told, and that nothing is left behind.
#include "unit/Session.h"

namespace {

struct Failure {
  const char* name;
  Arrangement arrange;
  Ids messages;
  Ticks ticks = kReportOnly;
};

const Failure kGatheringFailures[] = {
    {"no temporary folder", [](auto& host) { host.files.temporaryFolder = "E:\\Temp\\"; }, {60360}},
    {"no job file", Gone("C:\\Tarsus\\System\\BackupList.ini"), {60371}},
    {"section missing", Jobs({"[PATIENT_BACKUP]", "Folder=Patient"}), {60370}, kEverything},
    {"empty section", Jobs({"[REPORT_BACKUP]", "[X]", "Folder=Report"}), {60371}},
    {"unknown variable", Jobs({"[REPORT_BACKUP]", "Folder=Report", "CommonFile=%Nowhere%\\x"}), {60326, 60371}},
    {"no patient data",
     Jobs({"[PATIENT_BACKUP]", "[REPORT_BACKUP]", "Folder=Report"}),
     {60371},
     {.patient = true, .report = true}},
    {"nothing of the system group",
     Jobs({"[MENU_BACKUP]", "[SYSTEM_BACKUP]", "[USER_BACKUP]", "[EXPLANATION_BACKUP]", "[REPORTSET_BACKUP]"}),
     {60371},
     {.system = true}},
    {"no logs", Jobs({"[LOG_BACKUP]"}), {60371}, {.log = true}},
    {"one category produces nothing", Gone("C:\\Tarsus\\Report"), {60371}, kEverything},
    {"no delete list", NoEntry("DeleteListDB"), {60371}},
    {"disk full for the files", Before("", Room(5)), {60371}},
    {"disk full for the archive", Before("cabarc", Room(20)), {60371}},
};

TEST(BackupFailures, InGatheringLeaveTheDialogOpen) {
  for (const Failure& failure : kGatheringFailures) {
    SCOPED_TRACE(failure.name);
    Session session;
    failure.arrange(session);
    session.BeginBackup(failure.ticks);
    session.LeaveBackupAfter(failure.messages);
    EXPECT_EQ(session.ChangedHostFiles(), Paths());
    EXPECT_TRUE(session.disk.Tree("D:\\").empty());
    EXPECT_FALSE(session.IsBackupDated());
  }
}

const Failure kWritingFailures[] = {
    {"no version of the category", SystemFile("BackupVersion.ini", {"ReportData =2", "ReportData="}), {64302, 60372}},
    {"medium vanishes", Before("\"D:\\", NoMedium("D:")), {64302, 60351}},
    {"medium fills up", Before("\"D:\\", Capacity("D:", 50)), {64302, 60351}},
    {"archive vanishes", Before("\"D:\\", Gone(kStagingFolder + std::string("\\ReportData.cab"))), {64302, 60352}},
};

TEST(BackupFailures, InWritingCloseTheSelection) {
  for (const Failure& failure : kWritingFailures) {
    SCOPED_TRACE(failure.name);
    Session session;
    failure.arrange(session);
    session.BeginBackup(failure.ticks);
    session.AcceptFolder("D:\\Set");
    session.LeaveBackupAfter(failure.messages);
    EXPECT_EQ(session.ChangedHostFiles(), Paths());
    EXPECT_FALSE(session.IsBackupDated());
  }
}

// The set is whole on its medium by then, and dated.
TEST(BackupFailures, RefusedAuditRecordIsShownThoughTheSetIsWritten) {
  Session session;
  session.calls.FailFrom("AuditTrail", "RecordCategoryPhase", 2);
  session.BeginBackup({.system = true, .report = true});
  session.AcceptFolder("D:\\");
  session.LeaveBackupAfter({60510});
  EXPECT_EQ(session.qx32.texts["BackupDate"], "20120315");
  EXPECT_TRUE(session.disk.IsFile("D:\\BackupInfo.ini"));
}

// Another folder can be chosen all the same.
TEST(BackupFailures, WithoutMediaDatabaseNoDriveIsProposed) {
  const struct {
    Arrangement plant;
    Ids messages;
    int closes;
  } cases[] = {{NoEntry("NetConfigDB"), {60326}, 0},
               {[](auto& host) { host.qxNetDB.location = "elsewhere"; }, {60323}, 1},
               {Fails("QXNetDB", "GetEquip"), {}, 1},
               {Fails("QXNetDB", "GetDriveInfo", 2), {}, 1},
               {[](auto& host) { host.qxNetDB.records[1].attribute = "writable"; }, {}, 1},
               {[](auto& host) { host.qxNetDB.records.clear(); }, {}, 1}};
  for (const auto& each : cases) {
    Session session;
    each.plant(session);
    session.BeginBackup(kReportOnly);
    session.See(each.messages);
    session.At<frmSelectFolder>([](frmSelectFolder& form) {
      EXPECT_EQ(form.txtFolder.Text(), ":\\20120315093012\\");
      fakes::Type(form.txtFolder, "D:\\");
      fakes::Press(form.cmdOK);
    });
    session.EndAfter({65300});
    EXPECT_FALSE(session.qxNetDB.open);
    EXPECT_EQ(session.qxNetDB.closes, each.closes);
    EXPECT_EQ(session.state.MediaAppType, "");
  }
}

TEST(BackupFailures, FailedLogDeletionIsShownAfterTheSuccess) {
  Session session;
  InUse("C:\\Tarsus\\Log\\Host\\host.log")(session);
  InUse("C:\\Tarsus\\System\\Tarsus.log")(session);
  session.BeginBackup({.log = true, .deleteLogs = true});
  session.AcceptFolder("D:\\");
  session.EndAfter({64304, 65300, 60390});
  EXPECT_EQ(session.ChangedHostFiles(), Paths());
}

TEST(BackupFailures, StagingFolderThatCannotBeRemovedIsShown) {
  Session session;
  session.leavesStagingFolder = true;
  session.calls.FailFrom("FileSystem", "RemoveFolder", 1, kStagingFolder);
  session.BeginBackup(kReportOnly);
  session.AcceptFolder("D:\\");
  session.EndAfter({65300, 60361});
  EXPECT_TRUE(session.disk.IsFile("D:\\ReportData.cab"));
}

// A failed backup can be put right and started again from the same dialog.
TEST(BackupFailures, NextStartSucceeds) {
  Session session;
  const auto report = session.disk.Tree("C:\\Tarsus\\Report");
  session.disk.Remove("C:\\Tarsus\\Report");
  session.BeginBackup(kReportOnly);
  session.person.ExpectMessage(60371, 0, [&] {
    for (const auto& [path, bytes] : report) session.disk.Write("C:\\Tarsus\\Report\\" + path, bytes);
    ++session.clock.now.second;
  });
  session.StartBackup(kReportOnly);
  session.AcceptFolder("D:\\");
  session.EndAfter({65300});
  EXPECT_EQ(session.Unpacked("D:\\ReportData.cab").size(), 1u);
}

}  // namespace
