// The main menu.
#include "access/frmMainMenu.h"

#include <optional>

#include "app/Appearance.h"
#include "app/Captions.h"
#include "app/Messages.h"
#include "app/Records.h"
#include "app/StartUp.h"
#include "backup/frmBackup.h"
#include "maintenance/mdlBUMaintenance.h"
#include "media/frmSelectFolder.h"
#include "restore/RestoreOperation.h"

namespace operator_access {
namespace {

constexpr char kScreen[] = "MainMenu";
constexpr std::int32_t kNoRight = 63361;

using Jobs = std::array<bool, 3>;

/// Which jobs a right allows; nothing for a right that is none.
std::optional<Jobs> AllowedJobs(app::Right right) {
  switch (right) {
    case app::Right::Backup:
      return Jobs{true, false, true};
    case app::Right::Restore:
      return Jobs{false, true, false};
    case app::Right::BackupAndRestore:
    case app::Right::Privileged:
      return Jobs{true, true, true};
    case app::Right::None:
      break;
  }
  return std::nullopt;
}

}  // namespace

frmMainMenu::frmMainMenu(const backup::JobContext& job)
    : forms::Form(job.application.toolkit, "frmMainMenu"), job_(job), application_(job.application) {
  cmdMenu[0].Clicked = [this](forms::ShiftState) { Choose(&frmMainMenu::RunBackup); };
  cmdMenu[1].Clicked = [this](forms::ShiftState) { Choose(&frmMainMenu::RunRestore); };
  cmdMenu[2].Clicked = [this](forms::ShiftState) { Choose(&frmMainMenu::RunMaintenanceLogBackup); };
  cmdEnd.Clicked = [this](forms::ShiftState shift) { End(shift); };
  SetCancelButton(cmdEnd);
}

void frmMainMenu::OnLoad() {
  app::RestoreDialogPosition(application_, kScreen, *this);
  app::SetDialogCaptions(application_, app::DialogNumber::MainMenu, *this);
  app::ApplyControlAppearance(application_, *this);
  EnableByRight();
  application_.toolkit.SetPointer(forms::Pointer::Default);
  application_.state.CurrentOperation = app::Operation::MainMenu;
}

void frmMainMenu::OnUnload() {
  app::SaveDialogPosition(application_, kScreen, *this);
}

void frmMainMenu::EnableByRight() {
  const std::optional<Jobs> allowed = AllowedJobs(application_.state.UserRight);
  if (!allowed) {
    app::ShowMessage(application_, kNoRight);
    app::FinishApplication(application_, app::kHalt);
    return;
  }
  for (std::size_t i = 0; i < cmdMenu.size(); ++i) cmdMenu[i].SetEnabled((*allowed)[i]);
}

void frmMainMenu::DisableAll() {
  for (forms::CommandButton& button : cmdMenu) {
    button.SetEnabled(false);
    application_.host.messageLoop.Yield();
  }
  cmdEnd.SetEnabled(false);
}

void frmMainMenu::Choose(void (frmMainMenu::*job)()) {
  DisableAll();
  (this->*job)();
  EnableByRight();
  cmdEnd.SetEnabled(true);
  application_.toolkit.SetPointer(forms::Pointer::Default);
}

void frmMainMenu::Begin(const char* action, app::Operation operation) {
  app::RecordOperation(application_, kScreen, action);
  application_.toolkit.SetPointer(forms::Pointer::Hourglass);
  application_.state.CurrentOperation = operation;
}

void frmMainMenu::RunBackup() {
  Begin("Backup", app::Operation::Backup);
  backup::frmBackup(job_).ShowModal();
}

void frmMainMenu::RunRestore() {
  Begin("Restore", app::Operation::Restore);
  restore::RestoreOperation operation(application_, job_.definitions);
  media::frmSelectFolder(application_, operation).ShowModal();
}

void frmMainMenu::RunMaintenanceLogBackup() {
  app::RecordOperation(application_, kScreen, "MainteLogBackup");
  maintenance::StartMaintenanceLogBackup(job_);
}

void frmMainMenu::End(forms::ShiftState shift) {
  app::RecordOperation(application_, kScreen, "END");
  application_.state.ExitMode = shift.IsShiftAlone() ? app::kEndQuietly : app::kEndAndRestartHost;
  Close();
}

}  // namespace operator_access
