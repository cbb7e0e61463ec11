// The sign-in dialog.
#pragma once

#include <string>

#include "app/Application.h"
#include "forms/Form.h"

// Within qx, because `access` alone is a function of the C library.
namespace qx::access {

/// Lists the host's users, verifies the password and works out the operator's right. Leaves
/// `SignedIn`, `UserId` and `UserRight` in the state, and `ExitMode` where it was cancelled.
class frmUserAuthentication : public forms::Form {
 public:
  explicit frmUserAuthentication(app::Application& application);

  forms::Label lblLabel1{*this, "lblLabel1", app::MessageId::UserCaption};
  forms::ComboBox cmbUserName{*this, "cmbUserName"};
  forms::Label lblLabel2{*this, "lblLabel2", app::MessageId::PasswordCaption};
  forms::TextBox txtPassword{*this, "txtPassword"};
  forms::CommandButton cmdOK{*this, "cmdOK", app::MessageId::OkCaption};
  forms::CommandButton cmdCancel{*this, "cmdCancel", app::MessageId::CancelCaption};

 protected:
  void OnLoad() override;
  void OnUnload() override;

 private:
  void FillUserNames();
  void Accept();
  void Cancel(forms::ShiftState shift);
  void ForgetPassword();

  // A step of the sign-in that fails carries the message that says why there is none.
  base::Outcome SignIn();
  base::Outcome Authenticate(std::string& userId);
  base::Outcome CompactHostDatabases();

  app::Application& application_;
};

}  // namespace qx::access
