// Carries a restore out: brings the archives in, unpacks each category and puts it back.
#include "restore/RestoreDriver.h"

#include <string>

#include "app/Messages.h"
#include "app/Records.h"
#include "app/WindowsPath.h"
#include "backup/FileOperations.h"
#include "backup/FloppyFormat.h"
#include "backup/StagingFolder.h"
#include "restore/Archives.h"
#include "restore/FloppyGathering.h"
#include "restore/RestoreActions.h"

namespace restore {
namespace {

constexpr std::int32_t kSectionMissing = 60420;
constexpr std::int32_t kExtractionFailed = 60421;
constexpr std::int32_t kAuditRefused = 60511;

app::ResultCode FailStep(app::Application& application, std::int32_t message) {
  application.state.PendingMessageId = message;
  return app::kStepFailed;
}

bool MayRestore(const app::Application& application, const Selection& selection, std::size_t category) {
  return selection[category] && (category != kIPCounter || application.state.UserRight == app::Right::Privileged);
}

app::ResultCode RestoreCategory(app::Application& application, backup::JobDefinitions& definitions,
                                const Category& category, const ArchiveSource& source) {
  if (definitions.Load(application, application.state.SystemFolder, backup::kJobDefinitionFile, category.section) ==
      app::kFailed)
    return FailStep(application, kSectionMissing);
  const app::ResultCode extracted = ExtractArchive(application, source.folder + category.archive, source.copyFirst);
  if (extracted == app::kFailed) return app::kFailed;
  if (extracted == app::kStepFailed) return FailStep(application, kExtractionFailed);
  for (const auto action : {RestoreCommonFiles, RunBatchFiles, RestoreFolders}) {
    if (action(application, definitions, category.section) == app::kFailed) return app::kStepFailed;
  }
  // So that nothing of this category is taken for the next one's, whose extraction makes the folder again.
  backup::DeleteFolderForced(application, backup::ArchiveFolder(application));
  return app::kDone;
}

app::ResultCode WriteAuditRecords(app::Application& application, const Selection& selection) {
  for (std::size_t i = 0; i < kCategories; ++i) {
    if (!MayRestore(application, selection, i) || !kCategoryTable[i].auditTarget) continue;
    if (app::RecordCategoryPhase(application, application.state.UserId, app::Phase::End,
                                 *kCategoryTable[i].auditTarget) != 0)
      return FailStep(application, kAuditRefused);
  }
  return app::kDone;
}

app::ResultCode RestoreAll(app::Application& application, backup::JobDefinitions& definitions,
                           const Selection& selection) {
  ArchiveSource source{application.state.SelectedFolder, true};
  if (app::DriveLetterOf(application.state.SelectedFolder) == backup::kFloppyDrive) {
    if (const app::ResultCode gathered = GatherSplitArchive(application); gathered != app::kDone) return gathered;
    source = {application.state.StagingFolder, false};
  }
  for (std::size_t i = 0; i < kCategories; ++i) {
    if (!MayRestore(application, selection, i)) continue;
    const app::ResultCode result = RestoreCategory(application, definitions, kCategoryTable[i], source);
    if (result != app::kDone) return result;
  }
  return WriteAuditRecords(application, selection);
}

}  // namespace

app::ResultCode RunRestore(app::Application& application, backup::JobDefinitions& definitions,
                           const Selection& selection) {
  const app::ResultCode result = RestoreAll(application, definitions, selection);
  RemoveStagingOrSay(application);
  application.toolkit.SetPointer(forms::Pointer::Default);
  return result;
}

void RemoveStagingOrSay(app::Application& application) {
  // Saying so must not cost the message that a failed step has left for its caller.
  const std::int32_t pending = application.state.PendingMessageId;
  if (backup::RemoveStagingFolder(application) != app::kDone) app::ShowMessage(application, 60411);
  application.state.PendingMessageId = pending;
}

}  // namespace restore
