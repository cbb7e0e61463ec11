// The message numbers in which an ordinary backup and a maintenance log backup differ.
#include "backupset/WritingMessages.h"

#include <utility>

namespace backupset {
namespace {

using enum base::MessageId;

constexpr WritingMessages kBackup{.job = "Backup",
                                  .kind = app::JobKind::Backup,
                                  .medium = {BackupDriveError, BackupDriveUnusable, AskInsertBackupMedium},
                                  .prepareMedium = AskPrepareBackupMedium,
                                  .formatFailed = BackupFormatFailed,
                                  .formatCancelled = BackupFormatCancelled,
                                  .unusableFloppy = BackupFloppyUnusable,
                                  .changeDisk = AskNextBackupDisk,
                                  .labelFailed = BackupLabelFailed,
                                  .noSpace = BackupSpaceTooSmall,
                                  .foreignLabel = AskForeignLabel,
                                  .createFolder = AskMakeBackupFolder,
                                  .folderNotCreated = BackupFolderNotMade,
                                  .overwrite = AskOverwriteBackup,
                                  .descriptorFailed = DescriptorNotMade,
                                  .warnings = BackupWarnings,
                                  .finished = BackupComplete,
                                  .stopped = BackupStopped,
                                  .failed = BackupNotWritten,
                                  .stepFailed = BackupCopyFailed};

// The question about a foreign label and the failed descriptor have no number of their own here.
constexpr WritingMessages kMaintenance{
    .job = "Maintenance log",
    .kind = app::JobKind::MaintenanceLog,
    .medium = {MaintenanceDriveError, MaintenanceDriveUnusable, AskInsertMaintenanceMedium},
    .prepareMedium = AskPrepareMaintenanceMedium,
    .formatFailed = MaintenanceFormatFailed,
    .formatCancelled = MaintenanceFormatCancelled,
    .unusableFloppy = MaintenanceFloppyUnusable,
    .changeDisk = AskNextMaintenanceDisk,
    .labelFailed = MaintenanceLabelFailed,
    .noSpace = MaintenanceSpaceTooSmall,
    .foreignLabel = AskForeignLabel,
    .createFolder = AskMakeMaintenanceFolder,
    .folderNotCreated = MaintenanceFolderNotMade,
    .overwrite = AskOverwriteMaintenance,
    .descriptorFailed = DescriptorNotMade,
    .warnings = MaintenanceWarnings,
    .finished = MaintenanceComplete,
    .stopped = MaintenanceStopped,
    .failed = MaintenanceLogNotWritten,
    .stepFailed = MaintenanceCopyFailed};

}  // namespace

const WritingMessages& MessagesOf(app::Operation operation) {
  return operation == app::Operation::MaintenanceLogBackup ? kMaintenance : kBackup;
}

base::Outcome WithDefaultMessage(base::Outcome outcome, const WritingMessages& messages) {
  const bool stepFailed = outcome == base::Result::StepFailed;
  return std::move(outcome).OrSay(stepFailed ? messages.stepFailed : messages.failed);
}

}  // namespace backupset
