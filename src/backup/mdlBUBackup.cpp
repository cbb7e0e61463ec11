// The backup driver: writes what was gathered to the chosen destination and reports the result.
#include "backup/mdlBUBackup.h"

#include "app/Messages.h"
#include "app/TextFormat.h"
#include "app/WindowsPath.h"
#include "backup/Descriptor.h"
#include "backup/DestinationCopy.h"
#include "backup/FileOperations.h"
#include "backup/FloppyFormat.h"
#include "backup/FloppyWriter.h"
#include "backup/LogDeletion.h"
#include "backup/StagingFolder.h"
#include "media/Question.h"

namespace backup {
namespace {

constexpr std::int32_t kAskToDeleteLogs = 64304;
constexpr std::int32_t kLogsNotDeleted = 60390;
constexpr std::int32_t kAuditRefused = 60510;

app::ResultCode FinishBackup(const JobContext& job, const CategoryChoice& choice) {
  app::Application& application = job.application;
  application.host.qx32.RegSetKeySZ("BackupDate", app::FormatDay(application.host.clock.Now()));
  if (RecordBackup(application, choice) != app::kDone) {
    application.state.PendingMessageId = kAuditRefused;
    return app::kStepFailed;
  }
  app::ShowMessage(application, MessagesOf(app::Operation::Backup).finished);
  if (application.state.DeleteLogs && RunLogDeletion(job) != app::kDone) {
    app::ShowMessage(application, kLogsNotDeleted);
  }
  return app::kDone;
}

}  // namespace

bool GoesToFloppies(const app::Application& application) {
  return app::DriveLetterOf(application.state.SelectedFolder) == kFloppyDrive;
}

app::ResultCode WriteBackupSet(app::Application& application, const OperationMessages& messages) {
  const bool floppies = GoesToFloppies(application);
  const app::ResultCode result =
      floppies ? WriteToFloppies(application, messages) : CopyToDestination(application, messages);
  // The pieces may fill the disk that the next try needs.
  if (floppies) DeleteFilesMatching(application, ArchiveFolder(application), "*");
  const std::string descriptor = application.state.StagingFolder + kDescriptorFile;
  // It would be appended to at the next try.
  if (application.host.files.FileExists(descriptor)) DeleteFileForced(application, descriptor);
  return result;
}

app::ResultCode ReportStopped(app::Application& application, const OperationMessages& messages) {
  app::ShowMessage(application, messages.stopped);
  application.toolkit.SetPointer(forms::Pointer::Default);
  return app::kStopped;
}

app::ResultCode RunBackupDriver(const JobContext& job, const CategoryChoice& choice) {
  app::Application& application = job.application;
  const OperationMessages& messages = MessagesOf(app::Operation::Backup);
  if (application.state.DeleteLogs && !media::Consents(application, kAskToDeleteLogs)) {
    return ReportStopped(application, messages);
  }
  const app::ResultCode written = WriteBackupSet(application, messages);
  if (written == app::kStopped) return ReportStopped(application, messages);
  return written == app::kDone ? FinishBackup(job, choice) : written;
}

}  // namespace backup
