// Backups that fail: what the operator is told, and that nothing is left behind.
#include "unit/Session.h"

namespace {

using enum base::MessageId;

constexpr Ticks kPatientAndReport{.patient = true, .report = true};

struct Failure {
  const char* name;
  Arrangement arrange;
  Ids messages;
  Ticks ticks = kReportOnly;
};

constexpr const char* kDump = "BatFile=%System%\\DumpPatients.bat";
const Arrangement kNoPatientData = Jobs({"[PATIENT_BACKUP]", "[REPORT_BACKUP]", "Folder=Report"});
const Arrangement kUnknownVariable = Jobs({"[REPORT_BACKUP]", "Folder=Report", "CommonFile=%Nowhere%\\x"});
const Arrangement kEmptyGroup =
    Jobs({"[MENU_BACKUP]", "[SYSTEM_BACKUP]", "[USER_BACKUP]", "[EXPLANATION_BACKUP]", "[REPORTSET_BACKUP]"});
const Arrangement kNoVersion = SystemFile("BackupVersion.ini", {"ReportData =2", "ReportData="});
const Arrangement kArchiveVanishes = Before("\"D:\\", Gone(kStagingFolder + std::string("\\ReportData.cab")));

const Failure kInGathering[] = {
    {"no temporary folder", [](auto& host) { host.files.temporaryFolder = "E:\\Temp\\"; }, {BackupWorkFolderNotMade}},
    {"no job file", Gone("C:\\Tarsus\\System\\BackupList.ini"), {BackupNotGathered}},
    {"section missing", Jobs({"[PATIENT_BACKUP]", "Folder=Patient"}), {BackupSectionMissing}, kEverything},
    {"empty section", Jobs({"[REPORT_BACKUP]", "[X]", "Folder=Report"}), {BackupNotGathered}},
    {"a batch file gathers nothing", Jobs({"[REPORT_BACKUP]", kDump}), {BackupNotGathered}},
    {"unknown variable", kUnknownVariable, {PathEntryUnreadable, BackupNotGathered}},
    {"no patient data", kNoPatientData, {BackupNotGathered}, kPatientAndReport},
    {"nothing of the system group", kEmptyGroup, {BackupNotGathered}, {.system = true}},
    {"no logs", Jobs({"[LOG_BACKUP]"}), {BackupNotGathered}, {.log = true}},
    {"one category produces nothing", Gone("C:\\Tarsus\\Report"), {BackupNotGathered}, kEverything},
    {"no delete list", NoEntry("DeleteListDB"), {BackupNotGathered}},
    {"disk full for the files", Before("", Room(5)), {BackupNotGathered}},
    {"disk full for the archive", Before("cabarc", Room(20)), {BackupNotGathered}},
};

/// After the question for the new folder.
const Failure kInWriting[] = {
    {"no version of the category", kNoVersion, {DescriptorNotMade}},
    {"medium vanishes", Before("\"D:\\", NoMedium("D:")), {BackupNotWritten}},
    {"medium fills up", Before("\"D:\\", Capacity("D:", 50)), {BackupNotWritten}},
    {"archive vanishes", kArchiveVanishes, {BackupCopyFailed}},
    {"archive stays in a cache", Fails("FileSystem", "Flush", 1, "D:\\Set\\ReportData.cab"), {BackupNotWritten}},
    {"descriptor stays there", Fails("FileSystem", "Flush", 1, "D:\\Set\\BackupInfo.ini"), {BackupNotWritten}},
    {"nothing can be read back", Fails("FileSystem", "OpenUncached"), {BackupNotWritten}},
    {"audit record refused", Fails("AuditTrail", "RecordCategoryPhase", 2), {BackupNotRecorded}, kEverything},
};

void ExpectFailure(const Failure& failure, bool inWriting) {
  SCOPED_TRACE(failure.name);
  Session session(failure.arrange);
  session.BeginBackup(failure.ticks);
  if (inWriting) session.AcceptFolder("D:\\Set");
  if (inWriting) session.See({AskMakeBackupFolder});
  session.LeaveBackupAfter(failure.messages);
  EXPECT_TRUE(inWriting || session.disk.Tree("D:\\").empty());
  EXPECT_EQ(session.disk.IsFile("D:\\Set\\BackupInfo.ini"), session.IsBackupDated());
}

TEST(BackupFailures, AreToldAndLeaveTheDialogOpen) {
  for (const Failure& failure : kInGathering) ExpectFailure(failure, false);
  for (const Failure& failure : kInWriting) ExpectFailure(failure, true);
}

// Another folder can be chosen all the same. How its medium is to be prepared nobody knows.
TEST(BackupFailures, WithoutMediaDatabaseNoDriveIsProposed) {
  const std::tuple<Arrangement, Ids, int> faults[] = {
      {NoEntry("NetConfigDB"), {PathEntryUnreadable}, 0},
      {[](auto& host) { host.qxNetDB.location = "elsewhere"; }, {NetworkDatabaseNotOpened}, 1},
      {Fails("QXNetDB", "GetEquip"), {}, 1},
      {Fails("QXNetDB", "GetDriveInfo", 2), {}, 1},
      {[](auto& host) { host.qxNetDB.records.clear(); }, {}, 1},
  };
  for (const auto& [fault, messages, closes] : faults) {
    Session session(Both(fault, Statuses('D', {host::DriveStatus::Readable})));
    session.BeginBackup(kReportOnly);
    session.See(messages);
    session.At<frmSelectFolder>([](frmSelectFolder& form) {
      EXPECT_EQ(form.txtFolder.Text(), ":\\20120315093012\\");
      fakes::Type(form.txtFolder, "D:\\");
      fakes::Press(form.cmdOK);
    });
    session.EndAfter({AskPrepareBackupMedium, BackupComplete});
    EXPECT_TRUE(session.Told().preparedDrives.empty());
    EXPECT_FALSE(session.qxNetDB.open);
    EXPECT_EQ(session.qxNetDB.closes, closes);
  }
}

TEST(BackupFailures, FailedLogDeletionIsShownAfterTheSuccess) {
  Session session(Both(InUse("C:\\Tarsus\\Log\\Host\\host.log"), InUse("C:\\Tarsus\\System\\Tarsus.log")));
  session.BackUpTo("D:\\", kLogsToDelete);
  session.EndAfter({AskDeleteLogs, BackupComplete, LogsNotDeleted});
  EXPECT_EQ(session.ChangedHostFiles(), Paths());
}

TEST(BackupFailures, StagingFolderThatCannotBeRemovedIsShown) {
  Session session(Fails("FileSystem", "RemoveFolder", 1, kStagingFolder));
  session.leavesStagingFolder = true;
  session.BackUpTo("D:\\");
  session.EndAfter({BackupComplete, BackupWorkFolderNotRemoved});
  EXPECT_TRUE(session.disk.IsFile("D:\\ReportData.cab"));
}

}  // namespace
