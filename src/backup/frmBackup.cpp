// The backup dialog: what to back up.
#include "backup/frmBackup.h"

#include "backup/mdlBUBackup.h"
#include "backupset/EndedJob.h"
#include "media/frmSelectFolder.h"

namespace backup {

frmBackup::frmBackup(app::Application& application, jobs::JobDefinitions& definitions, media::MediaDrives& drives)
    : forms::Form(application.toolkit, "frmBackup", app::MessageId::BackupTitle),
      application_(application),
      definitions_(definitions),
      drives_(drives) {
  for (forms::CheckBox* const box : {&chkPatientData, &chkSystemData, &chkReportData}) {
    box->Clicked = [this] { CategoryClicked(); };
  }
  chkLogData.Clicked = [this] {
    chkDeleteLog.SetEnabled(chkLogData.Value());
    CategoryClicked();
  };
  cmdStart.Clicked = [this](forms::ShiftState) { Start(); };
  cmdCancel.Clicked = [this](forms::ShiftState) { Close(); };
  SetDefaultButton(cmdStart);
  SetCancelButton(cmdCancel);
}

void frmBackup::OnLoad() {
  application_.log.WriteLog(app::LogLevel::Information, "Start Select Information for Backup");
  app::PrepareDialog(application_, *this);
  chkPatientData.SetValue(true);
  chkLogData.SetValue(true);
  EnableAll();
  application_.toolkit.SetPointer(forms::Pointer::Default);
}

void frmBackup::OnUnload() {
  app::SaveDialogPosition(application_.host.qx32, *this);
}

backupset::Boxes frmBackup::Choice() const {
  backupset::Boxes choice;
  if (chkPatientData.Value()) choice.insert(backupset::Box::Patient);
  if (chkSystemData.Value()) choice.insert(backupset::Box::System);
  if (chkLogData.Value()) choice.insert(backupset::Box::Log);
  if (chkReportData.Value()) choice.insert(backupset::Box::Report);
  return choice;
}

void frmBackup::CategoryClicked() {
  cmdStart.SetEnabled(!Choice().empty());
}

void frmBackup::EnableAll() {
  for (forms::CheckBox* const box : {&chkPatientData, &chkSystemData, &chkLogData, &chkReportData}) {
    box->SetEnabled(true);
  }
  chkDeleteLog.SetEnabled(chkLogData.Value());
  cmdCancel.SetEnabled(true);
  CategoryClicked();
}

void frmBackup::DisableAll() {
  for (forms::Control* const control : Controls()) {
    const forms::ControlKind kind = control->Kind();
    if (kind == forms::ControlKind::CheckBox || kind == forms::ControlKind::CommandButton) control->SetEnabled(false);
  }
}

void frmBackup::Start() {
  application_.log.WriteLog(app::LogLevel::Information, "Start Backup");
  DisableAll();
  application_.toolkit.SetPointer(forms::Pointer::Hourglass);
  const bool done = BackUp();
  application_.toolkit.SetPointer(forms::Pointer::Default);
  if (done) {
    Close();
  } else {
    EnableAll();
  }
}

bool frmBackup::BackUp() {
  BackupJob job(application_, Choice());
  const auto gather = [&] { return GatherAndPack(application_, definitions_, job); };
  const backupset::Gathering gathering{app::JobKind::Backup, job.packed, job.watch};
  if (!backupset::GatherUnderBar(application_, prgJob, lblProgress, gathering, gather)) return false;
  // Logs that are not backed up must never be deleted, though the box keeps its tick while it is disabled.
  job.deleteLogs = chkDeleteLog.Value() && chkLogData.Value();
  application_.toolkit.SetPointer(forms::Pointer::Default);
  BackupOperation operation(application_, definitions_, drives_, job);
  media::frmSelectFolder(application_, drives_, operation).ShowModal();
  return operation.IsDone();
}

}  // namespace backup
