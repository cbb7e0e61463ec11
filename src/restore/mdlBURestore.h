// A restore: the driver that brings the archives in, unpacks each category and puts it back.
#pragma once

#include <string>
#include <utility>

#include "app/Application.h"
#include "backupset/BackupSet.h"
#include "jobs/JobDefinitions.h"
#include "media/MediaDrives.h"
#include "media/SelectionOperation.h"
#include "work/WorkFolder.h"

namespace restore {

/// Lives from the press of the start button until its outcome was told.
struct RestoreJob {
  RestoreJob(app::Application& application, const app::Watch& sinceInspection, backupset::BackupSet inspected,
             backupset::Categories ticked);

  backupset::BackupSet set;      ///< as it was inspected
  backupset::Categories choice;  ///< ticked by the operator
  work::WorkFolder workFolder;
  app::Watch watch;  ///< its warnings since the set was inspected: what could not be read then is not restored
};

/// Restores the chosen categories of the set, in their order, through a work folder that exists already and is gone
/// afterwards, whatever happens. A set on drive A is a pile of floppies; one on any other drive, "a" included, is a
/// folder or one medium. Stopped when the operator stopped the gathering; Failed when gathering or unpacking failed;
/// StepFailed when a job or an audit record did. What was restored before a failure stays restored.
base::Outcome RunRestore(app::Application& application, jobs::JobDefinitions& definitions, media::MediaDrives& drives,
                         RestoreJob& job);

/// Tells, in the log and by message 61401 where the catalogue has it, that an earlier restore was interrupted: the host
/// may hold half of a set.
void TellInterruptedRestore(app::Application& application);

/// Lists a restore that ends with this result and message among the past jobs.
void ListRestore(app::Application& application, const RestoreJob& job, const base::Outcome& end);

/// Lists it, and tells that the restore has ended, after a message with the number of warnings, when it has left any.
void ReportRestored(app::Application& application, const RestoreJob& job);

/// Removes the work folder, if it is there; message 60411 when that fails.
void RemoveWorkFolderOrSay(app::Failures& failures, work::WorkFolder& workFolder);

/// Restoring, as the selection dialog serves it.
class RestoreOperation : public media::SelectionOperation {
 public:
  RestoreOperation(app::Application& application, jobs::JobDefinitions& definitions, media::MediaDrives& drives)
      : application_(application), definitions_(definitions), drives_(drives) {}

  std::string ProposeFolder() override { return drives_.ProposeMediaDrive(); }
  std::optional<std::uint64_t> SpaceNeeded() const override { return std::nullopt; }
  /// Checks the drive, then shows the restore dialog for the set in `SelectedFolder`. Done when a
  /// restore has fully succeeded; everything else was said and is Stopped.
  base::Outcome Run() override;
  /// The newest set on the medium that fits this system, unless a set is chosen already.
  std::string BrowseFrom(const std::string& shown) override;
  /// The same, after a folder without a set was refused.
  std::string MeantFolder() override { return std::exchange(meant_, {}); }
  /// A restore clears its own work folder away.
  void Unloaded() override {}

 private:
  std::string NewestSetIn(const std::string& folder);

  app::Application& application_;
  jobs::JobDefinitions& definitions_;
  media::MediaDrives& drives_;
  std::string meant_;
};

}  // namespace restore
