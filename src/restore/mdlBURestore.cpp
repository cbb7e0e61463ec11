// A restore: the driver.
#include "restore/mdlBURestore.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "app/Finish.h"
#include "backupset/Archiver.h"
#include "backupset/Descriptor.h"
#include "backupset/EndedJob.h"
#include "backupset/FloppyReader.h"
#include "backupset/Pieces.h"
#include "backupset/SetSearch.h"
#include "base/Path.h"
#include "base/Text.h"
#include "restore/Foresight.h"
#include "restore/RestoreActions.h"
#include "restore/frmRestore.h"
#include "work/FileOperations.h"

namespace restore {
namespace {

using backupset::Category;

/// The folder of the set that is being put back; empty while none is.
constexpr char kRunning[] = "BackupUtility\\RestoreRunning";

/// Stands in the host's registry from before the first replacement until the restore has ended in any way that was
/// told.
class InterruptionMark {
 public:
  InterruptionMark(host::QX32& registry, app::OperationLog& log, const std::string& folder) : registry_(registry) {
    const base::Outcome set = registry_.RegSetKeySZ(kRunning, folder);
    if (!set.IsDone()) log.WriteLog(app::LogLevel::Exclamation, "Restore not marked as running: " + set.cause);
  }
  ~InterruptionMark() { static_cast<void>(registry_.RegSetKeySZ(kRunning, {})); }
  InterruptionMark(const InterruptionMark&) = delete;
  InterruptionMark& operator=(const InterruptionMark&) = delete;

 private:
  host::QX32& registry_;
};

class RestoreRun {
 public:
  RestoreRun(app::Application& application, jobs::JobDefinitions& definitions, media::MediaDrives& drives,
             RestoreJob& job)
      : application_(application),
        definitions_(definitions),
        drives_(drives),
        job_(job),
        tools_(work::ToolsOf(application)),
        archiver_(tools_, job.workFolder) {}

