// The list of studies that goes with a maintenance log backup.
#include "maintenance/StudyList.h"

#include <string>

#include "app/PathVariables.h"
#include "app/WindowsPath.h"
#include "backup/FileOperations.h"
#include "backup/Programs.h"
#include "media/Proposal.h"

namespace maintenance {
namespace {

constexpr char kCategory[] = "study list";
constexpr char kStudyList[] = "T_TSTUDY.txt";

// An earlier list must neither stand in the new one's way nor pass for it: it may hold names that this
// one is to leave out. The one in the staging folder comes from an OK that was stopped afterwards.
app::ResultCode RemoveEarlierList(app::Application& application, const std::string& path) {
  if (!application.host.files.FileExists(path)) return app::kDone;
  return backup::DeleteFileForced(application, path);
}

}  // namespace

app::ResultCode ExportStudyList(app::Application& application) {
  std::string exporter = application.state.ProtectPersonalInfo ? "%Temp%\\StudyDB\\BCP\\Export_StudyDB_TXT_PP.bat"
                                                               : "%Temp%\\StudyDB\\BCP\\Export_StudyDB_TXT.bat";
  if (app::ExpandPathVariable(application, exporter) != app::kDone) return app::kFailed;
  const std::string exported = app::FolderOf(exporter) + kStudyList;
  const std::string list = application.state.StagingFolder + kStudyList;
  if (RemoveEarlierList(application, exported) != app::kDone) return app::kFailed;
  if (RemoveEarlierList(application, list) != app::kDone) return app::kFailed;
  if (!backup::RunInItsFolder(application, exporter, kCategory).started) return app::kFailed;
  if (backup::MoveFileToFolder(application, exported, application.state.StagingFolder) != app::kDone) {
    backup::WarnOfLoss(application, "Not moved: " + exported, kCategory);
    return app::kFailed;
  }
  const std::string desktop = media::DesktopFolder(application);
  const bool copied = backup::CopyWholeFileByXcopy(application, list, desktop, kCategory) == app::kDone;
  return copied ? app::kDone : app::kFailed;
}

app::ResultCode CopyStudyListToDestination(app::Application& application) {
  const std::string list = application.state.StagingFolder + kStudyList;
  return backup::CopyWholeFileByXcopy(application, list, application.state.SelectedFolder, kCategory);
}

}  // namespace maintenance
