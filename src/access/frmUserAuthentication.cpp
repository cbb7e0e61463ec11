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

/// Empty when the view has no such name. The name goes into the statement as it was typed, by somebody who has not
/// signed in yet: one with a quote would end the literal and is not asked for, but tried as the ID itself.
std::string FindUserId(host::UserQuery& query, const std::string& displayName) {
  if (displayName.find('\'') != std::string::npos) return {};
  const base::Outcome asked = query.Execute("SELECT USER_ID FROM V_MUSER WHERE DISP_NAME = N'" + displayName + "'");
  if (!asked.IsDone() || query.RowCount() < 1) return {};
  return query.Value(0, 0).value_or(std::string());
}

bool IsGranted(host::UserAuthenticator& authenticator, const std::string& userId, std::int32_t functionCode) {
  bool granted = false;
  return authenticator.CheckFunction(userId, functionCode, granted).IsDone() && granted;
}

app::Right RightOf(host::UserAuthenticator& authenticator, const std::string& userId, std::int32_t userKind) {
  if (userKind == kPrivilegedUser) return app::Right::Privileged;
  const bool backup = IsGranted(authenticator, userId, kBackupFunction);
  const bool restore = IsGranted(authenticator, userId, kRestoreFunction);
  if (backup && restore) return app::Right::BackupAndRestore;
  if (backup) return app::Right::Backup;
  return restore ? app::Right::Restore : app::Right::None;
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
  if (!query) return;
  if (!query->Execute("SELECT DISP_NAME FROM V_MUSER ORDER BY USER_ORDER_NO").IsDone()) return;
  const std::int32_t rows = query->RowCount();
  for (std::int32_t row = 0; row < rows; ++row) {
    if (const auto name = query->Value(row, 0)) cmbUserName.AddItem(*name);
    application_.host.messageLoop.Yield();
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
    Close();
  } else {
    application_.failures.Show(signedIn);
  }
}

void frmUserAuthentication::Cancel(forms::ShiftState shift) {
  application_.state.ExitMode = shift.IsShiftAlone() ? app::ExitMode::EndQuietly : app::ExitMode::EndAndRestartHost;
  application_.state.SignedIn = false;
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
  if (!query || !authenticator) return {base::Result::Failed, app::MessageId::AuthenticationFailed};
  const std::string displayName = cmbUserName.Text();
  userId = FindUserId(*query, displayName);
  if (userId.empty()) userId = displayName;
  std::int32_t userKind = 0;
  const std::int32_t verified = authenticator->Verify(userId, txtPassword.Text(), userKind);
  if (verified >= kFirstRefusal && verified <= kLastRefusal)
    return {base::Result::Failed, app::MessageId::PasswordRefused};
  if (verified != kVerified) return {base::Result::Failed, app::MessageId::AuthenticationFailed};
  application_.state.UserRight = RightOf(*authenticator, userId, userKind);
  if (application_.state.UserRight == app::Right::None) return {base::Result::Failed, app::MessageId::NoRight};
  return base::Result::Done;
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
