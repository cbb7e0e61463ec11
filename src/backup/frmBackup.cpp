// The backup dialog: what to back up.
#include "backup/frmBackup.h"

#include "app/Appearance.h"
#include "app/Captions.h"
#include "app/Log.h"
#include "app/Messages.h"
#include "backup/BackupOperation.h"
#include "backup/FileOperations.h"
#include "backup/StagingFolder.h"
#include "media/frmSelectFolder.h"

namespace backup {
namespace {

constexpr char kPositionKey[] = "Backup";
constexpr std::int32_t kNoStagingFolder = 60360;
constexpr std::int32_t kSectionMissing = 60370;
constexpr std::int32_t kPackingFailed = 60371;

}  // namespace

frmBackup::frmBackup(const JobContext& job)
    : forms::Form(job.application.toolkit, "frmBackup"), job_(job), application_(job.application) {
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
  app::WriteLog(application_, 1, app::LogLevel::Information, "Start Select Information for Backup");
  app::RestoreDialogPosition(application_, kPositionKey, *this);
  app::SetDialogCaptions(application_, app::DialogNumber::Backup, *this);
  app::ApplyControlAppearance(application_, *this);
  chkPatientData.SetValue(true);
  chkLogData.SetValue(true);
  EnableAll();
  application_.toolkit.SetPointer(forms::Pointer::Default);
}

void frmBackup::OnUnload() {
  app::SaveDialogPosition(application_, kPositionKey, *this);
}

CategoryChoice frmBackup::Choice() const {
  return {chkPatientData.Value(), chkSystemData.Value(), chkLogData.Value(), chkReportData.Value()};
}

void frmBackup::CategoryClicked() {
  const CategoryChoice choice = Choice();
  cmdStart.SetEnabled(choice.patient || choice.system || choice.log || choice.report);
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
    if (control != &fraBackup) control->SetEnabled(false);
  }
}

void frmBackup::Start() {
  app::WriteLog(application_, 1, app::LogLevel::Information, "Start Backup");
  DisableAll();
  application_.toolkit.SetPointer(forms::Pointer::Hourglass);
  application_.state.BackupDone = false;
  if (const std::int32_t message = GatherAndPack(); message != 0) {
    app::ShowMessage(application_, message);
    RemoveStagingFolder(application_);  // nobody else would
  } else {
    ChooseDestination();
  }
  application_.toolkit.SetPointer(forms::Pointer::Default);
  application_.state.DeleteLogs = false;
  const bool done = application_.state.BackupDone;
  application_.state.BackupDone = false;
  if (done) {
    Close();
  } else {
    EnableAll();
  }
}

std::int32_t frmBackup::GatherAndPack() {
  if (CreateStagingFolder(application_).empty()) return kNoStagingFolder;
  if (LoadBackupSections(job_, Choice()) != app::kDone) return kSectionMissing;
  return PackCategories(job_, Choice()) == app::kDone ? 0 : kPackingFailed;
}

void frmBackup::ChooseDestination() {
  application_.state.BackupSize = GetFolderSize(application_, application_.state.StagingFolder);
  // Logs that are not backed up must never be deleted, though the box keeps its tick while it is disabled.
  application_.state.DeleteLogs = chkDeleteLog.Value() && chkLogData.Value();
  application_.toolkit.SetPointer(forms::Pointer::Default);
  BackupOperation operation(job_, Choice());
  media::frmSelectFolder dialog(application_, operation);
  dialog.ShowModal();
}

}  // namespace backup
