// The modal loop: keys, focus, the close box, nesting, and events from outside.
#include "windows/adapters/Win32.h"

#include <dbt.h>

#include <thread>

#include "TestForms.h"
#include "WindowTest.h"
#include "windows/toolkit/WindowText.h"

namespace windows_tests {

using Events = std::vector<std::string>;

using ModalTest = WindowTest;

TEST_F(ModalTest, EnterAndEscPressTheRightButton) {
  SignInForm form(toolkit_);
  Show(form, [&] {
    EXPECT_EQ(GetParent(GetFocus()), ItemOf(form, form.cmbUserName)) << "the first field has the focus";
    Key(VK_TAB);
    EXPECT_EQ(GetFocus(), ItemOf(form, form.txtPassword));
    Key(VK_RETURN);
    EXPECT_EQ(form.events, (Events{"OK"})) << "from a text box, the default button";
    Key(VK_ESCAPE);
    EXPECT_EQ(form.events.back(), "Cancel");
    form.cmdCancel.SetFocus();
    Key(VK_RETURN);
    EXPECT_EQ(form.events.back(), "Cancel") << "on another button, that one";
    EXPECT_EQ(form.events.size(), 3U);
    form.cmdOK.SetFocus();
    Key(VK_SPACE);
    EXPECT_EQ(form.events.back(), "OK");
    form.txtPassword.SetFocus();
    form.cmdOK.SetEnabled(false);
    Key(VK_RETURN);
    EXPECT_EQ(form.events.size(), 4U) << "a disabled default button";
  });
}

TEST_F(ModalTest, CloseBoxPressesCancel) {
  SignInForm form(toolkit_);
  Show(form, [&] {
    form.cmdCancel.SetEnabled(false);
    PostMessageW(WindowOf(form), WM_CLOSE, 0, 0);
    loop_.Yield();
    EXPECT_TRUE(form.events.empty()) << "while Cancel is disabled the dialog stays";
    form.cmdCancel.SetEnabled(true);
    form.closesOnPress = true;
    PostMessageW(WindowOf(form), WM_CLOSE, 0, 0);
    loop_.Yield();
    EXPECT_EQ(form.events, (Events{"Cancel"}));
    EXPECT_FALSE(form.IsOpen());
  });
  EXPECT_FALSE(form.IsLoaded());
}

TEST_F(ModalTest, HeldKeysAreReportedWithThePress) {
  struct Case {
    std::initializer_list<int> held;
    bool alone;
  };
  SignInForm form(toolkit_);
  Show(form, [&] {
    for (const Case& c : {Case{{}, false}, Case{{VK_SHIFT}, true}, Case{{VK_SHIFT, VK_CONTROL}, false},
                          Case{{VK_SHIFT, VK_MENU}, false}, Case{{VK_CONTROL}, false}}) {
      Hold(c.held);
      SendMessageW(ItemOf(form, form.cmdCancel), BM_CLICK, 0, 0);
      EXPECT_EQ(form.keys.IsShiftAlone(), c.alone) << c.held.size();
    }
    EXPECT_EQ(form.events.size(), 5U);
  });
}

TEST_F(ModalTest, AccessKeysWork) {
  SignInForm form(toolkit_);
  form.lblLabel2.SetCaption("&Password");
  form.cmdCancel.SetCaption("Ca&ncel");
  Show(form, [&] {
    PostMessageW(GetFocus(), WM_SYSCHAR, L'p', 1 << 29);
    loop_.Yield();
    EXPECT_EQ(GetFocus(), ItemOf(form, form.txtPassword));
    PostMessageW(GetFocus(), WM_SYSCHAR, L'n', 1 << 29);
    loop_.Yield();
    EXPECT_EQ(form.events, (Events{"Cancel"}));
  });
}

TEST_F(ModalTest, HelpIsAskedForInEveryControl) {
  SignInForm form(toolkit_);
  int asked = 0;
  toolkit_.HelpRequested = [&asked] { ++asked; };
  Show(form, [&] {
    HWND field = GetFocus();  // inside the combo box
    for (HWND target : {field, ItemOf(form, form.txtPassword), ItemOf(form, form.cmdCancel), WindowOf(form)}) {
      HELPINFO help = {};
      help.cbSize = sizeof help;
      help.hItemHandle = target;
      SendMessageW(target, WM_HELP, 0, reinterpret_cast<LPARAM>(&help));
    }
  });
  EXPECT_EQ(asked, 4);
}

TEST_F(ModalTest, AClickBehindTheOneThatClosedIsLost) {
  SignInForm form(toolkit_);
  form.closesOnPress = true;
  Show(form, [&] {
    PostMessageW(ItemOf(form, form.cmdOK), BM_CLICK, 0, 0);
    PostMessageW(ItemOf(form, form.cmdOK), BM_CLICK, 0, 0);
    loop_.Yield();
  });
  EXPECT_EQ(form.events, (Events{"OK"}));
}

TEST_F(ModalTest, ASentClickEndsTheLoopToo) {
  SignInForm form(toolkit_);
  form.closesOnPress = true;
  form.Load();
  HWND ok = ItemOf(form, form.cmdOK);
  std::jthread driver([ok] {
    while (IsWindowVisible(ok) == FALSE) Sleep(5);
    Sleep(50);  // until the loop waits
    SendMessageW(ok, BM_CLICK, 0, 0);
  });
  form.ShowModal();
  EXPECT_EQ(form.events, (Events{"OK"}));
}

TEST_F(ModalTest, TheDialogBelowIsBlockedUntilTheUpperOneGoes) {
  SignInForm lower(toolkit_);
  BackupForm upper(toolkit_);
  lower.cmdOK.Clicked = [&](forms::ShiftState) {
    Show(upper, [&] {
      EXPECT_FALSE(IsWindowEnabled(WindowOf(lower)));
      EXPECT_EQ(GetWindow(WindowOf(upper), GW_OWNER), WindowOf(lower));
      EXPECT_EQ(GetActiveWindow(), WindowOf(upper));
    });
  };
  Show(lower, [&] {
    Click(ItemOf(lower, lower.cmdOK));
    EXPECT_TRUE(IsWindowEnabled(WindowOf(lower)));
    EXPECT_EQ(GetActiveWindow(), WindowOf(lower));
    lower.SetEnabled(false);
    EXPECT_FALSE(IsWindowEnabled(WindowOf(lower)));
  });
}

TEST_F(ModalTest, AHiddenFormKeepsItsWindowUntilItIsUnloaded) {
  SignInForm form(toolkit_);
  Show(form, [&] { form.Hide(); });
  ASSERT_TRUE(form.IsLoaded());
  EXPECT_FALSE(IsWindowVisible(WindowOf(form)));
  form.Unload();
  EXPECT_EQ(WindowOf(form), nullptr);
}

TEST_F(ModalTest, TypedCharactersAreFilteredPastedOnesAreNot) {
  MaintenanceForm form(toolkit_);
  Show(form, [&] {
    HWND box = ItemOf(form, form.txtCollectRange);
    Type(box, L"1a2-3\b");
    EXPECT_EQ(form.txtCollectRange.Text(), "12");
    SendMessageW(box, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"x"));
    EXPECT_EQ(form.txtCollectRange.Text(), "12x");
    form.txtCollectRange.AcceptsKey = [](char32_t key) {
      ADD_FAILURE() << "Ctrl+V is no text, but was asked for as " << static_cast<unsigned>(key);
      return false;
    };
    Type(box, L"\x16");
  });
}

