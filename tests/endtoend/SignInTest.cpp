// Sign-in and rights. The demonstration of ./run ends the program without the Shift key, which starts the host again.

#include "EndToEndTest.h"
#include "operator/Desktop.h"

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
  } rights[] = {{kBackupOnly, true, false}, {kRestoreOnly, false, true}, {kBoth, true, true}};
  for (const auto& right : rights) {
    SCOPED_TRACE(right.user.name);
    Operator person;
    const Window menu = person.SignIn(right.user);
    for (const auto& [button, enabled] : {std::pair(ID_frmMainMenu_cmdMenu0, right.backup),
                                          {ID_frmMainMenu_cmdMenu1, right.restore},
                                          {ID_frmMainMenu_cmdMenu2, right.backup}}) {
      EXPECT_EQ(menu.IsEnabled(button), enabled) << button;
      if (!enabled) Force(menu, button);
    }
    person.MainMenu();
    person.End();
  }
}

TEST_F(SignIn, RefusalsKeepTheDialogOpenAndCompactingKeepsTheDatabases) {
  const auto before = Snapshot(kTarsus / "Config");
  Operator person;
  EXPECT_FALSE(person.SignInDialog().IsEnabled(ID_frmUserAuthentication_cmdOK));
  person.TrySignIn({"Nobody' OR '1'='1", "x"});
  EXPECT_EQ(person.Answer(), PasswordRefused);
  person.TrySignIn({kPrivileged.name, "wrong"});
  EXPECT_EQ(person.Answer(), PasswordRefused);
  // Typed at once, without a look at the field: it takes the place of the wrong one.
  const Window dialog = person.SignInDialog();
  EXPECT_TRUE(WaitUntil([&] { return dialog.HasFocus(ID_frmUserAuthentication_txtPassword); }));
  TypeText(kPrivileged.password);
  PressKey(VK_RETURN);
  person.MainMenu();
  const auto after = Snapshot(kTarsus / "Config");
  EXPECT_EQ(before.size(), after.size());
  for (const auto& [name, bytes] : after) {
    EXPECT_TRUE(before.contains(name)) << name;
    EXPECT_TRUE(bytes.starts_with("SQLite format 3")) << name;
  }
  person.End();
  EXPECT_FALSE(IsRunning(L"Tarsus.exe")) << "with the Shift key the host stays down";
  EXPECT_EQ(LogLines().back(), "[Informatin]  Finish Backup Utility");
  for (const std::string& line : LogLines()) EXPECT_EQ(line.find(kPrivileged.password), std::string::npos);
}

}  // namespace
}  // namespace endtoend
