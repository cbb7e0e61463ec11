// The binder: the same state in form and window, whoever changes it, and every change told once.
#include "WindowTest.h"
#include "windows/toolkit/Window.h"
// After Win32.h, on which it rests.
#include <commctrl.h>

namespace windows_tests {

class BinderTest : public WindowTest {
 protected:
  static bool IsVisible(HWND window) { return (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0; }
  static bool IsChecked(HWND window) { return SendMessageW(window, BM_GETCHECK, 0, 0) == BST_CHECKED; }
  HWND Item(const forms::Control& control) { return ItemOf(form_, control); }
  std::string TextOf(const forms::Control& control) { return windows::TextOf(Item(control)); }

  SignInForm form_{toolkit_};
};

TEST_F(BinderTest, StateFromBeforeTheWindowAndStateFromAfterAreBothShown) {
  form_.lblLabel1.SetCaption("&Benützer");
  form_.cmbUserName.AddItem("Anna");
  form_.cmbUserName.SetText("Anna");
  form_.cmdOK.SetEnabled(false);
  form_.Load();
  form_.txtPassword.SetText("geheim");
  form_.cmbUserName.AddItem("Bea");
  form_.lblLabel2.SetVisible(false);
  form_.cmdCancel.SetCaption("取消");

  EXPECT_EQ(TextOf(form_.lblLabel1), "&Benützer");
  EXPECT_EQ(TextOf(form_.cmbUserName), "Anna");
  EXPECT_EQ(SendMessageW(Item(form_.cmbUserName), CB_GETCOUNT, 0, 0), 2);
  EXPECT_FALSE(IsWindowEnabled(Item(form_.cmdOK)));
  EXPECT_EQ(TextOf(form_.txtPassword), "geheim");
  EXPECT_FALSE(IsVisible(Item(form_.lblLabel2)));
  EXPECT_TRUE(IsVisible(Item(form_.lblLabel1)));
  EXPECT_EQ(TextOf(form_.cmdCancel), "取消");
  EXPECT_EQ(form_.events, (Events{"user=Anna", "password=geheim"})) << "an echo came back";

  form_.cmbUserName.ClearItems();
  form_.cmbUserName.AddItem("Rolf");
  EXPECT_EQ(SendMessageW(Item(form_.cmbUserName), CB_GETCOUNT, 0, 0), 1);
  EXPECT_EQ(TextOf(form_.cmbUserName), "Anna");

  form_.cmdCancel.SetEnabled(false);
  form_.Unload();
  EXPECT_EQ(WindowOf(form_), nullptr);
  form_.Load();
  EXPECT_FALSE(IsWindowEnabled(Item(form_.cmdCancel)));
  EXPECT_EQ(TextOf(form_.txtPassword), "geheim");
}

TEST_F(BinderTest, TypedAndPickedTextReachesTheFormOnce) {
  form_.cmbUserName.AddItem("Anna");
  form_.cmbUserName.AddItem("Bea");
  Show(form_, [&] {
    Key(VK_DOWN);
    Key(VK_DOWN);
    EXPECT_EQ(form_.events, (Events{"user=Anna", "user=Bea"}));
    Type(GetFocus(), L"\b");
    EXPECT_NE(form_.cmbUserName.Text(), "Bea");
    form_.events.clear();
    Type(Item(form_.txtPassword), L"pä");
    EXPECT_EQ(form_.events, (Events{"password=p", "password=pä"}));
    // Windows says nothing of a text that a program sets there: the next press finds it.
    SetWindowTextW(Item(form_.cmbUserName), L"Nora");
    Click(Item(form_.cmdOK));
    EXPECT_EQ(form_.cmbUserName.Text(), "Nora");
  });
}

TEST_F(BinderTest, WhatTheWindowCutsIsNotReadBack) {
  form_.Load();
  const std::string text("two\0words", 9);
  form_.txtPassword.SetText(text);
  EXPECT_EQ(TextOf(form_.txtPassword), "two");
  EXPECT_EQ(form_.txtPassword.Text(), text);
  EXPECT_EQ(form_.events.size(), 1U);
}

TEST_F(BinderTest, CheckBoxFollowsItsMemberNotTheMouse) {
  forms::Form form(toolkit_, "frmBackup", forms::kNoCaption);
  forms::CheckBox member(form, "chkLogData", forms::kNoCaption);
  int clicks = 0;
  member.SetValue(true);
  member.Clicked = [&] { ++clicks; };
  Show(form, [&] {
    HWND box = ItemOf(form, member);
    EXPECT_TRUE(IsChecked(box));
    Click(box);
    EXPECT_FALSE(member.Value());
    EXPECT_FALSE(IsChecked(box));
    member.SetValue(true);
    EXPECT_TRUE(IsChecked(box));
    EXPECT_EQ(clicks, 2);
    member.SetEnabled(false);
    Click(box);
    EXPECT_TRUE(member.Value()) << "a disabled box was ticked";
    EXPECT_TRUE(IsChecked(box));
  });
}

TEST_F(BinderTest, OptionButtonsExcludeEachOtherWithinTheirFrameOnly) {
  MaintenanceForm form(toolkit_);
  form.Option1.SetValue(true);
  form.Option3.SetValue(true);
  form.events.clear();
  Show(form, [&] {
    EXPECT_EQ(GetFocus(), ItemOf(form, form.Option1));
    form.Option4.SetFocus();
    EXPECT_EQ(GetFocus(), ItemOf(form, form.Option4));
    EXPECT_TRUE(form.events.empty()) << "the focus alone chooses nothing";
    Key(VK_SPACE);
    EXPECT_EQ(form.events, (Events{"Option3 off", "Option4 on"}));
    Click(ItemOf(form, form.Option4));
    EXPECT_EQ(form.events.size(), 2U) << "a second click on a set option is no change";
    for (const forms::OptionButton* option : {&form.Option1, &form.Option2, &form.Option3, &form.Option4})
      EXPECT_EQ(IsChecked(ItemOf(form, *option)), option->Value()) << option->Name();
    EXPECT_TRUE(form.Option1.Value());
  });
}

/// A part of the restore dialog, which takes no input while it works.
struct WorkingForm : forms::Form {
  explicit WorkingForm(forms::Toolkit& toolkit) : Form(toolkit, "frmRestore", forms::kNoCaption) {
    SetTitle("Test work");
    cmdCancel.SetEnabled(false);
  }
  forms::CheckBox chkMenuData{*this, "chkMenuData", forms::kNoCaption};
  forms::Label LblMenu{*this, "LblMenu", forms::kNoCaption};
  forms::CommandButton cmdStart{*this, "cmdStart", forms::kNoCaption};
  forms::CommandButton cmdCancel{*this, "cmdCancel", forms::kNoCaption};
  forms::ProgressBar prgJob{*this, "prgJob", forms::kNoCaption};
};

// A person must see that nothing can be pressed; what tells of the work does not turn grey.
TEST_F(BinderTest, AFormThatTakesNoInputLooksSo) {
  WorkingForm form(toolkit_);
  const auto usable = [&](const forms::Control& control) { return IsWindowEnabled(ItemOf(form, control)) != FALSE; };
  Show(form, [&] {
    form.cmdStart.SetFocus();
    form.SetEnabled(false);
    EXPECT_FALSE(usable(form.chkMenuData) || usable(form.cmdStart) || usable(form.cmdCancel));
    EXPECT_TRUE(usable(form.LblMenu) && usable(form.prgJob));
    form.chkMenuData.SetEnabled(false);
    form.chkMenuData.SetEnabled(true);
    EXPECT_FALSE(usable(form.chkMenuData)) << "the form takes no input yet";
    form.SetEnabled(true);
    EXPECT_TRUE(usable(form.chkMenuData) && usable(form.cmdStart));
    EXPECT_FALSE(usable(form.cmdCancel)) << "it was disabled before";
  });
}

TEST_F(BinderTest, AProgressBarIsARealOneWithAName) {
  WorkingForm form(toolkit_);
  form.Load();
  HWND bar = ItemOf(form, form.prgJob);
  EXPECT_FALSE(IsVisible(bar)) << "nothing is at work";
  form.prgJob.SetCaption("Restore");
  form.prgJob.SetValue(420);
  form.prgJob.SetVisible(true);
  EXPECT_TRUE(IsVisible(bar));
  EXPECT_EQ(windows::TextOf(bar), "Restore") << "what a screen reader calls it";
  EXPECT_EQ(SendMessageW(bar, PBM_GETPOS, 0, 0), 420);
  EXPECT_EQ(SendMessageW(bar, PBM_GETRANGE, FALSE, 0), forms::ProgressBar::kEnd);
  const auto colour = SendMessageW(bar, PBM_GETBARCOLOR, 0, 0);
  form.prgJob.SetFailed(true);
  EXPECT_NE(SendMessageW(bar, PBM_GETBARCOLOR, 0, 0), colour);
  EXPECT_EQ(SendMessageW(bar, PBM_GETPOS, 0, 0), 420);
}

TEST_F(BinderTest, PlaceAndSizeAreInTwips) {
  form_.Load();
  HWND window = WindowOf(form_);
  RECT place = {};
  form_.MoveTo(1501, -300);
  GetWindowRect(window, &place);
  EXPECT_EQ(place.left, 100);
  EXPECT_EQ(place.top, -20);
  EXPECT_EQ(form_.Left(), 1501) << "what the form asked for stays, though it is no whole pixel";
  EXPECT_EQ(form_.Width(), 15 * (place.right - place.left));
  EXPECT_EQ(form_.Height(), 15 * (place.bottom - place.top));
  SetWindowPos(window, nullptr, 40, 50, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  EXPECT_EQ(form_.Left(), 600);
  EXPECT_EQ(form_.Top(), 750);
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
  const auto askForColours = [&] {  // a read-only box asks as a label does
    return reinterpret_cast<HGDIOBJ>(SendMessageW(WindowOf(form), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
                                                  reinterpret_cast<LPARAM>(box)));
  };
  LOGBRUSH shown = {};
  GetObjectW(askForColours(), sizeof shown, &shown);
  EXPECT_EQ(shown.lbColor, 0x112233U);
  EXPECT_EQ(GetBkColor(context), 0x112233U);
  EXPECT_EQ(GetTextColor(context), 0x445566U);
  form.txtPatientCount.SetEnabled(false);
  askForColours();
  EXPECT_EQ(GetBkColor(context), form.Look().background) << "a field that takes no input";
  ReleaseDC(box, context);
}

}  // namespace windows_tests
