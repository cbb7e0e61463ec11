// Questions on the way to the destination, and the operator's way out of each.
#include "unit/Session.h"

namespace {

using enum base::MessageId;
using enum host::DriveStatus;

struct Question {
  const char* name;
  base::MessageId message;
  Arrangement arrange;
  std::string folder = "D:\\";
};

const Question kQuestions[] = {
    {"insert a medium", AskInsertBackupMedium, Statuses('D', {Ready, NoMedium, Ready})},
    {"prepare the medium", AskPrepareBackupMedium, Statuses('D', {Ready, Readable})},
    {"foreign label", AskForeignLabel, Label("D:", "HOLIDAY")},
    {"new folder", AskMakeBackupFolder, Nothing, kProposal},
    {"old archive", AskOverwriteBackup, File("D:\\REPORTDATA.CAB", "old")},
    {"old descriptor", AskOverwriteBackup, File("D:\\BackupInfo.ini", "old")},
};

TEST(BackupQuestions, ConsentWritesTheSet) {
  for (const Question& question : kQuestions) {
    SCOPED_TRACE(question.name);
    Session session(question.arrange);
    session.BackUpTo(question.folder);
    session.EndAfter({question.message, BackupComplete});
    EXPECT_EQ(session.Unpacked(question.folder + "ReportData.cab").size(), 1u);
    EXPECT_EQ(session.disk.Read(question.folder + "BackupInfo.ini").substr(0, 6), "[Info]");
    EXPECT_EQ(session.Told().preparedDrives.size(), question.message == AskPrepareBackupMedium ? 1u : 0u);
    EXPECT_EQ(session.disk.FindDrive("D:")->label, question.message == AskForeignLabel ? "HOLIDAY" : "BACKUP");
  }
}

TEST(BackupQuestions, RefusalWritesNothing) {
  for (const Question& question : kQuestions) {
    SCOPED_TRACE(question.name);
    Session session(question.arrange);
    const auto before = session.disk.Tree("D:\\");
    const std::string label = session.disk.FindDrive("D:")->label;
    session.BackUpTo(question.folder);
    session.LeaveBackupAfter({question.message, BackupStopped}, host::Answer::Refused);
    EXPECT_EQ(session.disk.Tree("D:\\"), before);
    EXPECT_EQ(session.disk.FindDrive("D:")->label, label);
    EXPECT_FALSE(session.disk.IsFolder(kProposal));
    EXPECT_EQ(session.Told().auditRecords.size(), 2u) << "sign-in and sign-out alone";
  }
}

TEST(BackupQuestions, RefusedLogDeletionStopsTheBackup) {
  Session session;
  session.BackUpTo("D:\\", kLogsToDelete);
  session.LeaveBackupAfter({AskDeleteLogs, BackupStopped}, host::Answer::Refused);
  EXPECT_TRUE(session.disk.Tree("D:\\").empty());
}

// Every question of one run, in its order.
TEST(BackupQuestions, ComeInTheirOrder) {
  Session session(Both(Statuses('D', {Ready, NoMedium, NoMedium, Readable}), File("D:\\Old\\BackupInfo.ini", "old")));
  session.BackUpTo("D:\\Old", kLogsToDelete);
  session.See({AskDeleteLogs, AskInsertBackupMedium, AskInsertBackupMedium});
  session.person.ExpectMessage(AskPrepareBackupMedium, host::Answer::Consented,
                               [&] { session.calls.FailFrom("Drives", "VolumeLabel"); });
  session.EndAfter({AskForeignLabel, AskOverwriteBackup, BackupComplete});
  EXPECT_TRUE(session.disk.IsFile("D:\\Old\\LogData.cab"));
}

// The host says how its media are prepared: by its program, by hand, or, as above, by its component.
// An answer of the drive that means nothing is asked for again.
TEST(BackupQuestions, MediaArePreparedInTheHostsWay) {
  for (const std::string type : {"APPLICATION", "standard", ""}) {
    SCOPED_TRACE(type);
    Session session(Both(Program("C:\\Tarsus\\Backup\\dvdram.exe", DoNothing),
                         Statuses('D', {Ready, kMeaningless, kMeaningless, Readable})));
    session.qxNetDB.records.back().preparationType = type;
    session.BackUpTo("D:\\");
    session.EndAfter({AskPrepareBackupMedium, BackupComplete});
    EXPECT_TRUE(session.Told().preparedDrives.empty());
    EXPECT_EQ(session.Told().mediaCommands, Names(session.Told().mediaCommands.size(), "dvdram.exe"));
    EXPECT_EQ(session.processes.CountStarted("dvdram.exe"), type == "APPLICATION" ? 1 : 0);
    for (const fakes::StartRecord& program : session.processes.started) {
      EXPECT_EQ(program.style == host::WindowStyle::Normal, program.commandLine == "dvdram.exe");
      EXPECT_TRUE(program.waitedFor);
    }
  }
}

}  // namespace
