// The executors that gather the items of one section into the staging folder, one per item kind.
#include "backup/JobItems.h"

#include <array>

#include "app/External.h"
#include "app/PathVariables.h"
#include "app/WindowsPath.h"
#include "backup/FileOperations.h"
#include "backup/Programs.h"

namespace backup {
namespace {

constexpr std::array kExportPatterns = {"*.txt", "*.bcp", "*.fmtt", "*.log"};

app::ResultCode TakeDatabaseExport(const JobContext& job, const std::string& folder) {
  const std::string target = job.application.state.StagingFolder + "BCP\\";
  for (const char* const pattern : kExportPatterns) {
    if (MoveFilesMatching(job.application, folder, pattern, target).failed > 0) return app::kFailed;
  }
  return app::kDone;
}

/// Runs each item's program in its folder, then takes the files that it has written there.
app::ResultCode RunExporters(const JobContext& job, JobKey key, const std::string& section,
                             const std::string& pattern) {
  app::ResultCode result = app::kStopped;
  for (std::string item : job.definitions.Items(key, section)) {
    if (item.empty()) continue;
    if (app::ExpandPathVariable(job.application, item) != app::kDone) return app::kFailed;
    RunInItsFolder(job.application, item, section);
    const std::string folder = app::FolderOf(item);
    if (folder.empty()) continue;
    const MoveCount count = MoveFilesMatching(job.application, folder, pattern, job.application.state.StagingFolder);
    if (count.moved > 0) result = app::kDone;
    if (count.failed > 0) WarnOfLoss(job.application, "Not moved: " + folder + pattern, section);
  }
  return result;
}

/// Only a maintenance log takes some days' images: the choice outlives it, and a backup of the patient
/// data later in the same session must hold them all.
bool TakesRecentImages(const app::Application& application, const std::string& folder) {
  constexpr std::size_t kLength = 5;
  return application.state.CurrentOperation == app::Operation::MaintenanceLogBackup &&
         application.state.CollectImages == 1 && folder.size() >= kLength &&
         app::SameName(folder.substr(folder.size() - kLength), ".ddo\\");
}

}  // namespace

app::ResultCode RunBatFileItems(const JobContext& job, const std::string& section) {
  const bool takesExport = job.application.state.CurrentOperation == app::Operation::MaintenanceLogBackup;
  app::ResultCode result = app::kStopped;
  for (std::string item : job.definitions.Items(JobKey::BatFile, section)) {
    if (item.empty()) continue;
    if (app::ExpandPathVariable(job.application, item) != app::kDone) return app::kFailed;
    if (!RunInItsFolder(job.application, item, section).started) return app::kFailed;
    if (takesExport && TakeDatabaseExport(job, app::FolderOf(item)) != app::kDone) return app::kFailed;
    result = app::kDone;
  }
  return result;
}

app::ResultCode RunCommonFileItems(const JobContext& job, const std::string& section) {
  app::ResultCode result = app::kStopped;
  for (std::string item : job.definitions.Items(JobKey::CommonFile, section)) {
    if (item.empty()) continue;
    if (app::ExpandPathVariable(job.application, item) != app::kDone) return app::kFailed;
    const std::string& staging = job.application.state.StagingFolder;
    if (CopyFileByXcopy(job.application, item, staging, section) == app::kDone) result = app::kDone;
  }
  return result;
}

app::ResultCode RunEventLogItems(const JobContext& job, const std::string& section) {
  return RunExporters(job, JobKey::EventLog, section, "*.evt");
}

app::ResultCode RunRegFileItems(const JobContext& job, const std::string& section) {
  const auto items = job.definitions.Items(JobKey::RegFile, section);
  if (items.empty() || items.front() != kDefaultRegistryCommand) {
    return RunExporters(job, JobKey::RegFile, section, "*.reg");
  }
  const std::string& staging = job.application.state.StagingFolder;
  const app::CurrentFolderScope inStaging(job.application, staging, staging);
  if (!inStaging.Entered()) return app::kFailed;  // the export would land in some other folder
  RunProgram(job.application, items.front(), section);
  return app::kDone;
}

app::ResultCode RunFolderItems(const JobContext& job, const std::string& section) {
  app::ResultCode result = app::kStopped;
  for (const std::string& listed : job.definitions.Items(JobKey::Folder, section)) {
    // An empty item becomes the application root itself: a section may ask for all of it so.
    std::string item = app::WithTrailingBackslash(listed);
    if (app::ExpandPathVariable(job.application, item) != app::kDone) return app::kFailed;
    if (item.find(':') == std::string::npos) item = job.application.state.ApplicationRootFolder + item;
    const std::string& staging = job.application.state.StagingFolder;
    if (TakesRecentImages(job.application, item)) {
      job.collectors.CopyRecentImages(staging);
    } else if (CopyFolderByXcopy(job.application, item, staging, section) == app::kDone) {
      result = app::kDone;
    }
  }
  return result;
}

}  // namespace backup
