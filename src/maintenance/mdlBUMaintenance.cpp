// The maintenance log backup, from the main menu's choice to the selection dialog.
#include "maintenance/mdlBUMaintenance.h"

#include <cstdint>
#include <string>

#include "app/Messages.h"
#include "backup/FileOperations.h"
#include "backup/StagingFolder.h"
#include "maintenance/MaintenanceOperation.h"
#include "maintenance/MaintenanceSection.h"
#include "maintenance/frmMaintenance.h"
#include "media/frmSelectFolder.h"

namespace maintenance {
namespace {

constexpr char kDatabaseExportFolder[] = "BCP";
constexpr std::int32_t kNoStagingFolder = 60460;
constexpr std::int32_t kSectionMissing = 60470;
constexpr std::int32_t kCollectionFailed = 60471;
constexpr std::int32_t kPersonalInfoLeft = 60521;

/// Takes the operator's choices into the state; false when there is nothing to start.
bool AskForOptions(app::Application& application) {
  frmMaintenance dialog(application);
  dialog.ShowModal();
  application.toolkit.SetPointer(forms::Pointer::Hourglass);
  app::State& state = application.state;
  state.CurrentOperation = app::Operation::MaintenanceLogBackup;
  const Choice choice = dialog.Result();
  if (choice != Choice::Cancelled) {
    state.ProtectPersonalInfo = choice == Choice::Protected;
    state.CollectImages = dialog.CollectsImages();
    state.ImageRangeDays = dialog.DayCount();
  }
  dialog.Unload();
  return choice != Choice::Cancelled;
}

/// Collects into the staging folder: 0, or the ID of the message that says why not.
std::int32_t Collect(const backup::JobContext& job) {
  app::Application& application = job.application;
  const std::string staging = backup::CreateStagingFolder(application);
  if (staging.empty()) return kNoStagingFolder;
  application.host.files.MakeFolder(staging + kDatabaseExportFolder);
  if (LoadMaintenanceSection(job) != app::kDone) return kSectionMissing;
  if (CollectMaintenanceSection(job) != app::kDone) return kCollectionFailed;
  application.state.BackupSize = backup::GetFolderSize(application, staging);
  return 0;
}

}  // namespace

void StartMaintenanceLogBackup(const backup::JobContext& job) {
  app::Application& application = job.application;
  if (!AskForOptions(application) || MaintenanceLogBackup(job) != app::kDone) return;
  if (const std::int32_t code = application.state.PersonalInfoResult; code != 0) {
    app::ShowMessage(application, kPersonalInfoLeft, {}, std::to_string(code), {});
  }
  MaintenanceOperation operation(application);
  media::frmSelectFolder(application, operation).ShowModal();
}

app::ResultCode MaintenanceLogBackup(const backup::JobContext& job) {
  app::Application& application = job.application;
  application.state.Present = {};
  application.state.PersonalInfoResult = 0;  // what an earlier job has left says nothing of this one
  const std::int32_t message = Collect(job);
  if (message == 0) return app::kDone;
  app::ShowMessage(application, message);
  backup::RemoveStagingFolder(application);  // nobody else would
  return app::kFailed;
}

}  // namespace maintenance
