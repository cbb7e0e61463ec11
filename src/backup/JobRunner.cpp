// Runs one section of the job-definition file and packs what it gathers.
#include "backup/JobRunner.h"

#include "backup/FileOperations.h"
#include "backup/JobItems.h"
#include "backup/Packing.h"
#include "backup/Programs.h"
#include "backup/StagingFolder.h"

namespace backup {
namespace {

struct Gathered {
  int kinds = 0;  ///< item kinds that produced output
  bool failed = false;

  void Add(app::ResultCode result, bool counts = true) {
    if (result == app::kDone && counts) ++kinds;
    if (result == app::kFailed) failed = true;
  }
};

/// `batchFilesCount`: in an ordinary backup a batch file only prepares what other kinds then collect.
Gathered Gather(const JobContext& job, const std::string& section, bool batchFilesCount) {
  Gathered gathered;
  gathered.Add(RunBatFileItems(job, section), batchFilesCount);
  gathered.Add(RunCommonFileItems(job, section));
  gathered.Add(RunEventLogItems(job, section));
  gathered.Add(RunRegFileItems(job, section));
  gathered.Add(RunFolderItems(job, section));
  gathered.Add(job.collectors.ApplyPersonalInfoList(section));
  return gathered;
}

/// Leaves nothing behind that the next category would take into its own archive.
int NoArchive(const JobContext& job, const std::string& section, const std::string& archiveName) {
  EmptyFolder(job.application, job.application.state.StagingFolder, kArchiveFolderName);
  WarnOfLoss(job.application, "No archive made: " + archiveName + ".cab", section);
  return 0;
}

int RunBackupSection(const JobContext& job, const std::string& section, const std::string& archiveName) {
  const Gathered gathered = Gather(job, section, false);
  if (gathered.failed || gathered.kinds == 0 || PackCategory(job.application, archiveName) != app::kDone) {
    return NoArchive(job, section, archiveName);
  }
  return gathered.kinds;
}

/// A maintenance log is packed even when some of it failed: a part is better than nothing to the
/// engineer who asks for it.
int RunMaintenanceSection(const JobContext& job, const std::string& section, const std::string& archiveName) {
  job.collectors.RunMaintenanceScript(ScriptPhase::BeforeGathering);
  const Gathered gathered = Gather(job, section, true);
  job.collectors.RunMaintenanceScript(ScriptPhase::BeforePacking);
  if (gathered.kinds > 0 && PackCategory(job.application, archiveName) != app::kDone) {
    return NoArchive(job, section, archiveName);
  }
  job.collectors.RunMaintenanceScript(ScriptPhase::AfterPacking);
  return gathered.kinds;
}

}  // namespace

int RunSectionItems(const JobContext& job, const std::string& section, const std::string& archiveName) {
  const bool maintenance = job.application.state.CurrentOperation == app::Operation::MaintenanceLogBackup;
  return maintenance ? RunMaintenanceSection(job, section, archiveName) : RunBackupSection(job, section, archiveName);
}

}  // namespace backup
