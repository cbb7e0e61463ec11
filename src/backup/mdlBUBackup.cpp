// An ordinary backup: gathering, packing, and the driver.
#include "backup/mdlBUBackup.h"

#include "backupset/Archiver.h"
#include "jobs/ClientLogs.h"
#include "jobs/JobRunner.h"
#include "jobs/LogDeletion.h"
#include "work/FileOperations.h"

namespace backup {
namespace {

using backupset::Category;

base::Outcome LoadSections(app::Application& application, jobs::JobDefinitions& definitions,
                           const backupset::Boxes& choice) {
  const work::Tools tools = work::ToolsOf(application);
  const app::State& state = application.state;
  if (choice.contains(backupset::Box::Log)) {
    // Logs of this workstation are saved also where those of others cannot be had.
    static_cast<void>(jobs::ImportClientLogs(tools, application.paths, application.host.qx32, state.StartupDirectory));
  }
  for (const Category category : backupset::kPackingOrder) {
    const backupset::CategoryRow& row = backupset::RowOf(category);
    if (!choice.contains(row.box)) continue;
    base::Outcome loaded = definitions.Load(tools, state.SystemFolder, jobs::kJobDefinitionFile, row.backupSection);
    if (!loaded.IsDone()) return loaded;
  }
  return base::Result::Done;
}

/// Packs all categories behind one check box; fails when none has made an archive.
base::Outcome PackBox(const jobs::Job& job, backupset::Box box, backupset::BackupSet& set) {
  bool any = false;
  base::Outcome failure;
  for (const Category category : backupset::kPackingOrder) {
    const backupset::CategoryRow& row = backupset::RowOf(category);
    if (row.box != box) continue;
    jobs::SectionResult result = jobs::RunSectionItems(job, row.backupSection, row.archive);
    if (result.kinds > 0) {
      set.categories.insert(category);
      set.archives.push_back(std::move(result.archive));
      any = true;
    } else if (failure.IsDone()) {
      failure = result.outcome;
    }
  }
  return any ? base::Result::Done : failure;
}

base::Outcome PackCategories(const jobs::Job& job, const backupset::Boxes& choice, backupset::BackupSet& set) {
  for (const backupset::BoxRow& row : backupset::kBoxOrder) {
    if (!choice.contains(row.box)) continue;
    if (base::Outcome packed = PackBox(job, row.box, set); !packed.IsDone()) return packed;
  }
  return backupset::Archiver(job.tools, job.workFolder).CollectArchives(set);
}

base::Outcome RecordBackup(app::Records& records, const backupset::Boxes& choice) {
  for (const backupset::BoxRow& row : backupset::kBoxOrder) {
    if (!choice.contains(row.box)) continue;
    base::Outcome recorded = records.RecordCategoryPhase(app::Phase::Start, row.backupRecorded);
    if (!recorded.IsDone()) return {base::Result::StepFailed, app::MessageId::BackupNotRecorded, recorded.cause};
  }
  return base::Result::Done;
}

base::Outcome FinishBackup(app::Application& application, jobs::JobDefinitions& definitions, const BackupJob& job) {
  // The set is whole whether or not its date can be noted.
  static_cast<void>(application.host.qx32.RegSetKeySZ("BackupDate", base::FormatDay(application.host.clock.Now())));
  if (base::Outcome recorded = RecordBackup(application.records, job.choice); !recorded.IsDone()) return recorded;
  application.messages.ShowMessage(app::MessageId::BackupComplete);
  if (!job.deleteLogs) return base::Result::Done;
  const base::Outcome deleted =
      jobs::RunLogDeletion(work::ToolsOf(application), application.paths, definitions, application.state.SystemFolder,
                           job.packed.workFolder.StagingFolder());
  if (!deleted.IsDone()) application.failures.Show({deleted.result, app::MessageId::LogsNotDeleted, deleted.cause});
  return base::Result::Done;
}

}  // namespace

base::Outcome GatherAndPack(app::Application& application, jobs::JobDefinitions& definitions, BackupJob& job) {
  work::WorkFolder& workFolder = job.packed.workFolder;
  base::Outcome step = workFolder.Create(application.host.clock);
  if (!step.IsDone()) return std::move(step).OrSay(app::MessageId::BackupWorkFolderNotMade);
  step = LoadSections(application, definitions, job.choice);
  if (!step.IsDone()) return std::move(step).OrSay(app::MessageId::BackupSectionMissing);
  step = PackCategories(jobs::JobOf(application, definitions, workFolder), job.choice, job.packed.set);
  if (!step.IsDone()) return std::move(step).OrSay(app::MessageId::BackupNotGathered);
  job.packed.BackupSize =
      work::GetFolderSize(work::ToolsOf(application), workFolder.StagingFolder(), workFolder.ProgramFolder());
  return base::Result::Done;
}

base::Outcome RunBackupDriver(app::Application& application, jobs::JobDefinitions& definitions,
                              media::MediaDrives& drives, BackupJob& job) {
  const backupset::WritingMessages& messages = backupset::MessagesOf(app::Operation::Backup);
  if (job.deleteLogs && !application.messages.Consents(app::MessageId::AskDeleteLogs)) {
    return backupset::ReportStopped(application, messages);
  }
  base::Outcome written = backupset::WriteBackupSet(application, drives, job.packed, messages);
  if (written == base::Result::Stopped) return backupset::ReportStopped(application, messages);
  return written.IsDone() ? FinishBackup(application, definitions, job) : written;
}

BackupOperation::BackupOperation(app::Application& application, jobs::JobDefinitions& definitions,
                                 media::MediaDrives& drives, BackupJob& job)
    : WritingOperation(application, drives, job.packed, backupset::MessagesOf(app::Operation::Backup)),
      definitions_(definitions),
      job_(job) {}

std::string BackupOperation::ProposeFolder() {
  const std::string drive = drives_.ProposeMediaDrive();
  return drive + base::FormatLongStamp(application_.host.clock.Now()) + "\\";
}

base::Outcome BackupOperation::Write() {
  base::Outcome outcome = RunBackupDriver(application_, definitions_, drives_, job_);
  done_ = outcome.IsDone();
  return outcome;
}

}  // namespace backup
