// The sign-in dialog.
#include "access/frmUserAuthentication.h"

#include <memory>

#include "access/CompactDatabases.h"
#include "app/Appearance.h"
#include "app/Captions.h"
#include "app/External.h"
#include "app/Messages.h"
#include "app/Records.h"

namespace operator_access {
namespace {

constexpr std::int32_t kPasswordRefused = 63360;
constexpr std::int32_t kAuthenticationFailed = 60308;
constexpr std::int32_t kNoRight = 63361;
constexpr std::int32_t kSignInNotRecorded = 60500;

constexpr std::int32_t kPrivilegedUser = 6;
constexpr std::int32_t kBackupFunction = 2601;
constexpr std::int32_t kRestoreFunction = 2801;

constexpr auto kPlaceKey = "UserAuthentication";

/// Empty when the view has no such name. The name goes into the statement as it was typed:
/// a quote in it makes the statement fail, and the name is then tried as the ID itself.
std::string FindUserId(host::UserQuery& query, const std::string& displayName) {
  std::int32_t status = 0;
  query.Execute("SELECT USER_ID FROM V_MUSER WHERE DISP_NAME = N'" + displayName + "'", status);
  if (status != 0 || query.RowCount() < 1) return {};
  const std::string userId = query.Value(0, 0, status);
  return status == 0 ? userId : std::string();
}

bool IsGranted(host::UserAuthenticator& authenticator, const std::string& userId, std::int32_t functionCode) {
  std::int32_t granted = -1;
  return authenticator.CheckFunction(userId, functionCode, granted) != app::kFailed && granted == 0;
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
    : Form(application.toolkit, "frmUserAuthentication"), application_(application) {
  SetDefaultButton(cmdOK);
  SetCancelButton(cmdCancel);
  cmbUserName.Edited = [this] { cmdOK.SetEnabled(!cmbUserName.Text().empty()); };
  cmdOK.Clicked = [this](forms::ShiftState) { Accept(); };
  cmdCancel.Clicked = [this](forms::ShiftState shift) { Cancel(shift); };
}

void frmUserAuthentication::OnLoad() {
  app::RestoreDialogPosition(application_, kPlaceKey, *this);
  app::SetDialogCaptions(application_, app::DialogNumber::UserAuthentication, *this);
  app::ApplyControlAppearance(application_, *this);
  FillUserNames();
  cmbUserName.SetText({});
  txtPassword.SetText({});
  cmdOK.SetEnabled(false);
}

void frmUserAuthentication::OnUnload() {
  ForgetPassword();
  app::SaveDialogPosition(application_, kPlaceKey, *this);
}

void frmUserAuthentication::FillUserNames() {
  const std::unique_ptr<host::UserQuery> query = application_.host.components.CreateUserQuery();
  if (!query) return;
  std::int32_t status = 0;
  query->Execute("SELECT DISP_NAME FROM V_MUSER ORDER BY USER_ORDER_NO", status);
  if (status != 0) return;
  const std::int32_t rows = query->RowCount();
  for (std::int32_t row = 0; row < rows; ++row) {
    const std::string name = query->Value(row, 0, status);
    if (status == 0) cmbUserName.AddItem(name);
    application_.host.messageLoop.Yield();
  }
}

// Events are served while the databases are compacted, and a second OK or a Cancel in the
// middle of a sign-in must not come through.
void frmUserAuthentication::Accept() {
  SetEnabled(false);
  const std::int32_t messageId = SignIn();
  GetToolkit().SetPointer(forms::Pointer::Default);
  SetEnabled(true);
  if (messageId == 0) {
    Close();
  } else {
    app::ShowMessage(application_, messageId);
  }
}

void frmUserAuthentication::Cancel(forms::ShiftState shift) {
  application_.state.ExitMode = shift.IsShiftAlone() ? 1 : 0;
  application_.state.SignedIn = false;
  Close();
}

/// The blanks overwrite the text in its own memory before it is let go.
void frmUserAuthentication::ForgetPassword() {
  txtPassword.SetText(std::string(txtPassword.Text().size(), ' '));
  txtPassword.SetText({});
}

std::int32_t frmUserAuthentication::SignIn() {
  app::State& state = application_.state;
  state.UserRight = app::Right::None;
  std::string userId;
  if (const std::int32_t id = Authenticate(userId); id != 0) return id;
  state.UserId = userId;
  state.SignedIn = true;
  GetToolkit().SetPointer(forms::Pointer::Hourglass);
  app::RecordOperation(application_, "UserAuthentication", "OK");
  if (const std::int32_t id = CompactHostDatabases(); id != 0) return id;
  const std::int32_t recorded = app::RecordSignInOut(application_, state.UserId, app::SignInOut::SignIn);
  return recorded == 0 ? 0 : kSignInNotRecorded;
}

std::int32_t frmUserAuthentication::Authenticate(std::string& userId) {
  const std::unique_ptr<host::UserQuery> query = application_.host.components.CreateUserQuery();
  const std::unique_ptr<host::UserAuthenticator> authenticator = application_.host.components.CreateUserAuthenticator();
  if (!query || !authenticator) return kAuthenticationFailed;
  const std::string displayName = cmbUserName.Text();
  userId = FindUserId(*query, displayName);
  if (userId.empty()) userId = displayName;
  std::int32_t userKind = 0;
  const std::int32_t verified = authenticator->Verify(userId, txtPassword.Text(), userKind);
  if (verified >= 1 && verified <= 3) return kPasswordRefused;
  if (verified != 0) return kAuthenticationFailed;
  application_.state.UserRight = RightOf(*authenticator, userId, userKind);
  return application_.state.UserRight == app::Right::None ? kNoRight : 0;
}

std::int32_t frmUserAuthentication::CompactHostDatabases() {
  for (const char* name : {"Config", "Param"}) {
    std::string folder;
    if (app::GetPathEntry(application_, name, folder) != app::kDone) return app::kPathEntryUnreadable;
    CompactDatabases(application_, folder);
  }
  return 0;
}

}  // namespace operator_access
