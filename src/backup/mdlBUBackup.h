// An ordinary backup: gathering and packing what the operator has ticked, and the driver that writes it.
#pragma once

#include "app/Application.h"
#include "backupset/SetWriter.h"
#include "jobs/JobDefinitions.h"
#include "jobs/LogDeletion.h"
#include "media/MediaDrives.h"

namespace backup {

/// Lives from the press of the start button until the selection dialog has gone.
struct BackupJob {
  BackupJob(app::Application& application, backupset::Boxes ticked);

  backupset::Boxes choice;
  bool deleteLogs = false;  ///< delete the host's logs after the backup
  backupset::PackedSet packed;
  jobs::SavedLogs savedLogs;
  std::size_t logWarnings = 0;  ///< that the logs have met: while there are any, no log is deleted
  app::Watch watch;             ///< of the whole job
};

/// Makes the work folder, loads the sections of the chosen categories, gathers and packs them, and measures the set.
/// Client logs are imported first where logs are chosen, whatever comes of that. Fails with message 60360 without a
/// work folder, with 60370 for the first section that is missing, and with 60371 when a chosen category yields no
/// archive; the system group fails only when none of its five does.
base::Outcome GatherAndPack(app::Application& application, jobs::JobDefinitions& definitions, BackupJob& job);

/// The driver: asks about the deletion of logs, writes the set, records the backup, says so, and deletes the logs, if
/// they were saved without a warning (message 60390 otherwise).
/// Done, Stopped (already shown), or a failure, perhaps with a message.
base::Outcome RunBackupDriver(app::Application& application, jobs::JobDefinitions& definitions,
                              media::MediaDrives& drives, BackupJob& job);

/// The backup, as the selection dialog sees it.
class BackupOperation : public backupset::WritingOperation {
 public:
  BackupOperation(app::Application& application, jobs::JobDefinitions& definitions, media::MediaDrives& drives,
                  BackupJob& job);

  /// A new folder on the media drive, named after this second.
  std::string ProposeFolder() override;

  /// Whether the last try has written the set.
  bool IsDone() const { return done_; }

 protected:
  base::Outcome Write() override;

 private:
  jobs::JobDefinitions& definitions_;
  BackupJob& job_;
  bool done_ = false;
};

}  // namespace backup
