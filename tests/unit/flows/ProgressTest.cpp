// The bar of each dialog through whole jobs. That it never goes back is watched in every test with a screen.
#include "unit/Session.h"

namespace {

using enum base::MessageId;

/// A session in which the bars are looked at as they stand while a message is shown.
struct WatchedSession : Session {
  explicit WatchedSession(const Arrangement& arrange = Nothing) : Session(arrange) {
    disk.Write("C:\\Tarsus\\Image\\large.dat", std::string(3'000'000, 'x'));
  }
  const std::vector<int>& Seen(const char* form) { return toolkit.bars.at(form).values; }
  void ExpectAtEnd(const char* form, std::size_t moves) {
    EXPECT_EQ(Seen(form).back(), forms::ProgressBar::kEnd) << form;
    EXPECT_GE(Seen(form).size(), moves) << form;
    EXPECT_FALSE(toolkit.bars.at(form).failed) << form;
  }
  void SeeThen(base::MessageId id, std::function<void()> look) {
    person.ExpectMessage(id, host::Answer::Consented, std::move(look));
  }
};

TEST(JobProgress, IsAtItsEndWhenTheSuccessIsTold) {
  WatchedSession session;
  session.BackUpTo(kSetFolder, kEverything);
  session.See({AskMakeBackupFolder});
  session.SeeThen(BackupComplete, [&] {
    session.ExpectAtEnd("frmBackup", 10);
    session.ExpectAtEnd("frmSelectFolder", 10);
  });
  session.OpenMenuItem(Menu::Restore);
  session.AcceptFolder(kSetFolder);
  session.StartRestore();
  session.See({AskReplaceIPCounter});
  session.SeeThen(RestoreComplete, [&] { session.ExpectAtEnd("frmRestore", 10); });
  session.OpenMenuItem(Menu::MaintenanceLog);
  session.StartMaintenance();
  session.AcceptFolder("D:\\Log");
  session.See({AskMakeMaintenanceFolder});
  session.SeeThen(MaintenanceComplete, [&] { session.ExpectAtEnd("frmMainMenu", 3); });
  session.EndAfter({});
}

TEST(JobProgress, StaysWhereItWasWhenTheFailureIsTold) {
  const auto expectFailed = [](WatchedSession& session, const char* form) {
    EXPECT_TRUE(session.toolkit.bars.at(form).failed) << form;
    EXPECT_LT(session.Seen(form).back(), forms::ProgressBar::kEnd) << form;
  };
  WatchedSession gathering(Program(kArchiver, DoNothing));
  gathering.SignIn();
  gathering.OpenMenuItem(Menu::Backup);
  gathering.StartBackup(kEverything);
  gathering.SeeThen(BackupNotGathered, [&] { expectFailed(gathering, "frmBackup"); });
  gathering.LeaveBackupAfter({});

  WatchedSession writing(Fails("FileSystem", "OpenUncached", 2));
  writing.BackUpTo(kSetFolder, kEverything);
  writing.See({AskMakeBackupFolder});
  writing.SeeThen(BackupNotWritten, [&] { expectFailed(writing, "frmSelectFolder"); });
  writing.LeaveBackupAfter({});
}

}  // namespace
