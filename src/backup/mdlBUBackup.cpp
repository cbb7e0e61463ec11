// An ordinary backup: gathering, packing, and the driver.
#include "backup/mdlBUBackup.h"

#include <utility>

#include "backupset/Archiver.h"
#include "jobs/ClientLogs.h"
#include "jobs/JobRunner.h"

namespace backup {
namespace {

using backupset::Category;

base::Outcome LoadSections(app::Application& application, jobs::JobDefinitions& definitions, BackupJob& job) {
  const work::Tools tools = work::ToolsOf(application);
  const app::State& state = application.state;
  if (job.choice.contains(backupset::Box::Log)) {
    const app::Watch watch(application.log);
    // Logs of this workstation are saved also where those of others cannot be had.
    static_cast<void>(jobs::ImportClientLogs(tools, application.paths, application.host.qx32, state.StartupDirectory));
    job.logWarnings += watch.Warnings();
  }
  for (const Category category : backupset::kPackingOrder) {
    const backupset::CategoryRow& row = backupset::RowOf(category);
    if (!job.choice.contains(row.box)) continue;
    base::Outcome loaded = definitions.Load(tools, state.SystemFolder, jobs::kJobDefinitionFile, row.backupSection);
    if (!loaded.IsDone()) return loaded;
  }
  return base::Result::Done;
}

/// Packs all categories behind one check box; fails when none has made an archive. `copied`, where it is given, learns
/// which files were copied.
base::Outcome PackBox(const jobs::Job& job, backupset::Box box, work::CopiedFiles* copied, backupset::BackupSet& set) {
  bool any = false;
  base::Outcome failure;
  for (const Category category : backupset::kPackingOrder) {
    const backupset::CategoryRow& row = backupset::RowOf(category);
    if (row.box != box) continue;
    jobs::SectionResult result = jobs::RunSectionItems(job, row.backupSection, row.archive, copied);
    if (result.outcome.IsDone()) {
      set.categories.insert(category);
      set.archives.push_back(std::move(result.archive));
      any = true;
    } else if (failure.IsDone()) {
      failure = result.outcome;
    }
  }
  return any ? base::Result::Done : failure;
}

void PlanCategories(const jobs::Job& gathering, const backupset::Boxes& choice) {
  for (const Category category : backupset::kPackingOrder) {
    const backupset::CategoryRow& row = backupset::RowOf(category);
    if (choice.contains(row.box)) jobs::PlanSection(gathering, row.backupSection, row.archive);
  }
}

base::Outcome PackCategories(const jobs::Job& gathering, BackupJob& job) {
  for (const backupset::BoxRow& row : backupset::kBoxOrder) {
    if (!job.choice.contains(row.box)) continue;
    const bool logs = row.box == backupset::Box::Log;
    const app::Watch watch(gathering.tools.log);
    base::Outcome packed = PackBox(gathering, row.box, logs ? &job.savedLogs.copied : nullptr, job.packed.set);
    if (!packed.IsDone()) return packed;
    if (logs) job.logWarnings += watch.Warnings();
  }
  return backupset::Archiver(gathering.tools, gathering.workFolder).CollectArchives(job.packed.set);
}

base::Outcome RecordBackup(app::Records& records, const backupset::Boxes& choice) {
  for (const backupset::BoxRow& row : backupset::kBoxOrder) {
    if (!choice.contains(row.box)) continue;
    base::Outcome recorded = records.RecordCategoryPhase(app::Phase::Start, row.backupRecorded);
    if (!recorded.IsDone()) return {base::Result::StepFailed, app::MessageId::BackupNotRecorded, recorded.cause};
  }
  return base::Result::Done;
}

base::Outcome DeleteLogs(app::Application& application, jobs::JobDefinitions& definitions, const BackupJob& job) {
  if (job.logWarnings > 0) {
    return base::Failure("no log was deleted: saving them has left " + std::to_string(job.logWarnings) + " warnings");
  }
  return jobs::RunLogDeletion(work::ToolsOf(application), application.paths, definitions, job.savedLogs,
                              application.state.SystemFolder, job.packed.workFolder.StagingFolder());
}

base::Outcome FinishBackup(app::Application& application, jobs::JobDefinitions& definitions, const BackupJob& job) {
  base::Outcome noted = application.host.qx32.RegSetKeySZ("BackupDate", base::FormatDay(application.host.clock.Now()));
  // The set is whole whether or not its date can be noted.
  if (!noted.IsDone()) application.log.WriteLog(app::LogLevel::Exclamation, "Date not noted: " + noted.cause);
  if (base::Outcome recorded = RecordBackup(application.records, job.choice); !recorded.IsDone()) return recorded;
  backupset::ReportWritten(application, backupset::MessagesOf(app::Operation::Backup), job.packed.set, job.watch);
  if (!job.deleteLogs) return base::Result::Done;
  const base::Outcome deleted = DeleteLogs(application, definitions, job);
  if (!deleted.IsDone()) application.failures.Show({deleted.result, app::MessageId::LogsNotDeleted, deleted.cause});
  return base::Result::Done;
}

}  // namespace

BackupJob::BackupJob(app::Application& application, backupset::Boxes ticked)
    : choice(std::move(ticked)),
      packed{{application.host.files, application.host.qx32, application.state.StartupDirectory}, {}, 0},
      watch(application.log) {}

base::Outcome GatherAndPack(app::Application& application, jobs::JobDefinitions& definitions, BackupJob& job) {
  work::WorkFolder& workFolder = job.packed.workFolder;
  base::Outcome step = workFolder.Create(application.host.clock, application.host.messageLoop);
  if (!step.IsDone()) return std::move(step).OrSay(app::MessageId::BackupWorkFolderNotMade);
  job.savedLogs.gatheredAt = workFolder.MadeAt();
  job.savedLogs.own = {application.log.FilePath(), application.pastJobs.FilePath()};
  step = LoadSections(application, definitions, job);
  if (!step.IsDone()) return std::move(step).OrSay(app::MessageId::BackupSectionMissing);
  const jobs::Job gathering = jobs::JobOf(application, definitions, workFolder);
  PlanCategories(gathering, job.choice);
  step = PackCategories(gathering, job);
  if (!step.IsDone()) return std::move(step).OrSay(app::MessageId::BackupNotGathered);
  backupset::Measure(work::ToolsOf(application), backupset::MessagesOf(app::Operation::Backup), job.watch, job.packed);
  return base::Result::Done;
}

base::Outcome RunBackupDriver(app::Application& application, jobs::JobDefinitions& definitions,
                              media::MediaDrives& drives, BackupJob& job) {
  const backupset::WritingMessages& messages = backupset::MessagesOf(app::Operation::Backup);
  if (job.deleteLogs && !application.messages.Prompt(app::MessageId::AskDeleteLogs)) {
    return backupset::ReportStopped(application, messages, app::Declined(app::MessageId::AskDeleteLogs));
  }
  base::Outcome written = backupset::WriteBackupSet(application, drives, job.packed, messages);
  if (written == base::Result::Stopped) return backupset::ReportStopped(application, messages, written);
  return written.IsDone() ? FinishBackup(application, definitions, job) : written;
}

BackupOperation::BackupOperation(app::Application& application, jobs::JobDefinitions& definitions,
                                 media::MediaDrives& drives, BackupJob& job)
    : WritingOperation(application, drives, job.packed, backupset::MessagesOf(app::Operation::Backup), job.watch),
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
