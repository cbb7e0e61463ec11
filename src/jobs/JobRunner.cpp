// Runs one section of the job-definition file and packs what it gathers.
#include "jobs/JobRunner.h"

#include "backupset/Archiver.h"
#include "base/Text.h"
#include "jobs/PersonalInfo.h"
#include "work/FileOperations.h"

namespace jobs {
namespace {

class SectionRun {
 public:
  SectionRun(const Job& job, const std::string& section, const std::string& archiveName)
      : job_(job), section_(section), archiveName_(archiveName) {}

  SectionResult RunForBackup() {
    Gather(false);
    const base::Outcome packed = failure_.IsDone() ? Pack() : failure_;
    return packed.IsDone() ? result_ : NoArchive(packed);
  }

  /// A maintenance log is packed even when some of it failed: a part is better than nothing to the
  /// engineer who asks for it.
  SectionResult RunForMaintenance() {
    RunMaintenanceScript(job_, ScriptPhase::BeforeGathering);
    Gather(true);
    RunMaintenanceScript(job_, ScriptPhase::BeforePacking);
    result_.outcome = Pack();
    if (result_.kinds > 0 && !result_.outcome.IsDone()) return NoArchive(result_.outcome);
    RunMaintenanceScript(job_, ScriptPhase::AfterPacking);
    return result_;
  }

 private:
  /// `batchFilesCount`: in an ordinary backup a batch file only prepares what other kinds then collect.
  void Gather(bool batchFilesCount) {
    Add(RunBatFileItems(job_, section_), batchFilesCount);
    Add(RunCommonFileItems(job_, section_));
    Add(RunEventLogItems(job_, section_));
    Add(RunRegFileItems(job_, section_));
    Add(RunFolderItems(job_, section_));
    Add(ApplyPersonalInfoList(job_, section_, result_.PersonalInfoResult));
  }

  void Add(const base::Outcome& kind, bool counts = true) {
    if (kind.IsDone() && counts) ++result_.kinds;
    if (kind == base::Result::Failed && failure_.IsDone()) failure_ = kind;
  }

  base::Outcome Pack() {
    if (result_.kinds == 0) return base::Failure("nothing was gathered for " + section_);
    const backupset::Archiver archiver(job_.tools, job_.workFolder);
    base::Outcome packed = archiver.PackCategory(archiveName_, result_.archive);
    return packed == base::Result::Stopped ? base::Failure("nothing to pack") : packed;
  }

  /// Leaves nothing behind that the next category would take into its own archive.
  SectionResult NoArchive(const base::Outcome& why) {
    // What is in use stays, and comes into the next category's archive; there is no other place for it.
    static_cast<void>(work::EmptyFolder(job_.tools, job_.workFolder.StagingFolder(), work::kArchiveFolderName));
    job_.tools.log.WarnOfLoss("No archive made: " + archiveName_ + ".cab", section_);
    return {0, {}, result_.PersonalInfoResult, base::Failure(archiveName_ + ".cab: " + why.cause)};
  }

  const Job& job_;
  const std::string& section_;
  const std::string& archiveName_;
  SectionResult result_;
  base::Outcome failure_;  ///< of the first kind that failed
};

}  // namespace

SectionResult RunSectionItems(const Job& job, const std::string& section, const std::string& archiveName) {
  SectionRun run(job, section, archiveName);
  return job.maintenance ? run.RunForMaintenance() : run.RunForBackup();
}

void RunMaintenanceScript(const Job& job, ScriptPhase phase) {
  const MaintenanceOptions options = job.maintenance.value_or(MaintenanceOptions{});
  work::RunAndWait(job.tools.processes, "cscript " + base::Quoted(job.SystemFolder + "Maintenance.js") + " " +
                                            std::to_string(static_cast<std::int32_t>(phase)) + " " +
                                            base::Quoted(job.workFolder.StagingFolder()) + " " +
                                            base::Quoted(job.UserFolder) + " " + std::to_string(options.CollectImages) +
                                            " " + std::to_string(options.ImageRangeDays));
}

}  // namespace jobs
