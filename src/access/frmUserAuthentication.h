// The sign-in dialog.
#pragma once

#include <cstdint>
#include <string>

#include "app/Application.h"
#include "forms/Form.h"

// The room's own name, `access`, is a function of the C library.
namespace operator_access {

/// Lists the host's users, verifies the password and works out the operator's right. Leaves
/// `SignedIn`, `UserId` and `UserRight` in the state, and `ExitMode` where it was cancelled.
class frmUserAuthentication : public forms::Form {
 public:
  explicit frmUserAuthentication(app::Application& application);

  forms::Label lblLabel1{*this, "lblLabel1"};
  forms::ComboBox cmbUserName{*this, "cmbUserName"};
  forms::Label lblLabel2{*this, "lblLabel2"};
  forms::TextBox txtPassword{*this, "txtPassword"};
  forms::CommandButton cmdOK{*this, "cmdOK"};
  forms::CommandButton cmdCancel{*this, "cmdCancel"};

 protected:
  void OnLoad() override;
  void OnUnload() override;

 private:
  void FillUserNames();
  void Accept();
  void Cancel(forms::ShiftState shift);
  void ForgetPassword();

  // The steps of a sign-in return 0 or the ID of the message that says why there is none.
  std::int32_t SignIn();
  std::int32_t Authenticate(std::string& userId);
  std::int32_t CompactHostDatabases();

  app::Application& application_;
};

}  // namespace operator_access
