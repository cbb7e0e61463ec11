// The main menu.
#include "access/frmMainMenu.h"

#include <optional>
#include <ranges>

#include "access/frmJobs.h"
#include "app/Finish.h"
#include "backup/frmBackup.h"
#include "base/Text.h"
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

struct LastBackup {
  std::string when;    ///< in the local form; empty when there has been none
  std::string folder;  ///< empty where that is not known
};

/// The day that the host keeps of the last backup, "yyyymmdd"; empty when there has been none.
std::string NotedDay(host::QX32& registry) {
  std::string day;
  static_cast<void>(registry.RegGetKeySZ("BackupDate", day));
  day = base::CutAtNul(day);
  return day.size() == 8 && day.find_first_not_of("0123456789") == std::string::npos ? day : std::string();
}

/// Out of the list of past jobs; of a backup that is not listed, such as one by an older version, the host keeps the
/// day alone.
LastBackup FindLastBackup(app::Application& application) {
  host::Clock& clock = application.host.clock;
  const std::string noted = NotedDay(application.host.qx32);
  for (const app::PastJob& job : application.pastJobs.Read() | std::views::reverse) {
    if (job.kind != app::JobKind::Backup || job.result != base::Result::Done) continue;
    if (base::FormatDay(job.ended) < noted) break;
    return {clock.ShortDate(job.ended) + " " + clock.LongTime(job.ended), job.folder};
  }
  if (noted.empty()) return {};
  const base::LocalTime day{base::LeadingNumber(noted.substr(0, 4)), base::LeadingNumber(noted.substr(4, 2)),
                            base::LeadingNumber(noted.substr(6, 2))};
  return {clock.ShortDate(day), {}};
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
  cmdJobs.Clicked = [this](forms::ShiftState) { Choose(&frmMainMenu::ShowPastJobs); };
  SetCancelButton(cmdEnd);
}

void frmMainMenu::OnLoad() {
  application_.log.WriteLog(app::LogLevel::Information, "Start Main Menu");
  app::PrepareDialog(application_, *this);
  cmdJobs.SetVisible(application_.messages.IsDefined(app::MessageId::PastJobsCaption));
  ShowLastBackup();
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
  cmdJobs.SetEnabled(false);
}

void frmMainMenu::Choose(void (frmMainMenu::*job)()) {
  DisableAll();
  (this->*job)();
  ShowLastBackup();
  EnableByRight();
  cmdEnd.SetEnabled(true);
  cmdJobs.SetEnabled(true);
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
  maintenance::StartMaintenanceLogBackup(application_, definitions_, drives_, prgJob, lblProgress);
}

void frmMainMenu::ShowPastJobs() {
  frmJobs(application_).ShowModal();
}

void frmMainMenu::ShowLastBackup() {
  const LastBackup last = FindLastBackup(application_);
  app::Messages& messages = application_.messages;
  const bool hasWord = !last.when.empty() && messages.IsDefined(app::MessageId::LastBackupCaption);
  lblLastBackup.SetCaption(hasWord ? messages.GetMessageText(app::MessageId::LastBackupCaption) + " " + last.when
                                   : last.when);
  lblLastFolder.SetCaption(last.folder);
}

void frmMainMenu::End(forms::ShiftState shift) {
  application_.records.RecordOperation(kScreen, "END");
  application_.state.ExitMode = shift.IsShiftAlone() ? app::ExitMode::EndQuietly : app::ExitMode::EndAndRestartHost;
  Close();
}

}  // namespace qx::access
