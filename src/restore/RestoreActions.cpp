// What a restore section does with an unpacked category, one routine per item kind.
#include "restore/RestoreActions.h"

#include "app/PathVariables.h"
#include "app/WindowsPath.h"
#include "backup/FileOperations.h"
#include "backup/Programs.h"
#include "backup/StagingFolder.h"

namespace restore {
namespace {

/// Calls `action` with each item, its path variable expanded, until it answers false.
template <typename Action>
app::ResultCode ForEachItem(app::Application& application, const backup::JobDefinitions& definitions,
                            backup::JobKey key, const std::string& section, Action action) {
  for (std::string item : definitions.Items(key, section)) {
    if (app::ExpandPathVariable(application, item) != app::kDone) return app::kFailed;
    if (!item.empty() && !action(item)) break;
  }
  return app::kDone;
}

}  // namespace

app::ResultCode RestoreCommonFiles(app::Application& application, const backup::JobDefinitions& definitions,
                                   const std::string& section) {
  return ForEachItem(application, definitions, backup::JobKey::CommonFile, section, [&](const std::string& item) {
    backup::CopyFileByXcopy(application, backup::ArchiveFolder(application) + app::FileNameOf(item),
                            app::FolderOf(item), section);
    return true;
  });
}

app::ResultCode RunBatchFiles(app::Application& application, const backup::JobDefinitions& definitions,
                              const std::string& section) {
  return ForEachItem(application, definitions, backup::JobKey::BatFile, section, [&](const std::string& item) {
    return backup::RunInItsFolder(application, item, section).started;
  });
}

app::ResultCode RestoreFolders(app::Application& application, const backup::JobDefinitions& definitions,
                               const std::string& section) {
  return ForEachItem(application, definitions, backup::JobKey::Folder, section, [&](std::string item) {
    if (item.find(':') == std::string::npos) item = application.state.ApplicationRootFolder + item;
    item = app::WithoutTrailingBackslash(item);
    const std::string parent = app::FolderOf(item);
    if (application.host.files.FolderExists(parent)) {
      backup::CopyFolderByXcopy(application, backup::ArchiveFolder(application) + app::FileNameOf(item), parent,
                                section);
    } else {
      backup::WarnOfLoss(application, "Not restored, no such folder: " + parent, section);
    }
    return true;
  });
}

}  // namespace restore
