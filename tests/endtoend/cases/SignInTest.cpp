// Sign-in, rights and both ends of the program.

#include "cases/EndToEndTest.h"

namespace endtoend {
namespace {

using SignIn = EndToEndTest;

/// What somebody with a tool for it can do to a button that the program has disabled.
void Force(const Window& dialog, int button) {
  const HWND window = GetDlgItem(dialog.Handle(), button);
  EnableWindow(window, TRUE);
  PostMessageW(window, BM_CLICK, 0, 0);
  PostMessageW(dialog.Handle(), WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), reinterpret_cast<LPARAM>(window));
}

TEST_F(SignIn, EachRightEnablesItsButtonsAndNoForceTheOthers) {
  const struct {
    const User& user;
    bool backup, restore;
  } rights[] = {
      {kBackupOnly, true, false}, {kRestoreOnly, false, true}, {kBoth, true, true}, {kPrivileged, true, true}};
  for (const auto& right : rights) {
    SCOPED_TRACE(right.user.name);
    Operator person;
    const Window menu = person.SignIn(right.user);
    EXPECT_EQ(menu.IsEnabled(ID_frmMainMenu_cmdMenu0), right.backup);
    EXPECT_EQ(menu.IsEnabled(ID_frmMainMenu_cmdMenu1), right.restore);
    EXPECT_EQ(menu.IsEnabled(ID_frmMainMenu_cmdMenu2), right.backup);
    if (!right.backup) Force(menu, ID_frmMainMenu_cmdMenu0);
    if (!right.restore) Force(menu, ID_frmMainMenu_cmdMenu1);
    if (!right.backup) Force(menu, ID_frmMainMenu_cmdMenu2);
    person.MainMenu();
    person.End();
  }
}

TEST_F(SignIn, RefusalsKeepTheDialogOpen) {
  Operator person;
  EXPECT_FALSE(person.SignInDialog().IsEnabled(ID_frmUserAuthentication_cmdOK));
  person.TrySignIn({kPrivileged.name, "wrong"});
  EXPECT_EQ(person.Answer(), 63360);
  person.TrySignIn({"Nobody' OR '1'='1", "x"});
  EXPECT_EQ(person.Answer(), 63360);
  person.TrySignIn(kWithoutRight);
  EXPECT_EQ(person.Answer(), 63361);
  person.SignIn(kPrivileged);
  person.End();
  for (const std::string& line : LogLines()) EXPECT_EQ(line.find(kPrivileged.password), std::string::npos);
}

TEST_F(SignIn, AnUnreadableFolderOfDatabasesKeepsTheDialogOpen) {
  const fs::path directory = kTarsus / "System" / "Directory.ini";
  const Altered missing(directory, Replaced(ReadBytes(directory), "\nParam=", "\nxParam="));
  Operator person;
  person.TrySignIn(kPrivileged);
  EXPECT_EQ(person.Answer(), 60326);
  person.SignInDialog().PressWithShift(ID_frmUserAuthentication_cmdCancel);
  person.TheProgram().WaitForEnd();
}

TEST_F(SignIn, CompactsTheHostsDatabasesAndKeepsThemReadable) {
  const auto before = Snapshot(kTarsus / "Config");
  Operator person;
  person.SignIn();
  const auto after = Snapshot(kTarsus / "Config");
  ASSERT_EQ(before.size(), after.size());
  for (std::size_t i = 0; i < after.size(); ++i) {
    EXPECT_EQ(after[i].first, before[i].first);
    EXPECT_EQ(after[i].second.substr(0, 15), "SQLite format 3");
  }
  person.End();
}

TEST_F(SignIn, EndRestartsTheHostUnlessShiftIsHeld) {
  {
    Operator person;
    person.SignIn();
    person.End(true);
    EXPECT_EQ(LogLines().back(), "[Informatin]  Finish Backup Utility");
    EXPECT_FALSE(IsRunning(L"Tarsus.exe"));
  }
  {
    Operator person;
    person.SignIn();
    person.End(false);
    EXPECT_EQ(LogLines().back(), "[Informatin]  Finish Backup Utility and Start Tarsus");
    EXPECT_TRUE(WaitUntil([] { return IsRunning(L"Tarsus.exe"); }));
  }
}

TEST_F(SignIn, CancelEndsWithoutSignIn) {
  Operator person;
  person.SignInDialog().Press(ID_frmUserAuthentication_cmdCancel);
  person.TheProgram().WaitForEnd();
  EXPECT_TRUE(LogHolds("Current Directory : " + Utf8(fs::current_path().wstring())));
  EXPECT_TRUE(LogHolds("Finish Backup Utility and Start Tarsus"));
  EXPECT_TRUE(WaitUntil([] { return IsRunning(L"Tarsus.exe"); }));
}

TEST_F(SignIn, EnterAndEscReachTheDialogsButtons) {
  Operator person;
  const Window dialog = person.SignInDialog();
  dialog.TypeIntoCombo(ID_frmUserAuthentication_cmbUserName, kPrivileged.name);
  dialog.Type(ID_frmUserAuthentication_txtPassword, kPrivileged.password);
  WaitUntil([&] { return dialog.IsEnabled(ID_frmUserAuthentication_cmdOK); });
  dialog.Key(VK_RETURN);
  person.MainMenu().Press(ID_frmMainMenu_cmdMenu0);
  const Window backup = person.TheProgram().WaitForDialog(ID_frmBackup_cmdStart);
  backup.Key(VK_ESCAPE);
  person.MainMenu();
  person.End();
}

}  // namespace
}  // namespace endtoend
