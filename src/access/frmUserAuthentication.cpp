// The sign-in dialog.
#include "access/frmUserAuthentication.h"

#include "access/CompactDatabases.h"

namespace qx::access {
namespace {

// What the user database answers to a password; anything else is a fault.
constexpr std::int32_t kVerified = 0;
constexpr std::int32_t kFirstRefusal = 1;
constexpr std::int32_t kLastRefusal = 3;
constexpr std::int32_t kPrivilegedUser = 6;
constexpr std::int32_t kBackupFunction = 2601;
constexpr std::int32_t kRestoreFunction = 2801;

/// Empty when the view has no such name, or cannot be asked. The name goes into the statement as it was typed, by
/// somebody who has not signed in yet: one with a quote would end the literal and is not asked for, but tried as the ID
/// itself.
std::string FindUserId(host::UserQuery& query, const std::string& displayName, app::Failures& failures) {
  if (displayName.find('\'') != std::string::npos) return {};
  const base::Outcome asked = query.Execute("SELECT USER_ID FROM V_MUSER WHERE DISP_NAME = N'" + displayName + "'");
  if (!asked.IsDone()) failures.Note("User ID not read", asked);
  if (!asked.IsDone() || query.RowCount() < 1) return {};
  return query.Value(0, 0).value_or(std::string());
}

/// What the host grants one user.
class Grants {
 public:
  Grants(host::UserAuthenticator& authenticator, const std::string& userId)
      : authenticator_(authenticator), userId_(userId) {}

  app::Right Right() {
    const bool backup = Has(kBackupFunction);
    const bool restore = Has(kRestoreFunction);
    if (backup && restore) return app::Right::BackupAndRestore;
    if (backup) return app::Right::Backup;
    return restore ? app::Right::Restore : app::Right::None;
  }

  /// Of each function that was asked for and is not granted: its number, and the component's failure, if any.
  const std::string& Missing() const { return missing_; }

 private:
  bool Has(std::int32_t functionCode) {
    bool granted = false;
    const base::Outcome checked = authenticator_.CheckFunction(userId_, functionCode, granted);
    if (checked.IsDone() && granted) return true;
    missing_ += " " + std::to_string(functionCode) + (checked.IsDone() ? "" : " (" + checked.cause + ")");
    return false;
  }

