// Forms on the program's templates without the program's rules: they record what happens to them.
#pragma once

#include <string>
#include <vector>

#include "forms/Form.h"

namespace windows_tests {

using Events = std::vector<std::string>;

class SignInForm : public forms::Form {
 public:
  explicit SignInForm(forms::Toolkit& toolkit) : Form(toolkit, "frmUserAuthentication", forms::kNoCaption) {
    SetTitle("Test sign-in");
    SetDefaultButton(cmdOK);
    SetCancelButton(cmdCancel);
    cmdOK.Clicked = [this](forms::ShiftState held) { Record("OK", held); };
    cmdCancel.Clicked = [this](forms::ShiftState held) { Record("Cancel", held); };
    cmbUserName.Edited = [this] { events.push_back("user=" + cmbUserName.Text()); };
    txtPassword.Edited = [this] { events.push_back("password=" + txtPassword.Text()); };
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

  void OnDeviceChanged(int deviceType) override { events.push_back("device " + std::to_string(deviceType)); }

 private:
  void Record(const std::string& button, forms::ShiftState held) {
    events.push_back(button);
    keys = held;
    if (closesOnPress) Close();
  }
};

class MaintenanceForm : public forms::Form {
 public:
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
