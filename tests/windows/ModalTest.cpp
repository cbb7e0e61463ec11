// The modal loop: keys, focus, the close box, nesting, and events from outside.
#include "windows/adapters/Win32.h"

#include <dbt.h>

#include <atomic>
#include <thread>

#include "WindowTest.h"
#include "windows/toolkit/Window.h"

namespace windows_tests {

class ModalTest : public WindowTest {
 protected:
  HWND Item(const forms::Control& control) { return ItemOf(form_, control); }

  SignInForm form_{toolkit_};
};

TEST_F(ModalTest, EnterAndEscPressTheRightButton) {
  Show(form_, [&] {
    EXPECT_EQ(GetParent(GetFocus()), Item(form_.cmbUserName)) << "the first field has the focus";
    Key(VK_TAB);
    EXPECT_EQ(GetFocus(), Item(form_.txtPassword));
    Key(VK_RETURN);
    EXPECT_EQ(form_.events, (Events{"OK"})) << "from a text box, the default button";
    Key(VK_ESCAPE);
    EXPECT_EQ(form_.events.back(), "Cancel");
    form_.cmdCancel.SetFocus();
    Key(VK_RETURN);
    EXPECT_EQ(form_.events.back(), "Cancel") << "on another button, that one";
    EXPECT_EQ(form_.events.size(), 3U);
    form_.cmdOK.SetFocus();
    Key(VK_SPACE);
    EXPECT_EQ(form_.events.back(), "OK");
    form_.txtPassword.SetFocus();
    form_.cmdOK.SetEnabled(false);
    Key(VK_RETURN);
    EXPECT_EQ(form_.events.size(), 4U) << "a disabled default button";
  });
}

TEST_F(ModalTest, ACautiousDialogTakesNoHastyKey) {
  form_.SetCautious();
  Show(form_, [&] {
    Key(VK_RETURN);
    Key(VK_SPACE);
    EXPECT_TRUE(form_.events.empty());
    Key(VK_ESCAPE);
    EXPECT_EQ(form_.events, (Events{"Cancel"})) << "leaving is always possible";
    Click(Item(form_.cmdOK));
    EXPECT_EQ(form_.events.back(), "OK") << "and so is the mouse";
    Sleep(forms::KeyGuard::kMoment + 100);
    Key(VK_RETURN);
    EXPECT_EQ(form_.events, (Events{"Cancel", "OK", "OK"}));
  });
}

TEST_F(ModalTest, CloseBoxPressesCancel) {
  Show(form_, [&] {
    form_.cmdCancel.SetEnabled(false);
    Post(WindowOf(form_), WM_CLOSE);
    EXPECT_TRUE(form_.events.empty()) << "while Cancel is disabled the dialog stays";
    form_.cmdCancel.SetEnabled(true);
    form_.closesOnPress = true;
    Post(WindowOf(form_), WM_CLOSE);
    EXPECT_EQ(form_.events, (Events{"Cancel"}));
    EXPECT_FALSE(form_.IsOpen());
  });
  EXPECT_FALSE(form_.IsLoaded());
}

TEST_F(ModalTest, HeldKeysAreReportedWithThePress) {
  Show(form_, [&] {
    for (const bool shift : {false, true}) {
      for (const int other : {0, VK_CONTROL, VK_MENU}) {
        shift ? Hold({VK_SHIFT, other}) : Hold({other});
        Click(Item(form_.cmdCancel));
        EXPECT_EQ(form_.keys.IsShiftAlone(), shift && other == 0) << other;
      }
    }
    EXPECT_EQ(form_.events.size(), 6U);
  });
}

TEST_F(ModalTest, HelpIsAskedForInEveryControl) {
  int asked = 0;
  toolkit_.HelpRequested = [&asked] { ++asked; };
  Show(form_, [&] {
    HWND field = GetFocus();  // inside the combo box
    for (HWND target : {field, Item(form_.txtPassword), Item(form_.cmdCancel), WindowOf(form_)}) {
      HELPINFO help = {sizeof help, HELPINFO_WINDOW, 0, target, 0, {}};
      SendMessageW(target, WM_HELP, 0, reinterpret_cast<LPARAM>(&help));
    }
  });
  EXPECT_EQ(asked, 4);
}

TEST_F(ModalTest, AClickBehindTheOneThatClosedIsLost) {
  form_.closesOnPress = true;
  Show(form_, [&] {
    PostMessageW(Item(form_.cmdOK), BM_CLICK, 0, 0);
    Click(Item(form_.cmdOK));
  });
  EXPECT_EQ(form_.events, (Events{"OK"}));
}

TEST_F(ModalTest, ASentClickEndsTheLoopToo) {
  form_.closesOnPress = true;
  form_.Load();
  HWND ok = Item(form_.cmdOK);
  std::jthread driver([ok] {
    while (IsWindowVisible(ok) == FALSE) Sleep(5);
    Sleep(50);  // until the loop waits
    SendMessageW(ok, BM_CLICK, 0, 0);
  });
  form_.ShowModal();
  EXPECT_EQ(form_.events, (Events{"OK"}));
}

TEST_F(ModalTest, LongWorkAnswersOthersAndPressesNothing) {
  Show(form_, [&] {
    HWND ok = Item(form_.cmdOK);
    std::atomic<bool> answered = false;
    std::jthread other([&] {
      SendMessageW(ok, BM_CLICK, 0, 0);
      answered = true;
    });
    PostMessageW(ok, BM_CLICK, 0, 0);
    while (!answered) loop_.ServeWithoutInput();
    EXPECT_TRUE(form_.events.empty());
    loop_.Yield();
    EXPECT_EQ(form_.events, (Events{"OK"})) << "the operator's own click has waited";
  });
}

TEST_F(ModalTest, TheDialogBelowIsBlockedUntilTheUpperOneGoes) {
  MaintenanceForm upper(toolkit_);
  form_.cmdOK.Clicked = [&](forms::ShiftState) {
    Show(upper, [&] {
      EXPECT_FALSE(IsWindowEnabled(WindowOf(form_)));
      EXPECT_EQ(GetWindow(WindowOf(upper), GW_OWNER), WindowOf(form_));
      EXPECT_EQ(GetActiveWindow(), WindowOf(upper));
    });
  };
  Show(form_, [&] {
    Click(Item(form_.cmdOK));
    EXPECT_TRUE(IsWindowEnabled(WindowOf(form_)));
    EXPECT_EQ(GetActiveWindow(), WindowOf(form_));
    form_.SetEnabled(false);
    EXPECT_FALSE(IsWindowEnabled(WindowOf(form_)));
    form_.Hide();
  });
  EXPECT_FALSE(IsWindowVisible(WindowOf(form_))) << "hidden, and kept until it is unloaded";
}

// What the shell shows is owned by it, and the operator may be in another program's window.
TEST_F(ModalTest, TheDialogInFrontIsKnownWhereverTheOperatorIs) {
  MaintenanceForm upper(toolkit_);
  HWND elsewhere = CreateWindowW(L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
  const auto frontWindow = [&] {
    SetActiveWindow(elsewhere);
    EXPECT_EQ(GetActiveWindow(), elsewhere);
    return loop_.FrontWindow();
  };
  form_.cmdOK.Clicked = [&](forms::ShiftState) { Show(upper, [&] { EXPECT_EQ(frontWindow(), WindowOf(upper)); }); };
  Show(form_, [&] {
    Click(Item(form_.cmdOK));
    EXPECT_EQ(frontWindow(), WindowOf(form_));
  });
  EXPECT_EQ(frontWindow(), nullptr);
  DestroyWindow(elsewhere);
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
  Show(form_, [&] {
    form_.cmdOK.SetFocus();
    form_.cmdOK.SetEnabled(false);
    EXPECT_EQ(GetFocus(), Item(form_.cmdCancel));
    form_.cmdCancel.SetEnabled(false);
    EXPECT_TRUE(IsWindowEnabled(GetFocus()));
    form_.cmdCancel.SetEnabled(true);
    form_.cmdOK.SetEnabled(true);
    EXPECT_EQ(GetFocus(), Item(form_.cmdOK));

    form_.cmdOK.SetEnabled(false);
    form_.txtPassword.SetFocus();
    form_.cmdOK.SetEnabled(true);
    EXPECT_EQ(GetFocus(), Item(form_.txtPassword)) << "the operator has gone elsewhere";
  });
}

TEST_F(ModalTest, VolumesThatComeAndGoAreReported) {
  form_.Load();
  const auto tell = [&](WPARAM event, DWORD type) {
    DEV_BROADCAST_HDR header = {sizeof header, type, 0};
    SendMessageW(WindowOf(form_), WM_DEVICECHANGE, event, type == 0 ? 0 : reinterpret_cast<LPARAM>(&header));
  };
  tell(DBT_DEVICEARRIVAL, DBT_DEVTYP_VOLUME);
  tell(DBT_DEVICEQUERYREMOVE, DBT_DEVTYP_VOLUME);
  tell(DBT_DEVICEARRIVAL, DBT_DEVTYP_PORT);
  tell(DBT_DEVNODES_CHANGED, 0);
  tell(DBT_DEVICEREMOVECOMPLETE, DBT_DEVTYP_VOLUME);
  EXPECT_TRUE(form_.events.empty()) << "while the system waits, no component outside can be called";
  loop_.Yield();
  EXPECT_EQ(form_.events, (Events{"device 2", "device 3"})) << "once for all";
  tell(DBT_DEVICEREMOVECOMPLETE, DBT_DEVTYP_VOLUME);
  loop_.Yield();
  EXPECT_EQ(form_.events.back(), "device 2");
  EXPECT_EQ(form_.events.size(), 3U);
}

TEST_F(ModalTest, WhileAJobRunsTheSessionGoesOn) {
  windows::Win32Shell shell(loop_);
  const auto agrees = [&] { return SendMessageW(WindowOf(form_), WM_QUERYENDSESSION, 0, 0) != FALSE; };
  const auto staysAwake = [] {
    const EXECUTION_STATE now = SetThreadExecutionState(ES_SYSTEM_REQUIRED);  // and asks for nothing lasting
    return (now & ES_CONTINUOUS) != 0 && (now & ES_SYSTEM_REQUIRED) != 0;
  };
  Show(form_, [&] {
    EXPECT_TRUE(agrees());
    {
      const auto job = shell.BeginBusy("A backup is being written.");
      EXPECT_FALSE(agrees());
      EXPECT_TRUE(staysAwake());
      shell.BeginBusy("A part of it.");
      EXPECT_FALSE(agrees());
      EXPECT_TRUE(staysAwake());
    }
    EXPECT_TRUE(agrees());
    EXPECT_FALSE(staysAwake());
  });
}

TEST_F(ModalTest, TheHourglassStaysUntilItIsTakenBack) {
  form_.Load();
  HWND window = WindowOf(form_);
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
