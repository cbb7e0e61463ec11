// Takes in the maintenance archives that client workstations drop into the update folder.
#include "maintenance/ClientLogs.h"

#include <vector>

#include "app/External.h"
#include "app/Messages.h"
#include "app/WindowsPath.h"
#include "backup/FileOperations.h"
#include "backup/Programs.h"
#include "maintenance/Retention.h"

namespace maintenance {
namespace {

constexpr char kCategory[] = "client logs";

app::ResultCode FolderFromPathTable(app::Application& application, const std::string& name, std::string& folder) {
  std::string value;
  if (app::GetPathEntry(application, name, value) != app::kDone) {
    app::ShowMessage(application, app::kPathEntryUnreadable);
    return app::kFailed;
  }
  folder = app::WithTrailingBackslash(app::Trim(value));
  return app::kDone;
}

app::ResultCode ImportArchive(app::Application& application, const std::string& source, const std::string& folder) {
  const std::string archive = folder + app::FileNameOf(source);
  if (backup::MoveFileToFolder(application, source, folder) != app::kDone) return app::kFailed;
  if (ExtractClientArchive(application, archive, folder) != app::kDone) return app::kFailed;
  return backup::DeleteFileForced(application, archive);
}

}  // namespace

app::ResultCode ImportClientLogs(app::Application& application) {
  std::string update;
  std::string clientLogs;
  if (FolderFromPathTable(application, "Update", update) != app::kDone) return app::kFailed;
  if (FolderFromPathTable(application, "ClientLog", clientLogs) != app::kDone) return app::kFailed;
  host::FileSystem& files = application.host.files;
  const std::string bare = clientLogs.substr(0, clientLogs.size() - 1);
  if (!files.FolderExists(bare) && files.MakeFolder(bare) != 0) return app::kFailed;

  std::vector<host::FolderEntry> entries;
  files.List(update, "Maintenance_*.cab", entries);  // no update folder, nothing to take in
  for (const host::FolderEntry& entry : entries) {
    if (entry.isFolder) continue;
    if (ImportArchive(application, update + entry.name, clientLogs) != app::kDone) return app::kFailed;
    application.host.messageLoop.Yield();
  }
  return PruneClientLogBackups(application, clientLogs);
}

app::ResultCode ExtractClientArchive(app::Application& application, const std::string& archivePath,
                                     const std::string& folder) {
  const app::CurrentFolderScope inFolder(application, folder, application.state.StartupDirectory);
  if (!inFolder.Entered()) return app::kFailed;  // it would be unpacked into some other folder
  const std::string command = "cabarc -r -p X " + backup::CommandArgument(app::FileNameOf(archivePath));
  return backup::RunProgram(application, command, kCategory).started ? app::kDone : app::kFailed;
}

}  // namespace maintenance
