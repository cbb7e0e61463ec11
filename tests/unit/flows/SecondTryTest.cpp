// A second try in the same session: nothing of the first one sticks, whatever came of it.
#include "unit/Session.h"

namespace {

using enum base::MessageId;

// After a backup of everything that is cancelled, one that fails, and a destination that is refused.
TEST(SecondTry, OfABackupMakesTheSetOfAFirstOne) {
  Session once;
  once.BackUpTo("D:\\");
  once.EndAfter({BackupComplete});
  Session session;
  session.BeginBackup(kEverything);
  session.At<frmSelectFolder>([&](frmSelectFolder& form) {
    session.disk.Move("C:\\Tarsus\\Report", "C:\\Away");
    fakes::Press(form.cmdCancel);
  });
  session.StartBackup(kReportOnly);
  session.person.ExpectMessage(BackupNotGathered, [&] { session.disk.Move("C:\\Away", "C:\\Tarsus\\Report"); });
  session.StartBackup(kReportOnly);
  session.AcceptFolder();
  session.See({AskMakeBackupFolder, BackupStopped}, host::Answer::Refused);
  session.AcceptFolder("D:\\");
  session.EndAfter({BackupComplete});
  EXPECT_EQ(session.disk.Tree("D:\\"), once.disk.Tree("D:\\"));
}

// Of the floppies' descriptor, which broke off, nothing gets into the folder's.
TEST(SecondTry, ToAFolderOfASetThatWasMeantForFloppies) {
  Session once;
  once.BackUpTo("D:\\");
  once.EndAfter({BackupComplete});
  Session session(Fails("TextWriter", "Write", 3, std::string(kStagingFolder) + "\\BackupInfo.ini"));
  session.BackUpTo("A:\\");
  session.person.ExpectFormat(host::FormatAnswer::Done);
  session.See({PathEntryUnreadable});
  session.person.ExpectMessage(BackupStopped, [&] { session.calls.Reset(); });
  session.AcceptFolder("D:\\");
  session.EndAfter({BackupComplete});
  EXPECT_EQ(session.disk.Tree("D:\\"), once.disk.Tree("D:\\"));
}

// After a drive error, and after a cancel though the restore before has succeeded.
TEST(SecondTry, OfARestoreFindsTheSelectionOpen) {
  Session session;
  session.BackUpEverything();
  Statuses('D', {host::DriveStatus::Error})(session);
  session.BeginRestore();
  session.See({SourceDriveError});
  session.AcceptFolder(kSetFolder);
  session.StartRestore({Box::Menu});
  session.See({RestoreComplete});
  session.OpenMenuItem(Menu::Restore);
  session.AcceptFolder(kSetFolder);
  session.Cancel<frmRestore>();
  session.LeaveRestoreAfter({});
}

}  // namespace