  base::Outcome Run() {
    const bool floppies = backupset::IsOnFloppies(job_.set.folder);
    base::Outcome step =
        floppies ? backupset::GatherSplitArchive(application_, drives_, job_.set, job_.workFolder) : InspectAgain();
    if (!step.IsDone()) return step;
    const std::string& folder = floppies ? job_.workFolder.StagingFolder() : job_.set.folder;
    if (base::Outcome ready = LookAhead(folder, !floppies); !ready.IsDone()) return ready;
    const InterruptionMark mark(application_.host.qx32, application_.log, job_.set.folder);
    for (const Category category : Chosen()) {
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

  std::vector<Category> Chosen() const {
    std::vector<Category> chosen;
    std::ranges::copy_if(backupset::kRestoreOrder, std::back_inserter(chosen),
                         [this](Category category) { return MayRestore(category); });
    return chosen;
  }

  /// The medium may have been changed while the dialog was shown. Floppies are held against the inspected set one by
  /// one.
  base::Outcome InspectAgain() const {
    backupset::Inspection now;
    base::Outcome inspected = backupset::InspectBackupSet(
        tools_, backupset::IdentityOf(application_.state, application_.appearance), job_.set.folder, now);
    if (!inspected.IsDone()) return inspected;
    const bool same = now.set.appVersion == job_.set.appVersion && now.set.date == job_.set.date &&
                      now.set.versions == job_.set.versions;
    return same ? base::Outcome() : base::Failure(job_.set.folder + " holds another set than the one that was shown");
  }

  /// Nothing is replaced unless all of it can be.
  base::Outcome LookAhead(const std::string& folder, bool copied) {
    const app::State& state = application_.state;
    std::vector<ArchiveAhead> archives;
    base::Outcome step = WalkArchives(tools_, folder, copied, Chosen(), archives);
    if (!step.IsDone()) return step;
    for (const ArchiveAhead& archive : archives) {
      job_.set.archives.push_back({base::FileNameOf(archive.path), archive.size, archive.members.size()});
      // A section that is missing is told when its turn comes.
      static_cast<void>(definitions_.Load(tools_, state.SystemFolder, jobs::kJobDefinitionFile,
                                          backupset::RowOf(archive.category).restoreSection));
    }
    step = CheckRoom(PuttingOf(), application_.host.drives, archives, copied);
    if (!step.IsDone()) return step;
    tools_.log.WriteLog(app::LogLevel::Information, "Archives are whole: " + std::to_string(archives.size()));
    return base::Result::Done;
  }

  Putting PuttingOf() const {
    return {tools_, application_.paths, definitions_, job_.workFolder, application_.state.ApplicationRootFolder};
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
    const Putting putting = PuttingOf();
    const app::Progress::Part part(tools_.progress, app::Work::PuttingBack, row.restoreSection);
    for (const auto action : {RestoreCommonFiles, RunBatchFiles, RestoreFolders}) {
      const base::Outcome done = action(putting, row.restoreSection);
      if (!done.IsDone()) return {base::Result::StepFailed, done.cause};
    }
    tools_.log.WriteLog(app::LogLevel::Information, std::string("Restored ") + row.versionKey + "; " + watch.Summary());
    return base::Result::Done;
  }

  base::Outcome WriteAuditRecords() {
    for (const Category category : Chosen()) {
      const auto target = backupset::RowOf(category).restoreRecorded;
      if (!target) continue;
      const base::Outcome recorded = application_.records.RecordCategoryPhase(app::Phase::End, *target);
      if (!recorded.IsDone()) return FailStep(app::MessageId::RestoreNotRecorded, recorded);
    }
    return base::Result::Done;
  }

  app::Application& application_;
  jobs::JobDefinitions& definitions_;
  media::MediaDrives& drives_;
  RestoreJob& job_;
  work::Tools tools_;
  backupset::Archiver archiver_;
};

}  // namespace

RestoreJob::RestoreJob(app::Application& application, const app::Watch& sinceInspection, backupset::BackupSet inspected,
                       backupset::Categories ticked)
    : set(std::move(inspected)),
      choice(std::move(ticked)),
      workFolder(application.host.files, application.host.qx32, application.state.StartupDirectory),
      watch(sinceInspection.WithNewTime()) {}

base::Outcome RunRestore(app::Application& application, jobs::JobDefinitions& definitions, media::MediaDrives& drives,
                         RestoreJob& job) {
  const auto running = app::KeepRunning(application);
  job.set.archives.clear();
  base::Outcome outcome = RestoreRun(application, definitions, drives, job).Run();
  RemoveWorkFolderOrSay(application.failures, job.workFolder);
  application.toolkit.SetPointer(forms::Pointer::Default);
  return outcome;
}

void TellInterruptedRestore(app::Application& application) {
  std::string folder;
  if (!application.host.qx32.RegGetKeySZ(kRunning, folder).IsDone()) return;
  folder = base::CutAtNul(folder);
  if (folder.empty()) return;
  application.log.WriteLog(app::LogLevel::Warning, "A restore did not end: " + folder);
  if (application.messages.IsDefined(app::MessageId::RestoreInterrupted)) {
    application.messages.ShowMessage(app::MessageId::RestoreInterrupted, folder);
  }
  static_cast<void>(application.host.qx32.RegSetKeySZ(kRunning, {}));  // it would only be told again
}

void ListRestore(app::Application& application, const RestoreJob& job, const base::Outcome& end) {
  backupset::ListEndedJob(application, app::JobKind::Restore, job.set.folder, job.set, job.choice, job.watch, end);
}

void ReportRestored(app::Application& application, const RestoreJob& job) {
  application.log.WriteLog(app::LogLevel::Information, "Restored from " + job.set.folder + "; " + job.watch.Summary());
  application.progress.Complete();
  ListRestore(application, job, {base::Result::Done, app::MessageId::RestoreComplete});
  application.messages.TellWarnings(app::MessageId::RestoreWarnings, job.watch.Warnings());
  application.messages.ShowMessage(app::MessageId::RestoreComplete);
}

void RemoveWorkFolderOrSay(app::Failures& failures, work::WorkFolder& workFolder) {
  const base::Outcome removed = workFolder.Remove();
  if (!removed.IsDone()) failures.Show(removed, app::MessageId::RestoreWorkFolderNotRemoved);
}

/// Empty where the folder is a set itself, or none is found below it.
std::string RestoreOperation::NewestSetIn(const std::string& folder) {
  if (application_.host.files.FileExists(folder + backupset::kDescriptorFile)) return {};
  application_.toolkit.SetPointer(forms::Pointer::Hourglass);
  const std::string found = backupset::FindNewestSet(
      work::ToolsOf(application_), backupset::IdentityOf(application_.state, application_.appearance), folder);
  application_.toolkit.SetPointer(forms::Pointer::Default);
  if (!found.empty()) application_.log.WriteLog(app::LogLevel::Information, "Newest set found: " + found);
  return found;
}

std::string RestoreOperation::BrowseFrom(const std::string& shown) {
  const std::string found = NewestSetIn(base::WithTrailingBackslash(base::Trim(shown)));
  return found.empty() ? shown : found;
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
    meant_ = NewestSetIn(application_.state.SelectedFolder);
  }
  return dialog.IsRestored() ? base::Result::Done : base::Result::Stopped;
}

}  // namespace restore
