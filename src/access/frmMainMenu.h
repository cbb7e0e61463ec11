// The main menu.
#pragma once

#include <array>
#include <cstddef>

#include "app/Application.h"
#include "backup/JobContext.h"
#include "forms/Form.h"

namespace operator_access {

/// Offers the three jobs by the operator's right, and the way out. Leaves `ExitMode` for the end of
/// the program. A right that allows nothing shows message 63361 and halts the program.
class frmMainMenu : public forms::Form {
 public:
  explicit frmMainMenu(const backup::JobContext& job);

  /// Backup, restore, maintenance log backup.
  std::array<forms::CommandButton, 3> cmdMenu{forms::CommandButton{*this, "cmdMenu0"},
                                              forms::CommandButton{*this, "cmdMenu1"},
                                              forms::CommandButton{*this, "cmdMenu2"}};
  forms::CommandButton cmdEnd{*this, "cmdEnd"};

 protected:
  void OnLoad() override;
  void OnUnload() override;

 private:
  void Choose(void (frmMainMenu::*job)());
  void RunBackup();
  void RunRestore();
  void RunMaintenanceLogBackup();
  void End(forms::ShiftState shift);
  void EnableByRight();
  void DisableAll();
  /// Records the choice and makes it the operation under way.
  void Begin(const char* action, app::Operation operation);

  backup::JobContext job_;
  app::Application& application_;
};

}  // namespace operator_access