  host::UserAuthenticator& authenticator_;
  const std::string& userId_;
  std::string missing_;
};

/// The right in words, for the log.
const char* WordsOf(app::Right right) {
  switch (right) {
    case app::Right::Backup:
      return "backup";
    case app::Right::Restore:
      return "restore";
    case app::Right::BackupAndRestore:
      return "backup and restore";
    case app::Right::Privileged:
      return "every right";
    case app::Right::None:
      break;
  }
  return "no right";
}

/// A refused sign-in. The cause names the user; a password must never stand in the log.
base::Outcome Refuse(app::MessageId message, const std::string& displayName, const std::string& userId,
                     const std::string& why) {
  const std::string user = userId == displayName ? userId : displayName + " (" + userId + ")";
  return {base::Result::Failed, message, "user " + user + ": " + why};
}

}  // namespace

frmUserAuthentication::frmUserAuthentication(app::Application& application)
    : Form(application.toolkit, "frmUserAuthentication", app::MessageId::SignInTitle), application_(application) {
  SetDefaultButton(cmdOK);
  SetCancelButton(cmdCancel);
  cmbUserName.Edited = [this] { cmdOK.SetEnabled(!cmbUserName.Text().empty()); };
  cmdOK.Clicked = [this](forms::ShiftState) { Accept(); };
  cmdCancel.Clicked = [this](forms::ShiftState shift) { Cancel(shift); };
}

void frmUserAuthentication::OnLoad() {
  application_.log.WriteLog(app::LogLevel::Information, "Start User Authentication");
  app::PrepareDialog(application_, *this);
  FillUserNames();
  cmbUserName.SetText({});
  txtPassword.SetText({});
  cmdOK.SetEnabled(false);
}

void frmUserAuthentication::OnUnload() {
  ForgetPassword();
  app::SaveDialogPosition(application_.host.qx32, *this);
}

void frmUserAuthentication::FillUserNames() {
  const auto query = application_.host.components.CreateUserQuery();
  base::Outcome asked = base::Failure("the user query component cannot be created");
  if (query) asked = query->Execute("SELECT DISP_NAME FROM V_MUSER ORDER BY USER_ORDER_NO");
  const std::int32_t rows = asked.IsDone() ? query->RowCount() : 0;
  for (std::int32_t row = 0; row < rows; ++row) {
    if (const auto name = query->Value(row, 0)) cmbUserName.AddItem(*name);
    application_.host.messageLoop.Yield();
  }
  const auto listed = static_cast<std::int32_t>(cmbUserName.Items().size());
  // A user can type a name that is not offered; nobody else would know why it is not.
  if (!asked.IsDone()) return application_.failures.Note("User list not read", asked);
  if (listed == 0 || listed < rows) {
    application_.failures.Note("User list not whole",
                               base::Failure(std::to_string(listed) + " of " + std::to_string(rows) + " users"));
  }
}

// Events are served while the databases are compacted, and a second OK or a Cancel in the
// middle of a sign-in must not come through.
void frmUserAuthentication::Accept() {
  SetEnabled(false);
  const base::Outcome signedIn = SignIn();
  GetToolkit().SetPointer(forms::Pointer::Default);
  SetEnabled(true);
  if (signedIn.IsDone()) {
    const app::State& state = application_.state;
    application_.log.WriteLog(app::LogLevel::Information,
                              "Signed in : " + state.UserId + ", " + WordsOf(state.UserRight));
    Close();
  } else {
    application_.failures.Show(signedIn);
    txtPassword.SetFocus();  // the next one typed takes this one's place
  }
}

void frmUserAuthentication::Cancel(forms::ShiftState shift) {
  application_.state.ExitMode = shift.IsShiftAlone() ? app::ExitMode::EndQuietly : app::ExitMode::EndAndRestartHost;
  application_.state.SignedIn = false;
  application_.log.WriteLog(app::LogLevel::Information, "Cancel User Authentication");
  Close();
}

/// The blanks overwrite the text in its own memory before it is let go.
void frmUserAuthentication::ForgetPassword() {
  txtPassword.SetText(std::string(txtPassword.Text().size(), ' '));
  txtPassword.SetText({});
}

base::Outcome frmUserAuthentication::SignIn() {
  app::State& state = application_.state;
  state.UserRight = app::Right::None;
  std::string userId;
  if (base::Outcome authenticated = Authenticate(userId); !authenticated.IsDone()) return authenticated;
  state.UserId = userId;
  state.SignedIn = true;
  GetToolkit().SetPointer(forms::Pointer::Hourglass);
  application_.records.RecordOperation("UserAuthentication", "OK");
  if (base::Outcome compacted = CompactHostDatabases(); !compacted.IsDone()) return compacted;
  return application_.records.RecordSignInOut(app::SignInOut::SignIn).OrSay(app::MessageId::SignInNotRecorded);
}

base::Outcome frmUserAuthentication::Authenticate(std::string& userId) {
  const auto query = application_.host.components.CreateUserQuery();
  const auto authenticator = application_.host.components.CreateUserAuthenticator();
  if (!query || !authenticator) {
    return {base::Result::Failed, app::MessageId::AuthenticationFailed, "a user component cannot be created"};
  }
  const std::string displayName = cmbUserName.Text();
  userId = FindUserId(*query, displayName, application_.failures);
  if (userId.empty()) userId = displayName;
  std::int32_t userKind = 0;
  const std::int32_t verified = authenticator->Verify(userId, txtPassword.Text(), userKind);
  if (verified != kVerified) {
    const bool refused = verified >= kFirstRefusal && verified <= kLastRefusal;
    return Refuse(refused ? app::MessageId::PasswordRefused : app::MessageId::AuthenticationFailed, displayName, userId,
                  "the authentication answers " + std::to_string(verified));
  }
  Grants grants(*authenticator, userId);
  application_.state.UserRight = userKind == kPrivilegedUser ? app::Right::Privileged : grants.Right();
  if (application_.state.UserRight != app::Right::None) return base::Result::Done;
  return Refuse(app::MessageId::NoRight, displayName, userId, "not granted:" + grants.Missing());
}

base::Outcome frmUserAuthentication::CompactHostDatabases() {
  const work::Tools tools = work::ToolsOf(application_);
  for (const char* name : {"Config", "Param"}) {
    std::string folder;
    base::Outcome read = application_.paths.GetPathEntry(name, folder);
    if (!read.IsDone()) return std::move(read).OrSay(app::MessageId::PathEntryUnreadable);
    CompactDatabases(tools, application_.host.compactor, application_.host.clock, folder,
                     application_.state.StartupDirectory);
  }
  return base::Result::Done;
}

}  // namespace qx::access
