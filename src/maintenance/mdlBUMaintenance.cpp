// The maintenance log backup.
#include "maintenance/mdlBUMaintenance.h"

#include <optional>

#include "backupset/Archiver.h"
#include "backupset/Pieces.h"
#include "jobs/ClientLogs.h"
#include "jobs/JobRunner.h"
#include "maintenance/StudyList.h"
#include "maintenance/frmMaintenance.h"
#include "media/frmSelectFolder.h"
#include "work/FileOperations.h"

namespace maintenance {
namespace {

constexpr char kDatabaseExportFolder[] = "BCP";
constexpr char kArchiveName[] = "MAINTENANCE";

/// The operator's choices; nothing when there is nothing to start.
std::optional<jobs::MaintenanceOptions> AskForOptions(app::Application& application) {
  frmMaintenance dialog(application);
  dialog.ShowModal();
  application.toolkit.SetPointer(forms::Pointer::Hourglass);
  application.state.CurrentOperation = app::Operation::MaintenanceLogBackup;
  std::optional<jobs::MaintenanceOptions> options;
  if (dialog.Result() != Choice::Cancelled) {
    options = {dialog.Result() == Choice::Protected, dialog.CollectsImages(), dialog.DayCount()};
  }
  dialog.Unload();
  return options;
}

base::Outcome LoadMaintenanceSection(app::Application& application, jobs::JobDefinitions& definitions,
                                     const std::string& section) {
  const work::Tools tools = work::ToolsOf(application);
  const app::State& state = application.state;
  // What this workstation has is collected also where the logs of others cannot be had.
  static_cast<void>(jobs::ImportClientLogs(tools, application.paths, application.host.qx32, state.StartupDirectory));
  return definitions.Load(tools, state.SystemFolder, jobs::kJobDefinitionFile, section);
}

/// Runs the loaded section, whichever it is, and packs what it gathers into "MAINTENANCE.cab".
base::Outcome CollectMaintenanceSection(app::Application& application, const jobs::JobDefinitions& definitions,
                                        MaintenanceJob& job, const std::string& section) {
  const work::WorkFolder& workFolder = job.packed.workFolder;
  const jobs::Job collecting = jobs::JobOf(application, definitions, workFolder, job.options);
  jobs::PlanSection(collecting, section, kArchiveName);
  const jobs::SectionResult result = jobs::RunSectionItems(collecting, section, kArchiveName);
  job.PersonalInfoResult = result.PersonalInfoResult;
  if (!result.outcome.IsDone()) return result.outcome;
  job.packed.set.archives = {result.archive};
  return backupset::Archiver(collecting.tools, workFolder).CollectArchives(job.packed.set);
}

}  // namespace

MaintenanceJob::MaintenanceJob(app::Application& application, const jobs::MaintenanceOptions& chosen)
    : options(chosen),
      packed{{application.host.files, application.host.qx32, application.state.StartupDirectory}, {}, 0},
      watch(application.log) {}

void StartMaintenanceLogBackup(app::Application& application, jobs::JobDefinitions& definitions,
                               media::MediaDrives& drives, forms::ProgressBar& bar, forms::Label& numbers) {
  const auto options = AskForOptions(application);
  if (!options) return;
  MaintenanceJob job(application, *options);
  const auto gather = [&] { return MaintenanceLogBackup(application, definitions, job); };
  const backupset::Gathering gathering{app::JobKind::MaintenanceLog, job.packed, job.watch};
  if (!backupset::GatherUnderBar(application, bar, numbers, gathering, gather)) return;
  if (job.PersonalInfoResult != 0) {
    application.messages.ShowMessage(app::MessageId::PersonalInfoLeft, {}, std::to_string(job.PersonalInfoResult), {});
  }
  MaintenanceOperation operation(application, drives, job);
  media::frmSelectFolder(application, drives, operation).ShowModal();
}

base::Outcome MaintenanceLogBackup(app::Application& application, jobs::JobDefinitions& definitions,
                                   MaintenanceJob& job) {
  work::WorkFolder& workFolder = job.packed.workFolder;
  base::Outcome step = workFolder.Create(application.host.clock, application.host.messageLoop);
  if (!step.IsDone()) return std::move(step).OrSay(app::MessageId::MaintenanceWorkFolderNotMade);
  // Where it cannot be made, the export's files stay where they are, and the move says so.
  static_cast<void>(application.host.files.MakeFolder(workFolder.StagingFolder() + kDatabaseExportFolder));
  const std::string section = MaintenanceSectionName(job.options);
  step = LoadMaintenanceSection(application, definitions, section);
  if (!step.IsDone()) return std::move(step).OrSay(app::MessageId::MaintenanceSectionMissing);
  step = CollectMaintenanceSection(application, definitions, job, section);
  if (!step.IsDone()) return std::move(step).OrSay(app::MessageId::MaintenanceLogNotGathered);
  backupset::Measure(work::ToolsOf(application), backupset::MessagesOf(app::Operation::MaintenanceLogBackup), job.watch,
                     job.packed);
  return base::Result::Done;
}

std::string MaintenanceSectionName(const jobs::MaintenanceOptions& options) {
  return options.ProtectPersonalInfo ? "PERSONALINFOPROTECTION" : "MAINTENANCE";
}

MaintenanceOperation::MaintenanceOperation(app::Application& application, media::MediaDrives& drives,
                                           MaintenanceJob& job)
    : WritingOperation(application, drives, job.packed, backupset::MessagesOf(app::Operation::MaintenanceLogBackup),
                       job.watch),
      job_(job) {}

std::string MaintenanceOperation::ProposeFolder() {
  drives_.GetDefaultMediaDrive();
  return DesktopFolder(application_.host.shell);
}

base::Outcome MaintenanceOperation::Write() {
  base::Outcome exported = ExportStudyList(work::ToolsOf(application_), application_.paths, application_.host.shell,
                                           job_.packed.workFolder, job_.options.ProtectPersonalInfo);
  if (!exported.IsDone()) return exported;
  base::Outcome written = WriteBundle();
  if (written == base::Result::Stopped) return backupset::ReportStopped(application_, messages_, written);
  if (written.IsDone()) {
    backupset::ReportWritten(application_, messages_, job_.packed.set, job_.watch);
  }
  return written;
}

// The list of studies belongs to the bundle, but a set is made of archives and their descriptor alone.
// Floppies hold nothing but their piece of the set: there the list stays on the desktop.
base::Outcome MaintenanceOperation::WriteBundle() {
  base::Outcome written = backupset::WriteBackupSet(application_, drives_, job_.packed, messages_);
  const std::string& destination = application_.state.SelectedFolder;
  if (!written.IsDone() || backupset::IsOnFloppies(destination)) return written;
  return CopyStudyList(work::ToolsOf(application_), job_.packed.workFolder, destination);
}

}  // namespace maintenance
