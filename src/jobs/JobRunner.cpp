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
  SectionRun(const Job& job, const std::string& section, const std::string& archiveName, work::CopiedFiles* copied)
      : job_(job), section_(section), archiveName_(archiveName), gathering_{{}, copied} {}

  SectionResult RunForBackup() {
    Gather();
    return Concluded(failure_.IsDone() ? Pack(backupset::Incomplete::Fails) : failure_);
  }

  /// A maintenance log is packed even when some of it failed: a part is better than nothing to the
  /// engineer who asks for it.
  SectionResult RunForMaintenance() {
    RunMaintenanceScript(job_, ScriptPhase::BeforeGathering);
    Gather();
    if (!failure_.IsDone()) job_.tools.log.WarnOfLoss("Not all was gathered: " + failure_.cause, section_);
    RunMaintenanceScript(job_, ScriptPhase::BeforePacking);
    base::Outcome packed = Pack(backupset::Incomplete::Warns);
    if (kinds_ == 0 || packed.IsDone()) RunMaintenanceScript(job_, ScriptPhase::AfterPacking);
    return Concluded(std::move(packed));
  }

 private:
  void Gather() {
    const app::Progress::Part part(job_.tools.progress, app::Work::Gathering, section_);
    // In an ordinary backup a batch file only prepares what other kinds then collect.
    Add(RunBatFileItems(job_, section_), job_.maintenance.has_value());
    Add(RunCommonFileItems(job_, section_, gathering_));
    Add(RunEventLogItems(job_, section_));
    Add(RunRegFileItems(job_, section_));
    Add(RunFolderItems(job_, section_, gathering_));
    Add(ApplyPersonalInfoList(job_, section_, result_.PersonalInfoResult));
  }

  void Add(const base::Outcome& kind, bool counts = true) {
    if (kind.IsDone() && counts) ++kinds_;
    if (kind == base::Result::Failed && failure_.IsDone()) failure_ = kind;
  }

  base::Outcome Pack(backupset::Incomplete incomplete) {
    if (kinds_ == 0) return Nothing();
    const backupset::Archiver archiver(job_.tools, job_.workFolder);
    base::Outcome packed = archiver.PackCategory(archiveName_, incomplete, result_.archive);
    return packed == base::Result::Stopped ? Nothing() : packed;
  }

  base::Outcome Nothing() {
    nothing_ = true;
    return base::Failure("nothing was gathered for " + section_);
  }

  SectionResult Concluded(base::Outcome packed) {
    if (packed.IsDone()) return result_;
    // Nothing stays that the next category would take into its own archive. What is in use does stay, and comes into
    // it; there is no other place for it.
    static_cast<void>(work::EmptyFolder(job_.tools, job_.workFolder.StagingFolder(), work::kArchiveFolderName));
    const std::string why = archiveName_ + ".cab was not made: " + packed.cause;
    // Where nothing is to be saved, and nothing went wrong, nothing is lost.
    if (nothing_ && watch_.Warnings() == 0) {
      job_.tools.log.WriteLog(app::LogLevel::Information, why);
    } else {
      job_.tools.log.WarnOfLoss(why, section_);
    }
    return {{}, result_.PersonalInfoResult, base::Failure(why)};
  }

  const Job& job_;
  const std::string& section_;
  const std::string& archiveName_;
  Gathering gathering_;
  const app::Watch watch_{job_.tools.log};
  SectionResult result_;
  bool nothing_ = false;   ///< was gathered
  int kinds_ = 0;          ///< item kinds that produced output
  base::Outcome failure_;  ///< of the first kind that failed
};

}  // namespace

void PlanSection(const Job& job, const std::string& section, const std::string& archiveName) {
  if (job.tools.progress.IsShown()) {
    backupset::PlanPacking(job.tools.progress, archiveName, PlanGathering(job, section));
  }
}

SectionResult RunSectionItems(const Job& job, const std::string& section, const std::string& archiveName,
                              work::CopiedFiles* copied) {
  SectionRun run(job, section, archiveName, copied);
  return job.maintenance ? run.RunForMaintenance() : run.RunForBackup();
}

void RunMaintenanceScript(const Job& job, ScriptPhase phase) {
  const MaintenanceOptions options = job.maintenance.value_or(MaintenanceOptions{});
  work::RunProgram(job.tools,
                   "cscript " + base::Quoted(job.SystemFolder + "Maintenance.js") + " " +
                       std::to_string(static_cast<std::int32_t>(phase)) + " " +
                       base::Quoted(job.workFolder.StagingFolder()) + " " + base::Quoted(job.UserFolder) + " " +
                       std::to_string(options.CollectImages) + " " + std::to_string(options.ImageRangeDays),
                   "maintenance script");
}

}  // namespace jobs
