// The binder: the same state in form and window, whoever changes it, and every change told once.
#include "TestForms.h"
#include "WindowTest.h"
#include "windows/toolkit/WindowText.h"

namespace windows_tests {

using Events = std::vector<std::string>;

class BinderTest : public WindowTest {
 protected:
  static bool IsVisible(HWND window) { return (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0; }
  static bool IsChecked(HWND window) { return SendMessageW(window, BM_GETCHECK, 0, 0) == BST_CHECKED; }
};

TEST_F(BinderTest, StateFromBeforeTheWindowAndStateFromAfterAreBothShown) {
  SignInForm form(toolkit_);
  form.lblLabel1.SetCaption("&Benützer");
  form.cmbUserName.AddItem("Anna");
  form.cmbUserName.SetText("Anna");
  form.cmdOK.SetEnabled(false);
  form.Load();
  form.txtPassword.SetText("geheim");
  form.cmbUserName.AddItem("Bea");
  form.lblLabel2.SetVisible(false);
  form.cmdCancel.SetCaption("取消");

  EXPECT_EQ(windows::TextOf(ItemOf(form, form.lblLabel1)), "&Benützer");
  EXPECT_EQ(windows::TextOf(ItemOf(form, form.cmbUserName)), "Anna");
  EXPECT_EQ(SendMessageW(ItemOf(form, form.cmbUserName), CB_GETCOUNT, 0, 0), 2);
  EXPECT_FALSE(IsWindowEnabled(ItemOf(form, form.cmdOK)));
  EXPECT_EQ(windows::TextOf(ItemOf(form, form.txtPassword)), "geheim");
  EXPECT_FALSE(IsVisible(ItemOf(form, form.lblLabel2)));
  EXPECT_TRUE(IsVisible(ItemOf(form, form.lblLabel1)));
  EXPECT_EQ(windows::TextOf(ItemOf(form, form.cmdCancel)), "取消");
  EXPECT_EQ(form.events, (Events{"user=Anna", "password=geheim"})) << "an echo came back";

  form.cmbUserName.ClearItems();
  form.cmbUserName.AddItem("Rolf");
  EXPECT_EQ(SendMessageW(ItemOf(form, form.cmbUserName), CB_GETCOUNT, 0, 0), 1);
  EXPECT_EQ(windows::TextOf(ItemOf(form, form.cmbUserName)), "Anna");
}

TEST_F(BinderTest, TypedAndPickedTextReachesTheFormOnce) {
  SignInForm form(toolkit_);
  form.cmbUserName.AddItem("Anna");
  form.cmbUserName.AddItem("Bea");
  Show(form, [&] {
    HWND combo = ItemOf(form, form.cmbUserName);
    SendMessageW(combo, CB_SETCURSEL, 1, 0);
    SendMessageW(GetParent(combo), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(combo));
    EXPECT_EQ(form.events, (Events{"user=Bea"}));
    COMBOBOXINFO parts = {};
    parts.cbSize = sizeof parts;
    GetComboBoxInfo(combo, &parts);
    Type(parts.hwndItem, L"\b");
    EXPECT_NE(form.cmbUserName.Text(), "Bea");
    form.events.clear();
    Type(ItemOf(form, form.txtPassword), L"pä");
    EXPECT_EQ(form.events, (Events{"password=p", "password=pä"}));
    // Windows says nothing of a text that a program sets there: the next press finds it.
    SetWindowTextW(combo, L"Nora");
    Click(ItemOf(form, form.cmdOK));
    EXPECT_EQ(form.cmbUserName.Text(), "Nora");
  });
}

TEST_F(BinderTest, AnEventMayChangeItsOwnControl) {
  SignInForm form(toolkit_);
  form.txtPassword.Edited = [&form] { form.txtPassword.SetText(form.txtPassword.Text().substr(0, 2)); };
  Show(form, [&] {
    Type(ItemOf(form, form.txtPassword), L"abcd");
    EXPECT_EQ(windows::TextOf(ItemOf(form, form.txtPassword)), form.txtPassword.Text());
    EXPECT_EQ(form.txtPassword.Text().size(), 2U);
  });
}

TEST_F(BinderTest, WhatTheWindowCutsIsNotReadBack) {
  SignInForm form(toolkit_);
  form.Load();
  const std::string text("two\0words", 9);
  form.txtPassword.SetText(text);
  EXPECT_EQ(windows::TextOf(ItemOf(form, form.txtPassword)), "two");
  EXPECT_EQ(form.txtPassword.Text(), text);
  EXPECT_EQ(form.events.size(), 1U);
}

TEST_F(BinderTest, CheckBoxFollowsItsMemberNotTheMouse) {
  BackupForm form(toolkit_);
  form.chkLogData.SetValue(true);
  form.clicks = 0;
  Show(form, [&] {
    HWND box = ItemOf(form, form.chkLogData);
    EXPECT_TRUE(IsChecked(box));
    Click(box);
    EXPECT_FALSE(form.chkLogData.Value());
    EXPECT_FALSE(IsChecked(box));
    form.chkLogData.SetValue(true);
    EXPECT_TRUE(IsChecked(box));
    EXPECT_EQ(form.clicks, 2);
    form.chkLogData.SetEnabled(false);
    Click(box);
    EXPECT_TRUE(form.chkLogData.Value()) << "a disabled box was ticked";
    EXPECT_TRUE(IsChecked(box));
  });
}

TEST_F(BinderTest, OptionButtonsExcludeEachOtherWithinTheirFrameOnly) {
  MaintenanceForm form(toolkit_);
  form.Option1.SetValue(true);
  form.Option3.SetValue(true);
  form.events.clear();
  Show(form, [&] {
    Click(ItemOf(form, form.Option4));
    EXPECT_EQ(form.events, (Events{"Option3 off", "Option4 on"}));
    Click(ItemOf(form, form.Option4));
    EXPECT_EQ(form.events.size(), 2U) << "a second click on a set option is no change";
    for (const forms::OptionButton* option : {&form.Option1, &form.Option2, &form.Option3, &form.Option4}) {
      EXPECT_EQ(IsChecked(ItemOf(form, *option)), option->Value()) << option->Name();
    }
    EXPECT_TRUE(form.Option1.Value());
  });
}

TEST_F(BinderTest, TheFocusAloneChoosesNoOption) {
  MaintenanceForm form(toolkit_);
  Show(form, [&] {
    EXPECT_EQ(GetFocus(), ItemOf(form, form.Option1));
    form.Option4.SetFocus();
    EXPECT_EQ(GetFocus(), ItemOf(form, form.Option4));
    EXPECT_TRUE(form.events.empty());
    Key(VK_SPACE);
    EXPECT_EQ(form.events, (Events{"Option4 on"}));
  });
}

TEST_F(BinderTest, PlaceAndSizeAreInTwips) {
  SignInForm form(toolkit_);
  form.Load();
  HWND window = WindowOf(form);
  RECT place = {};
  form.MoveTo(1501, -300);
  GetWindowRect(window, &place);
  EXPECT_EQ(place.left, 100);
  EXPECT_EQ(place.top, -20);
  EXPECT_EQ(form.Left(), 1501) << "what the form asked for stays, though it is no whole pixel";
  EXPECT_EQ(form.Width(), 15 * (place.right - place.left));
  EXPECT_EQ(form.Height(), 15 * (place.bottom - place.top));
  SetWindowPos(window, nullptr, 40, 50, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  EXPECT_EQ(form.Left(), 600);
  EXPECT_EQ(form.Top(), 750);
  EXPECT_EQ(toolkit_.ScreenWidth(), 15 * GetSystemMetrics(SM_CXSCREEN));
}

TEST_F(BinderTest, FontAndColoursReachTheWindow) {
  MaintenanceForm form(toolkit_);
  form.Load();
  const forms::Colour designed = form.lblError1.Look().foreground;
  EXPECT_NE(designed, form.lblLabel7.Look().foreground) << "an error label stands out by its template";
  form.txtPatientCount.SetLook({"Tahoma", 12, 0x112233, 0x445566});

  HWND box = ItemOf(form, form.txtPatientCount);
  LOGFONTW font = {};
  GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(box, WM_GETFONT, 0, 0)), sizeof font, &font);
  EXPECT_STREQ(font.lfFaceName, L"Tahoma");
  EXPECT_EQ(font.lfHeight, -16);

  HDC context = GetDC(box);
  // A read-only box asks as a label does.
  const auto brush =
      SendMessageW(WindowOf(form), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context), reinterpret_cast<LPARAM>(box));
  LOGBRUSH shown = {};
  GetObjectW(reinterpret_cast<HGDIOBJ>(brush), sizeof shown, &shown);
  EXPECT_EQ(shown.lbColor, 0x112233U);
  EXPECT_EQ(GetBkColor(context), 0x112233U);
  EXPECT_EQ(GetTextColor(context), 0x445566U);
  form.txtPatientCount.SetEnabled(false);
  SendMessageW(WindowOf(form), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context), reinterpret_cast<LPARAM>(box));
  EXPECT_EQ(GetBkColor(context), form.Look().background) << "a field that takes no input";
  ReleaseDC(box, context);
}

TEST_F(BinderTest, LoadingAgainStartsFromTheFormsState) {
  SignInForm form(toolkit_);
  form.Load();
  form.cmdOK.SetEnabled(false);
  form.Unload();
  EXPECT_EQ(WindowOf(form), nullptr);
  form.Load();
  EXPECT_FALSE(IsWindowEnabled(ItemOf(form, form.cmdOK)));
}

}  // namespace windows_tests
