// The base of the tests that show forms as real windows, and two forms on the program's templates without the program's
// rules: they record what happens to them.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "forms/Form.h"
#include "windows/adapters/Win32Desktop.h"
#include "windows/toolkit/Win32Toolkit.h"

namespace windows_tests {

class WindowTest : public testing::Test {
 protected:
  ~WindowTest() override { Hold(); }

  /// Shows the form modally and runs `script` in its modal loop, once; then closes the form
  /// if the script has not.
  void Show(forms::Form& form, std::function<void()> script);

  /// The window of a loaded form; the title tells forms apart.
  static HWND WindowOf(const forms::Form& form);
  static HWND ItemOf(const forms::Form& form, const forms::Control& control);

  // The operator. Each returns when the program has dealt with the input.
  void Post(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
  void Key(WPARAM key);
  void Type(HWND window, const std::wstring& text);
  void Click(HWND window) { Post(window, BM_CLICK); }
  /// As if the keys were held down; none by default.
  static void Hold(std::initializer_list<int> keys = {});

  windows::Win32MessageLoop loop_;
  windows::Win32Toolkit toolkit_{loop_};
};

using Events = std::vector<std::string>;

struct SignInForm : forms::Form {
  explicit SignInForm(forms::Toolkit& toolkit) : Form(toolkit, "frmUserAuthentication", forms::kNoCaption) {
    SetTitle("Test sign-in");
    SetDefaultButton(cmdOK);
    SetCancelButton(cmdCancel);
    cmdOK.Clicked = [this](forms::ShiftState held) { Record("OK", held); };
    cmdCancel.Clicked = [this](forms::ShiftState held) { Record("Cancel", held); };
    cmbUserName.Edited = [this] { events.push_back("user=" + cmbUserName.Text()); };
    txtPassword.Edited = [this] { events.push_back("password=" + txtPassword.Text()); };
  }
  using Form::SetCautious;
  void OnDeviceChanged(int deviceType) override { events.push_back("device " + std::to_string(deviceType)); }
  void Record(const std::string& button, forms::ShiftState held) {
    events.push_back(button);
    keys = held;
    if (closesOnPress) Close();
  }

  forms::Label lblLabel1{*this, "lblLabel1", forms::kNoCaption};
  forms::ComboBox cmbUserName{*this, "cmbUserName"};
  forms::Label lblLabel2{*this, "lblLabel2", forms::kNoCaption};
  forms::TextBox txtPassword{*this, "txtPassword"};
  forms::CommandButton cmdOK{*this, "cmdOK", forms::kNoCaption};
  forms::CommandButton cmdCancel{*this, "cmdCancel", forms::kNoCaption};

  Events events;
  forms::ShiftState keys;  ///< of the last press
  bool closesOnPress = false;
};

struct MaintenanceForm : forms::Form {
  explicit MaintenanceForm(forms::Toolkit& toolkit) : Form(toolkit, "frmMaintenance", forms::kNoCaption) {
    SetTitle("Test maintenance");
    for (forms::OptionButton* option : {&Option1, &Option2, &Option3, &Option4}) {
      option->Clicked = [this, option] { events.push_back(option->Name() + (option->Value() ? " on" : " off")); };
    }
    txtCollectRange.AcceptsKey = [](char32_t key) { return key == U'\b' || (key >= U'0' && key <= U'9'); };
  }

  forms::Frame Frame1{*this, "Frame1", forms::kNoCaption};
  forms::OptionButton Option1{*this, "Option1", forms::kNoCaption, &Frame1};
  forms::OptionButton Option2{*this, "Option2", forms::kNoCaption, &Frame1};
  forms::Frame Frame2{*this, "Frame2", forms::kNoCaption};
  forms::OptionButton Option3{*this, "Option3", forms::kNoCaption, &Frame2};
  forms::OptionButton Option4{*this, "Option4", forms::kNoCaption, &Frame2};
  forms::TextBox txtCollectRange{*this, "txtCollectRange"};
  forms::TextBox txtPatientCount{*this, "txtPatientCount"};
  forms::Label lblLabel7{*this, "lblLabel7", forms::kNoCaption};
  forms::Label lblError1{*this, "lblError1", forms::kNoCaption};

  Events events;
};

}  // namespace windows_tests
