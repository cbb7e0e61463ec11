// The main menu.
#include "access/frmMainMenu.h"

#include <optional>

#include "app/Finish.h"
#include "backup/frmBackup.h"
#include "maintenance/mdlBUMaintenance.h"
#include "media/frmSelectFolder.h"
#include "restore/mdlBURestore.h"

namespace qx::access {
namespace {

constexpr char kScreen[] = "MainMenu";

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

frmMainMenu::frmMainMenu(app::Application& application, jobs::JobDefinitions& definitions, media::MediaDrives& drives)
    : forms::Form(application.toolkit, "frmMainMenu", app::MessageId::MainMenuTitle),
      application_(application),
      definitions_(definitions),
      drives_(drives) {
  cmdMenu[0].Clicked = [this](forms::ShiftState) { Choose(&frmMainMenu::RunBackup); };
  cmdMenu[1].Clicked = [this](forms::ShiftState) { Choose(&frmMainMenu::RunRestore); };
  cmdMenu[2].Clicked = [this](forms::ShiftState) { Choose(&frmMainMenu::RunMaintenanceLogBackup); };
  cmdEnd.Clicked = [this](forms::ShiftState shift) { End(shift); };
  SetCancelButton(cmdEnd);
}

void frmMainMenu::OnLoad() {
  application_.log.WriteLog(app::LogLevel::Information, "Start Main Menu");
  app::PrepareDialog(application_, *this);
  EnableByRight();
  application_.toolkit.SetPointer(forms::Pointer::Default);
  application_.state.CurrentOperation = app::Operation::MainMenu;
}

void frmMainMenu::OnUnload() {
  app::SaveDialogPosition(application_.host.qx32, *this);
}

void frmMainMenu::EnableByRight() {
  const std::optional<Jobs> allowed = AllowedJobs(application_.state.UserRight);
  if (!allowed) {
    const auto right = static_cast<std::int32_t>(application_.state.UserRight);
    application_.failures.Show({base::Result::Failed, app::MessageId::NoRight,
                                "user " + application_.state.UserId + ": right " + std::to_string(right)});
    return app::FinishApplication(application_, app::ExitMode::Halt);
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
  application_.records.RecordOperation(kScreen, action);
  application_.toolkit.SetPointer(forms::Pointer::Hourglass);
  application_.state.CurrentOperation = operation;
}

void frmMainMenu::RunBackup() {
  Begin("Backup", app::Operation::Backup);
  backup::frmBackup(application_, definitions_, drives_).ShowModal();
}

void frmMainMenu::RunRestore() {
  Begin("Restore", app::Operation::Restore);
  restore::RestoreOperation operation(application_, definitions_, drives_);
  media::frmSelectFolder(application_, drives_, operation).ShowModal();
}

void frmMainMenu::RunMaintenanceLogBackup() {
  application_.records.RecordOperation(kScreen, "MainteLogBackup");
  maintenance::StartMaintenanceLogBackup(application_, definitions_, drives_);
}

void frmMainMenu::End(forms::ShiftState shift) {
  application_.records.RecordOperation(kScreen, "END");
  application_.state.ExitMode = shift.IsShiftAlone() ? app::ExitMode::EndQuietly : app::ExitMode::EndAndRestartHost;
  Close();
}

}  // namespace qx::access
