// A restore: the driver.
#include "restore/mdlBURestore.h"

#include <utility>

#include "backupset/Archiver.h"
#include "backupset/FloppyReader.h"
#include "backupset/Pieces.h"
#include "restore/RestoreActions.h"
#include "restore/frmRestore.h"
#include "work/FileOperations.h"

namespace restore {
namespace {

using backupset::Category;

class RestoreRun {
 public:
  RestoreRun(app::Application& application, jobs::JobDefinitions& definitions, media::MediaDrives& drives,
             const RestoreJob& job)
      : application_(application),
        definitions_(definitions),
        drives_(drives),
        job_(job),
        tools_(work::ToolsOf(application)),
        archiver_(tools_, job.workFolder) {}

  base::Outcome Run() {
    const bool floppies = backupset::IsOnFloppies(job_.set.folder);
    if (floppies) {
      base::Outcome gathered = backupset::GatherSplitArchive(application_, drives_, job_.set, job_.workFolder);
      if (!gathered.IsDone()) return gathered;
    }
    const std::string& folder = floppies ? job_.workFolder.StagingFolder() : job_.set.folder;
    for (const Category category : backupset::kRestoreOrder) {
      if (!MayRestore(category)) continue;
      base::Outcome restored = RestoreCategory(backupset::RowOf(category), folder, !floppies);
      if (!restored.IsDone()) return restored;
    }
    return WriteAuditRecords();
  }

 private:
  bool MayRestore(Category category) const {
    if (!job_.choice.contains(category)) return false;
    return category != Category::IPCounter || application_.state.UserRight == app::Right::Privileged;
  }

  base::Outcome FailStep(app::MessageId message, const base::Outcome& why) const {
    return {base::Result::StepFailed, message, why.cause};
  }

  /// `copyFirst`: the archive is copied from `folder` into the work folder before it is unpacked.
  base::Outcome RestoreCategory(const backupset::CategoryRow& row, const std::string& folder, bool copyFirst) {
    const app::State& state = application_.state;
    const app::Watch watch(tools_.log);
    const base::Outcome loaded =
        definitions_.Load(tools_, state.SystemFolder, jobs::kJobDefinitionFile, row.restoreSection);
    if (!loaded.IsDone()) return FailStep(app::MessageId::RestoreSectionMissing, loaded);
    base::Outcome extracted = archiver_.ExtractArchive(folder + row.archive, copyFirst);
    if (extracted == base::Result::StepFailed) return FailStep(app::MessageId::ArchiveNotUnpacked, extracted);
    if (!extracted.IsDone()) return extracted;
    const Putting putting{tools_, application_.paths, definitions_, job_.workFolder, state.ApplicationRootFolder};
    for (const auto action : {RestoreCommonFiles, RunBatchFiles, RestoreFolders}) {
      const base::Outcome done = action(putting, row.restoreSection);
      if (!done.IsDone()) return {base::Result::StepFailed, done.cause};
    }
    tools_.log.WriteLog(app::LogLevel::Information, std::string("Restored ") + row.versionKey + "; " + watch.Summary());
    return base::Result::Done;
  }

  base::Outcome WriteAuditRecords() {
    for (const Category category : backupset::kRestoreOrder) {
      const auto target = backupset::RowOf(category).restoreRecorded;
      if (!MayRestore(category) || !target) continue;
      const base::Outcome recorded = application_.records.RecordCategoryPhase(app::Phase::End, *target);
      if (!recorded.IsDone()) return FailStep(app::MessageId::RestoreNotRecorded, recorded);
    }
    return base::Result::Done;
  }

  app::Application& application_;
  jobs::JobDefinitions& definitions_;
  media::MediaDrives& drives_;
  const RestoreJob& job_;
  work::Tools tools_;
  backupset::Archiver archiver_;
};

}  // namespace

RestoreJob::RestoreJob(app::Application& application, const app::Watch& sinceInspection, backupset::BackupSet inspected,
                       backupset::Categories ticked)
    : set(std::move(inspected)),
      choice(std::move(ticked)),
      workFolder(application.host.files, application.state.StartupDirectory),
      watch(sinceInspection.WithNewTime()) {}

base::Outcome RunRestore(app::Application& application, jobs::JobDefinitions& definitions, media::MediaDrives& drives,
                         RestoreJob& job) {
  base::Outcome outcome = RestoreRun(application, definitions, drives, job).Run();
  RemoveWorkFolderOrSay(application.failures, job.workFolder);
  application.toolkit.SetPointer(forms::Pointer::Default);
  return outcome;
}

void ReportRestored(app::Application& application, const RestoreJob& job) {
  application.log.WriteLog(app::LogLevel::Information, "Restored from " + job.set.folder + "; " + job.watch.Summary());
  application.messages.TellWarnings(app::MessageId::RestoreWarnings, job.watch.Warnings());
  application.messages.ShowMessage(app::MessageId::RestoreComplete);
}

void RemoveWorkFolderOrSay(app::Failures& failures, work::WorkFolder& workFolder) {
  const base::Outcome removed = workFolder.Remove();
  if (!removed.IsDone()) failures.Show(removed, app::MessageId::RestoreWorkFolderNotRemoved);
}

base::Outcome RestoreOperation::Run() {
  base::Outcome checked = drives_.CheckSourceDrive(application_.state.SelectedFolder);
  if (!checked.IsDone()) return checked;
  frmRestore dialog(application_, definitions_, drives_);
  dialog.Load();
  if (dialog.IsAccepted()) {
    dialog.ShowModal();
  } else {
    dialog.Unload();
  }
  return dialog.IsRestored() ? base::Result::Done : base::Result::Stopped;
}

}  // namespace restore
