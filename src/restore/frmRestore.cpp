// The restore dialog: what the chosen backup set holds, and which of it to put back.
#include "restore/frmRestore.h"

#include <utility>
#include <vector>

#include "app/Finish.h"
#include "base/Text.h"
#include "restore/mdlBURestore.h"

namespace restore {

using backupset::Category;

frmRestore::frmRestore(app::Application& application, jobs::JobDefinitions& definitions, media::MediaDrives& drives)
    : forms::Form(application.toolkit, "frmRestore", app::MessageId::RestoreTitle),
      application_(application),
      definitions_(definitions),
      drives_(drives),
      rows_{{{Category::PatientData, chkPatientData, LblPatient, lblPatientSize},
             {Category::MenuData, chkMenuData, LblMenu, lblMenuSize},
             {Category::SystemData, chkSystemData, LblSystem, lblSystemSize},
             {Category::UserData, chkUserData, LblUser, lblUserSize},
             {Category::ExplanationData, chkExplanationData, LblExplanation, lblExplanationSize},
             {Category::ReportSetData, chkReportSetData, LblReportSet, lblReportSetSize},
             {Category::ReportData, chkReportData, LblReport, lblReportSize},
             {Category::IPCounter, chkIPCounter, lblIPCounter, lblIPCounterSize}}},
      watch_(application.log) {
  for (const Row& row : rows_) row.box.Clicked = [this, &row] { BoxClicked(row); };
  cmdStart.Clicked = [this](forms::ShiftState) { Start(); };
  cmdCancel.Clicked = [this](forms::ShiftState) {
    application_.log.WriteLog(app::LogLevel::Information, "Cancel Restore");
    Close();
  };
  SetDefaultButton(cmdStart);
  SetCancelButton(cmdCancel);
  SetCautious();  // an Enter that was meant for the dialog before must not replace data
}

void frmRestore::OnLoad() {
  application_.log.WriteLog(app::LogLevel::Information, "Start Select Information for Restore");
  app::SetDialogCaptions(application_.messages, *this);
  app::ApplyControlAppearance(application_.appearance, *this);
  for (const Row& row : rows_) row.box.SetEnabled(false);

  backupset::Inspection inspection;
  const base::Outcome inspected = backupset::InspectBackupSet(
      work::ToolsOf(application_), backupset::IdentityOf(application_.state, application_.appearance),
      application_.state.SelectedFolder, inspection);
  if (!inspected.IsDone()) return Refuse(inspected);
  app::RestoreDialogPosition(application_.host.qx32, application_.toolkit, *this);
  set_ = inspection.set;
  ShowOffers(inspection);
  lblAppVersionValue.SetCaption(set_.appVersion);
  lblBackupDateValue.SetCaption(set_.date);
  ShowLocalDate();
  cmdStart.SetEnabled(ticked_ != 0);
  application_.toolkit.SetPointer(forms::Pointer::Default);
  accepted_ = true;
}

// A set that is refused never gets a place on the screen, and so has none to save.
void frmRestore::OnUnload() {
  if (accepted_) app::SaveDialogPosition(application_.host.qx32, *this);
}

void frmRestore::Refuse(const base::Outcome& why) {
  application_.failures.Show(why);
  cmdStart.SetEnabled(false);
}

void frmRestore::ShowOffers(const backupset::Inspection& inspection) {
  const std::string notInSet = application_.messages.GetMessageText(app::MessageId::NotInSetNote);
  const std::string inOtherVersion = application_.messages.GetMessageText(app::MessageId::OtherVersionNote);
  for (const Row& row : rows_) {
    const bool visible = row.category != Category::IPCounter || IsPrivileged();
    row.box.SetVisible(visible);
    row.note.SetVisible(visible);
    row.size.SetVisible(visible);
    if (!visible) continue;
    const backupset::Offer offer = inspection.offers.at(row.category);
    if (offer == backupset::Offer::Fits) {
      row.box.SetEnabled(true);
      row.box.SetValue(true);
      ShowSize(row);
    } else {
      row.note.SetCaption(offer == backupset::Offer::Missing ? notInSet : inOtherVersion);
    }
  }
}

/// Of the archive; what stands on floppies is not seen before they are gathered.
void frmRestore::ShowSize(const Row& row) {
  const std::string archive = set_.folder + backupset::RowOf(row.category).archive + ".cab";
  const std::int64_t size = application_.host.files.FileSize(archive);
  if (size >= 0) row.size.SetCaption(base::FormatSize(static_cast<std::uint64_t>(size)));
}

/// The date of a set is a text in the form of the host that made it. Its descriptor was written at that time.
void frmRestore::ShowLocalDate() {
  std::vector<host::FolderEntry> entries;
  static_cast<void>(application_.host.files.List(set_.folder, backupset::kDescriptorFile, entries));
  if (entries.size() != 1) return;
  host::Clock& clock = application_.host.clock;
  const base::LocalTime written = clock.LocalTimeOf(entries.front().modified);
  const std::string day = clock.ShortDate(written);
  if (!set_.date.starts_with(day)) lblBackupDateLocal.SetCaption("(" + day + " " + clock.LongTime(written) + ")");
}

void frmRestore::BoxClicked(const Row& row) {
  if (row.category == Category::IPCounter && !IsPrivileged()) return;
  ticked_ = static_cast<std::int16_t>(ticked_ + (row.box.Value() ? 1 : -1));
  cmdStart.SetEnabled(ticked_ != 0);
}

void frmRestore::Start() {
  application_.log.WriteLog(app::LogLevel::Information, "Start Restore");
  if (chkIPCounter.Value() && !application_.messages.Prompt(app::MessageId::AskReplaceIPCounter)) {
    return Stopped(app::Declined(app::MessageId::AskReplaceIPCounter));
  }
  application_.records.RecordOperation("Start", "Restore");
  application_.toolkit.SetPointer(forms::Pointer::Hourglass);
  SetEnabled(false);
  Run();
}

void frmRestore::Run() {
  const app::Progress::Job shown(application_.progress, prgJob, lblProgress);
  RestoreJob job(application_, watch_, set_, Ticked());
  if (const base::Outcome made = job.workFolder.Create(application_.host.clock, application_.host.messageLoop);
      !made.IsDone()) {
    application_.failures.Show(made, app::MessageId::RestoreWorkFolderNotMade);
    app::FinishApplication(application_, app::ExitMode::Halt);
  }
  base::Outcome outcome = RunRestore(application_, definitions_, drives_, job);
  if (outcome == base::Result::Stopped) {
    ListRestore(application_, job, {outcome.result, app::MessageId::RestoreStopped});
    return Stopped(outcome);
  }
  restored_ = outcome.IsDone();
  if (restored_) {
    ReportRestored(application_, job);
  } else {
    application_.progress.Fail();
    const bool stepFailed = outcome == base::Result::StepFailed;
    outcome = std::move(outcome).OrSay(stepFailed ? app::MessageId::RestoreStepFailed : app::MessageId::RestoreFailed);
    ListRestore(application_, job, outcome);
    application_.failures.Show(outcome);
  }
  Release();
  RemoveWorkFolderOrSay(application_.failures, job.workFolder);
  Close();
}

void frmRestore::Stopped(const base::Outcome& why) {
  application_.log.WriteLog(app::LogLevel::Information,
                            why.cause.empty() ? "Restore stopped" : "Restore stopped: " + why.cause);
  application_.messages.ShowMessage(app::MessageId::RestoreStopped);
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

backupset::Categories frmRestore::Ticked() const {
  backupset::Categories ticked;
  for (const Row& row : rows_) {
    if (row.box.Value()) ticked.insert(row.category);
  }
  return ticked;
}

}  // namespace restore