TEST_F(ModalTest, FocusLeavesADisabledControlAndReturns) {
  SignInForm form(toolkit_);
  Show(form, [&] {
    form.cmdOK.SetFocus();
    form.cmdOK.SetEnabled(false);
    EXPECT_EQ(GetFocus(), ItemOf(form, form.cmdCancel));
    form.cmdCancel.SetEnabled(false);
    EXPECT_TRUE(IsWindowEnabled(GetFocus()));
    form.cmdCancel.SetEnabled(true);
    form.cmdOK.SetEnabled(true);
    EXPECT_EQ(GetFocus(), ItemOf(form, form.cmdOK));

    form.cmdOK.SetEnabled(false);
    form.txtPassword.SetFocus();
    form.cmdOK.SetEnabled(true);
    EXPECT_EQ(GetFocus(), ItemOf(form, form.txtPassword)) << "the operator has gone elsewhere";
  });
}

TEST_F(ModalTest, VolumesThatComeAndGoAreReported) {
  struct Case {
    WPARAM event;
    DWORD type;
    Events expected;
  };
  SignInForm form(toolkit_);
  form.Load();
  for (const Case& c : {Case{DBT_DEVICEARRIVAL, DBT_DEVTYP_VOLUME, {"device 2"}},
                        Case{DBT_DEVICEREMOVECOMPLETE, DBT_DEVTYP_VOLUME, {"device 2"}},
                        Case{DBT_DEVICEARRIVAL, DBT_DEVTYP_PORT, {"device 3"}},
                        Case{DBT_DEVICEQUERYREMOVE, DBT_DEVTYP_VOLUME, {}}, Case{DBT_DEVNODES_CHANGED, 0, {}}}) {
    form.events.clear();
    DEV_BROADCAST_HDR header = {sizeof header, c.type, 0};
    SendMessageW(WindowOf(form), WM_DEVICECHANGE, c.event, c.type == 0 ? 0 : reinterpret_cast<LPARAM>(&header));
    EXPECT_EQ(form.events, c.expected) << c.event << " " << c.type;
  }
}

TEST_F(ModalTest, TheHourglassStaysUntilItIsTakenBack) {
  SignInForm form(toolkit_);
  form.Load();
  HWND window = WindowOf(form);
  const auto mouseMoves = [window] {
    return SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
  };
  toolkit_.SetPointer(forms::Pointer::Hourglass);
  SetCursor(LoadCursorW(nullptr, IDC_ARROW));
  mouseMoves();
  EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
  toolkit_.SetPointer(forms::Pointer::Default);
  mouseMoves();
  EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
}

}  // namespace windows_tests
