// A second try in the same session: nothing of the first one sticks, whatever came of it.
#include "unit/Session.h"

namespace {

// After a backup of everything that is cancelled, one that fails, and a destination that is refused.
TEST(SecondTry, OfABackupMakesTheSetOfAFirstOne) {
  Session once;
  once.BackUpTo("D:\\");
  once.EndAfter({65300});
  Session session;
  session.BeginBackup(kEverything);
  session.At<frmSelectFolder>([&](frmSelectFolder& form) {
    session.disk.Move("C:\\Tarsus\\Report", "C:\\Away");
    fakes::Press(form.cmdCancel);
  });
  session.StartBackup(kReportOnly);
  session.person.ExpectMessage(60371, 0, [&] { session.disk.Move("C:\\Away", "C:\\Tarsus\\Report"); });
  session.StartBackup(kReportOnly);
  session.AcceptFolder();
  session.See({64302, 65301}, app::kRefused);
  session.AcceptFolder("D:\\");
  session.EndAfter({65300});
  EXPECT_EQ(session.disk.Tree("D:\\"), once.disk.Tree("D:\\"));
}

// Of the floppies' descriptor, which broke off, nothing gets into the folder's.
TEST(SecondTry, ToAFolderOfASetThatWasMeantForFloppies) {
  Session once;
  once.BackUpTo("D:\\");
  once.EndAfter({65300});
  Session session(Fails("TextWriter", "Write", 3, std::string(kStagingFolder) + "\\BackupInfo.ini"));
  session.BackUpTo("A:\\");
  session.person.ExpectFormat(0);
  session.See({60326});
  session.person.ExpectMessage(65301, 0, [&] { session.calls.Reset(); });
  session.AcceptFolder("D:\\");
  session.EndAfter({65300});
  EXPECT_EQ(session.disk.Tree("D:\\"), once.disk.Tree("D:\\"));
}

// After a drive error, and after a cancel though the restore before has succeeded.
TEST(SecondTry, OfARestoreFindsTheSelectionOpen) {
  Session session;
  session.BackUpEverything();
  Statuses('D', {-1})(session);
  session.BeginRestore();
  session.See({63410});
  session.AcceptFolder(kSetFolder);
  session.StartRestore("-x------");
  session.See({65400});
  session.OpenMenuItem(1);
  session.AcceptFolder(kSetFolder);
  session.Cancel<frmRestore>();
  session.LeaveRestoreAfter({});
}

}  // namespace
