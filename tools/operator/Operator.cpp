// Works the program's dialogs step by step.
#include "operator/Operator.h"

#include <algorithm>
#include <stdexcept>

#include "MessageDialogIds.h"
#include "resource.h"

namespace endtoend {

void Operator::Tell(const std::string& step, const Window& window) const {
  if (narrator_) narrator_(step, window);
}

Window Operator::SignInDialog() {
  const Window dialog = program_.WaitForDialog(ID_frmUserAuthentication_cmbUserName);
  Tell("The sign-in dialog is open", dialog);
  return dialog;
}

void Operator::TrySignIn(const User& user) {
  const Window dialog = SignInDialog();
  dialog.Type(ID_frmUserAuthentication_cmbUserName, user.name);
  dialog.Type(ID_frmUserAuthentication_txtPassword, user.password);
  WaitUntil([&] { return dialog.IsEnabled(ID_frmUserAuthentication_cmdOK); });
  dialog.Press(ID_frmUserAuthentication_cmdOK);
}

Window Operator::SignIn(const User& user) {
  TrySignIn(user);
  const Window menu = MainMenu();
  Tell("Signed in as " + user.name + "; the main menu is open", menu);
  return menu;
}

Window Operator::MainMenu() {
  return program_.WaitForDialog(ID_frmMainMenu_cmdMenu0);
}

Window Operator::OpenBackup(const Categories& categories) {
  MainMenu().Press(ID_frmMainMenu_cmdMenu0);
  const Window dialog = program_.WaitForDialog(ID_frmBackup_chkPatientData);
  dialog.Tick(ID_frmBackup_chkPatientData, categories.patient);
  dialog.Tick(ID_frmBackup_chkSystemData, categories.system);
  dialog.Tick(ID_frmBackup_chkLogData, categories.log);
  dialog.Tick(ID_frmBackup_chkReportData, categories.report);
  Tell("The backup dialog is open and the categories are ticked", dialog);
  return dialog;
}

Window Operator::StartBackup(const Window& backupDialog) {
  backupDialog.Press(ID_frmBackup_cmdStart);
  const Window dialog = DestinationDialog();
  Tell("The data is gathered and packed; destination " + dialog.Text(ID_frmSelectFolder_txtFolder) + ", space " +
           dialog.Text(ID_frmSelectFolder_txtCapacity),
       dialog);
  return dialog;
}

Window Operator::DestinationDialog() {
  return program_.WaitForDialog(ID_frmSelectFolder_txtFolder);
}

void Operator::Accept(const Window& destinationDialog, const std::string& folder) {
  if (!folder.empty()) destinationDialog.Type(ID_frmSelectFolder_txtFolder, folder);
  destinationDialog.Press(ID_frmSelectFolder_cmdOK);
}

Window Operator::OpenRestore(const std::string& folder) {
  MainMenu().Press(ID_frmMainMenu_cmdMenu1);
  Accept(DestinationDialog(), folder);
  const Window dialog = program_.WaitForDialog(ID_frmRestore_cmdStart);
  Tell("The set of " + dialog.Text(ID_frmRestore_lblBackupDateValue) + " fits this system", dialog);
  return dialog;
}

Window Operator::CollectMaintenanceLog(bool protect, int imageDays) {
  MainMenu().Press(ID_frmMainMenu_cmdMenu2);
  const Window dialog = program_.WaitForDialog(ID_frmMaintenance_cmdStart);
  dialog.Tick(protect ? ID_frmMaintenance_Option1 : ID_frmMaintenance_Option2);
  dialog.Tick(ID_frmMaintenance_Option4);
  dialog.Type(ID_frmMaintenance_txtCollectRange, std::to_string(imageDays));
  Tell("The maintenance options are chosen; " + dialog.Text(ID_frmMaintenance_txtPatientCount) + " patients, " +
           dialog.Text(ID_frmMaintenance_txtStudyCount) + " studies",
       dialog);
  dialog.Press(ID_frmMaintenance_cmdStart);
  if (!protect) ConsentUntil(base::MessageId::AskUnprotected, {});
  const Window destination = DestinationDialog();
  Tell("The maintenance log is collected; destination " + destination.Text(ID_frmSelectFolder_txtFolder), destination);
  return destination;
}

void Operator::ConsentUntil(base::MessageId last, const std::vector<base::MessageId>& allowed) {
  for (auto id = base::MessageId::None; id != last;) {
    id = Answer();
    if (id != last && std::ranges::find(allowed, id) == allowed.end())
      throw std::runtime_error("message " + std::to_string(static_cast<int>(id)) + " was not expected");
  }
}

Window Operator::OpenPastJobs() {
  MainMenu().Press(ID_frmMainMenu_cmdJobs);
  const Window dialog = program_.WaitForDialog(ID_frmJobs_lstJobs);
  Tell("Past jobs", dialog);
  return dialog;
}

base::MessageId Operator::NextMessage() {
  return Program::MessageNumber(program_.WaitForMessageWindow());
}

base::MessageId Operator::Answer(endtoend::Answer answer) {
  const Window window = program_.WaitForMessageWindow();
  Tell("Message: " + window.Text(TARSUS_MESSAGE_TEXT), window);
  return program_.AnswerMessage(answer);
}

void Operator::End(bool withShift) {
  const Window menu = MainMenu();
  withShift ? menu.PressWithShift(ID_frmMainMenu_cmdEnd) : menu.Press(ID_frmMainMenu_cmdEnd);
  program_.WaitForEnd();
}

}  // namespace endtoend
