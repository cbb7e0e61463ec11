// The work folder of one job, and the archive folder in it.
#include "backup/StagingFolder.h"

#include "app/TextFormat.h"
#include "app/WindowsPath.h"
#include "backup/FileOperations.h"

namespace backup {

std::string CreateStagingFolder(app::Application& application) {
  host::FileSystem& files = application.host.files;
  std::string temporary = files.TemporaryFolder();
  if (temporary.empty()) temporary = "C:\\";
  const std::string stamp = app::FormatShortStamp(application.host.clock.Now());
  std::string& staging = application.state.StagingFolder;
  staging = app::WithTrailingBackslash(temporary) + stamp + "\\";
  if (!files.FolderExists(staging) && files.MakePrivateFolder(staging) != 0) staging.clear();
  return staging;
}

app::ResultCode RemoveStagingFolder(app::Application& application) {
  host::FileSystem& files = application.host.files;
  files.SetCurrentFolder(application.state.StartupDirectory);  // a current folder cannot be deleted
  std::string& staging = application.state.StagingFolder;
  if (!staging.empty() && DeleteFolderForced(application, staging) != app::kDone && files.FolderExists(staging)) {
    return app::kFailed;
  }
  staging.clear();
  return app::kDone;
}

std::string ArchiveFolder(const app::Application& application) {
  return application.state.StagingFolder + kArchiveFolderName + "\\";
}

}  // namespace backup
