// What start-up does when something of the host is missing: the message that
// belongs to it, "Halt Backup Utility" in the log, and nothing else started.

#include "EndToEndTest.h"

namespace endtoend {
namespace {

class StartUp : public EndToEndTest {
 protected:
  /// The log can be written only once the system's database has been read.
  void ExpectHalt(base::MessageId message, bool logged = true) {
    Program program(kProgram);
    EXPECT_EQ(program.AnswerMessage(Answer::Refuse), message);
    program.WaitForEnd();
    EXPECT_FALSE(IsRunning(L"Tarsus.exe"));
    if (logged) {
      ASSERT_FALSE(LogLines().empty());
      EXPECT_EQ(LogLines().back(), "[Error]       Halt Backup Utility");
    }
  }
  void ExpectPlainBox() {
    Program program(kProgram);
    const Window box = program.WaitForMessageBox();
    EXPECT_EQ(box.Title(), "QXBackupUtility");
    EXPECT_EQ(box.Text(0xFFFF), "Not Exist Directory.ini. Please Reinstall Tarsus System.");
    box.Key(VK_RETURN);
    program.WaitForEnd();
    EXPECT_TRUE(LogLines().empty());
  }

  const fs::path directory_ = kTarsus / "System" / "Directory.ini";
};

TEST_F(StartUp, WithoutAnInstallationShowsOnePlainBoxAndEnds) {
  for (const fs::path& missing : {directory_, kTarsus / "Program" / "QX32.dll"}) {
    SCOPED_TRACE(missing);
    const Fault gone = Altered(missing);
    ExpectPlainBox();
  }
}

TEST_F(StartUp, UnreachableDatabasesHalt) {
  for (const auto& [entry, message] :
       {std::pair("\nSysMasterDB=", SystemDatabaseFailed), {"\nLangStrDB=", CatalogueNotOpened}}) {
    SCOPED_TRACE(entry);
    const std::string elsewhere = entry + std::string("DRIVER=SQLite3;Database=C:\\nowhere.db;");
    const Fault fault = Altered(directory_, Replaced(ReadBytes(directory_), entry, elsewhere));
    ExpectHalt(message, message == CatalogueNotOpened);
  }
}

TEST_F(StartUp, MissingComponentsAreSurvived) {
  const Fault gone = Altered(kTarsus / "Program" / "TarsusComponents.dll");
  Program program(kProgram);
  // No message dialog, no log writer, no user list: the sign-in still opens and can be left.
  const Window dialog = program.WaitForDialog(ID_frmUserAuthentication_cmdCancel);
  dialog.PressWithShift(ID_frmUserAuthentication_cmdCancel);
  program.WaitForEnd();
}

TEST_F(StartUp, RefusesToRunBesideAnotherInstance) {
  Operator first;
  first.SignInDialog();
  ExpectHalt(AlreadyRunning);
}

}  // namespace
}  // namespace endtoend
