// The restore dialog: what the chosen backup set holds, and which of it to put back.
#include "restore/frmRestore.h"

#include <string>

#include "app/Appearance.h"
#include "app/Log.h"
#include "app/Messages.h"
#include "app/Records.h"
#include "app/StartUp.h"
#include "backup/StagingFolder.h"
#include "media/Question.h"
#include "restore/RestoreDriver.h"

namespace restore {
namespace {

constexpr char kPositionKey[] = "Restore";
constexpr std::int32_t kNotInSet = 66080;
constexpr std::int32_t kInOtherVersion = 66081;
constexpr std::int32_t kConfirmIPCounter = 64402;

}  // namespace

frmRestore::frmRestore(app::Application& application, backup::JobDefinitions& definitions)
    : forms::Form(application.toolkit, "frmRestore"),
      application_(application),
      definitions_(definitions),
      rows_{{{chkPatientData, LblPatient},
             {chkMenuData, LblMenu},
             {chkSystemData, LblSystem},
             {chkUserData, LblUser},
             {chkExplanationData, LblExplanation},
             {chkReportSetData, LblReportSet},
             {chkReportData, LblReport},
             {chkIPCounter, lblIPCounter}}} {
  for (std::size_t i = 0; i < kCategories; ++i) rows_[i].box.Clicked = [this, i] { BoxClicked(i); };
  cmdStart.Clicked = [this](forms::ShiftState) { Start(); };
  cmdCancel.Clicked = [this](forms::ShiftState) {
    app::WriteLog(application_, 1, app::LogLevel::Information, "Cancel Restore");
    Close();
  };
  SetDefaultButton(cmdStart);
  SetCancelButton(cmdCancel);
}

void frmRestore::OnLoad() {
  app::WriteLog(application_, 1, app::LogLevel::Information, "Start Select Information for Restore");
  SetCaptions();
  app::ApplyControlAppearance(application_, *this);
  for (const Row& row : rows_) row.box.SetEnabled(false);

  BackupSet set;
  if (const std::int32_t message = InspectBackupSet(application_, set)) {
    Refuse(message);
    return;
  }
  app::RestoreDialogPosition(application_, kPositionKey, *this);
  placed_ = true;
  ShowOffers(set);
  lblAppVersionValue.SetCaption(set.appVersion);
  lblBackupDateValue.SetCaption(set.date);
  cmdStart.SetEnabled(ticked_ != 0);
  application_.toolkit.SetPointer(forms::Pointer::Default);
  loadResult_ = 1;
}

// A set that is refused never gets a place on the screen, and so has none to save.
void frmRestore::OnUnload() {
  if (placed_) app::SaveDialogPosition(application_, kPositionKey, *this);
}

void frmRestore::SetCaptions() {
  const auto text = [this](std::int32_t id) { return app::GetMessageText(application_, id); };
  SetTitle(text(66050));
  fraItem.SetCaption(text(66051));
  chkPatientData.SetCaption(text(66052));
  chkMenuData.SetCaption(text(66053));
  chkSystemData.SetCaption(text(66054));
  chkUserData.SetCaption(text(66055));
  chkExplanationData.SetCaption(text(66056));
  chkIPCounter.SetCaption(text(66057));
  LblSetupInfo.SetCaption(text(66058));
  chkReportData.SetCaption(text(66059));
  chkReportSetData.SetCaption(text(66060));
  fraSystem.SetCaption(text(66061));
  lblAppVersion.SetCaption(text(66062));
  lblBackupDate.SetCaption(text(66063));
  cmdStart.SetCaption(text(66004));
  cmdCancel.SetCaption(text(66002));
}

void frmRestore::Refuse(std::int32_t message) {
  app::ShowMessage(application_, message);
  loadResult_ = -1;
  cmdStart.SetEnabled(false);
}

void frmRestore::ShowOffers(const BackupSet& set) {
  const std::string notInSet = app::GetMessageText(application_, kNotInSet);
  const std::string inOtherVersion = app::GetMessageText(application_, kInOtherVersion);
  for (std::size_t i = 0; i < kCategories; ++i) {
    const bool visible = i != kIPCounter || IsPrivileged();
    rows_[i].box.SetVisible(visible);
    rows_[i].note.SetVisible(visible);
    if (!visible) continue;
    if (set.offers[i] == Offer::Fits) {
      rows_[i].box.SetEnabled(true);
      rows_[i].box.SetValue(true);
    } else {
      rows_[i].note.SetCaption(set.offers[i] == Offer::Missing ? notInSet : inOtherVersion);
    }
  }
}

void frmRestore::BoxClicked(std::size_t category) {
  if (category == kIPCounter && !IsPrivileged()) return;
  ticked_ = static_cast<std::int16_t>(ticked_ + (rows_[category].box.Value() ? 1 : -1));
  cmdStart.SetEnabled(ticked_ != 0);
}

void frmRestore::Start() {
  app::WriteLog(application_, 1, app::LogLevel::Information, "Start Restore");
  if (chkIPCounter.Value() && !media::Consents(application_, kConfirmIPCounter)) {
    Stopped();
    return;
  }
  app::RecordOperation(application_, "Start", "Restore");
  application_.toolkit.SetPointer(forms::Pointer::Hourglass);
  SetEnabled(false);
  if (backup::CreateStagingFolder(application_).empty()) {
    app::ShowMessage(application_, 60410);
    app::FinishApplication(application_, app::kHalt);
  }
  Run();
}

void frmRestore::Run() {
  const app::ResultCode result = RunRestore(application_, definitions_, Ticked());
  if (result == app::kStopped) {
    Stopped();
    return;
  }
  if (result == app::kDone) {
    app::ShowMessage(application_, 65400);
    application_.state.RestoreDone = true;
  } else {
    app::ShowPendingMessage(application_, result == app::kFailed ? 60401 : 60402);
  }
  Release();
  RemoveStagingOrSay(application_);
  Close();
}

void frmRestore::Stopped() {
  app::ShowMessage(application_, 65401);
  Release();
}

void frmRestore::Release() {
  application_.toolkit.SetPointer(forms::Pointer::Default);
  SetEnabled(true);
  if (ticked_ == 0) cmdStart.SetEnabled(false);
}

bool frmRestore::IsPrivileged() const {
  return application_.state.UserRight == app::Right::Privileged;
}

Selection frmRestore::Ticked() const {
  Selection selection{};
  for (std::size_t i = 0; i < kCategories; ++i) selection[i] = rows_[i].box.Value();
  return selection;
}

}  // namespace restore
