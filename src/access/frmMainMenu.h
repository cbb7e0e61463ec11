// The main menu.
#pragma once

#include <array>
#include <cstddef>

#include "app/Application.h"
#include "forms/Form.h"
#include "jobs/JobDefinitions.h"
#include "media/MediaDrives.h"

namespace qx::access {

/// Offers the three jobs by the operator's right, and the way out; tells what the last backup was. Leaves `ExitMode`
/// for the end of the program. A right that allows nothing shows message 63361 and halts the program.
class frmMainMenu : public forms::Form {
 public:
  /// Definitions and drives outlive the form.
  frmMainMenu(app::Application& application, jobs::JobDefinitions& definitions, media::MediaDrives& drives);

  /// Backup, restore, maintenance log backup.
  std::array<forms::CommandButton, 3> cmdMenu{
      forms::CommandButton{*this, "cmdMenu0", app::MessageId::BackupMenuCaption},
      forms::CommandButton{*this, "cmdMenu1", app::MessageId::RestoreMenuCaption},
      forms::CommandButton{*this, "cmdMenu2", app::MessageId::MaintenanceMenuCaption}};
  forms::CommandButton cmdEnd{*this, "cmdEnd", app::MessageId::EndCaption};
  forms::Label lblLastBackup{*this, "lblLastBackup", forms::kNoCaption};  ///< when
  forms::Label lblLastFolder{*this, "lblLastFolder", forms::kNoCaption};  ///< where
  forms::CommandButton cmdJobs{*this, "cmdJobs", app::MessageId::PastJobsCaption};
  forms::ProgressBar prgJob{*this, "prgJob", app::MessageId::MaintenanceTitle};  ///< of a maintenance log
  forms::Label lblProgress{*this, "lblProgress", forms::kNoCaption};

 protected:
  void OnLoad() override;
  void OnUnload() override;

 private:
  void Choose(void (frmMainMenu::*job)());
  void RunBackup();
  void RunRestore();
  void RunMaintenanceLogBackup();
  void ShowPastJobs();
  void ShowLastBackup();
  void End(forms::ShiftState shift);
  void EnableByRight();
  void DisableAll();
  /// Records the choice and makes it the operation under way.
  void Begin(const char* action, app::Operation operation);

  app::Application& application_;
  jobs::JobDefinitions& definitions_;
  media::MediaDrives& drives_;
};

}  // namespace qx::access
