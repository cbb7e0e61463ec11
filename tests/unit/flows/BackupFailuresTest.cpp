// Backups that fail: what the operator is told, and that nothing is left behind.
#include "unit/Session.h"

namespace {

constexpr Ticks kPatientAndReport{.patient = true, .report = true};

struct Failure {
  const char* name;
  Arrangement arrange;
  Ids messages;  ///< of a failure in writing: first the question for the new folder
  Ticks ticks = kReportOnly;
};

const Failure kFailures[] = {
    {"no temporary folder", [](auto& host) { host.files.temporaryFolder = "E:\\Temp\\"; }, {60360}},
    {"no job file", Gone("C:\\Tarsus\\System\\BackupList.ini"), {60371}},
    {"section missing", Jobs({"[PATIENT_BACKUP]", "Folder=Patient"}), {60370}, kEverything},
    {"empty section", Jobs({"[REPORT_BACKUP]", "[X]", "Folder=Report"}), {60371}},
    {"unknown variable", Jobs({"[REPORT_BACKUP]", "Folder=Report", "CommonFile=%Nowhere%\\x"}), {60326, 60371}},
    {"no patient data", Jobs({"[PATIENT_BACKUP]", "[REPORT_BACKUP]", "Folder=Report"}), {60371}, kPatientAndReport},
    {"nothing of the system group",
     Jobs({"[MENU_BACKUP]", "[SYSTEM_BACKUP]", "[USER_BACKUP]", "[EXPLANATION_BACKUP]", "[REPORTSET_BACKUP]"}),
     {60371},
     {.system = true}},
    {"no logs", Jobs({"[LOG_BACKUP]"}), {60371}, {.log = true}},
    {"one category produces nothing", Gone("C:\\Tarsus\\Report"), {60371}, kEverything},
    {"no delete list", NoEntry("DeleteListDB"), {60371}},
    {"disk full for the files", Before("", Room(5)), {60371}},
    {"disk full for the archive", Before("cabarc", Room(20)), {60371}},
    {"no version of the category", SystemFile("BackupVersion.ini", {"ReportData =2", "ReportData="}), {64302, 60372}},
    {"medium vanishes", Before("\"D:\\", NoMedium("D:")), {64302, 60351}},
    {"medium fills up", Before("\"D:\\", Capacity("D:", 50)), {64302, 60351}},
    {"archive vanishes", Before("\"D:\\", Gone(kStagingFolder + std::string("\\ReportData.cab"))), {64302, 60352}},
    {"audit record refused", Fails("AuditTrail", "RecordCategoryPhase", 2), {64302, 60510}, kEverything},
};

TEST(BackupFailures, AreToldAndLeaveTheDialogOpen) {
  for (const Failure& failure : kFailures) {
    SCOPED_TRACE(failure.name);
    Session session(failure.arrange);
    session.BeginBackup(failure.ticks);
    const bool inWriting = failure.messages[0] == 64302;
    if (inWriting) session.AcceptFolder("D:\\Set");
    session.LeaveBackupAfter(failure.messages);
    EXPECT_TRUE(inWriting || session.disk.Tree("D:\\").empty());
    EXPECT_EQ(session.disk.IsFile("D:\\Set\\BackupInfo.ini"), session.IsBackupDated());
  }
}

// Another folder can be chosen all the same.
TEST(BackupFailures, WithoutMediaDatabaseNoDriveIsProposed) {
  const std::tuple<Arrangement, Ids, int> faults[] = {
      {NoEntry("NetConfigDB"), {60326}, 0},
      {[](auto& host) { host.qxNetDB.location = "elsewhere"; }, {60323}, 1},
      {Fails("QXNetDB", "GetEquip"), {}, 1},
      {Fails("QXNetDB", "GetDriveInfo", 2), {}, 1},
      {[](auto& host) { host.qxNetDB.records.clear(); }, {}, 1},
  };
  for (const auto& [fault, messages, closes] : faults) {
    Session session(fault);
    session.BeginBackup(kReportOnly);
    session.See(messages);
    session.At<frmSelectFolder>([](frmSelectFolder& form) {
      EXPECT_EQ(form.txtFolder.Text(), ":\\20120315093012\\");
      fakes::Type(form.txtFolder, "D:\\");
      fakes::Press(form.cmdOK);
    });
    session.EndAfter({65300});
    EXPECT_FALSE(session.qxNetDB.open);
    EXPECT_EQ(session.qxNetDB.closes, closes);
    EXPECT_EQ(session.state.MediaAppType, "");
  }
}

TEST(BackupFailures, FailedLogDeletionIsShownAfterTheSuccess) {
  Session session(Both(InUse("C:\\Tarsus\\Log\\Host\\host.log"), InUse("C:\\Tarsus\\System\\Tarsus.log")));
  session.BackUpTo("D:\\", kLogsToDelete);
  session.EndAfter({64304, 65300, 60390});
  EXPECT_EQ(session.ChangedHostFiles(), Paths());
}

TEST(BackupFailures, StagingFolderThatCannotBeRemovedIsShown) {
  Session session(Fails("FileSystem", "RemoveFolder", 1, kStagingFolder));
  session.leavesStagingFolder = true;
  session.BackUpTo("D:\\");
  session.EndAfter({65300, 60361});
  EXPECT_TRUE(session.disk.IsFile("D:\\ReportData.cab"));
}

}  // namespace
