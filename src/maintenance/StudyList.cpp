// The list of studies that goes with a maintenance log backup.
#include "maintenance/StudyList.h"

#include "base/Path.h"
#include "work/FileOperations.h"
#include "work/Programs.h"

namespace maintenance {
namespace {

constexpr char kCategory[] = "study list";
constexpr char kStudyList[] = "T_TSTUDY.txt";

// An earlier list must neither stand in the new one's way nor pass for it: it may hold names that this
// one is to leave out. The one in the work folder comes from an OK that was stopped afterwards.
base::Outcome RemoveEarlierList(host::FileSystem& files, const std::string& path) {
  return files.FileExists(path) ? files.RemoveFile(path) : base::Result::Done;
}

}  // namespace

std::string DesktopFolder(host::Shell& shell) {
  const std::string desktop = shell.DesktopFolder();
  return desktop.empty() ? "C:\\" : base::WithTrailingBackslash(desktop);
}

base::Outcome ExportStudyList(const work::Tools& tools, const app::PathTable& paths, host::Shell& shell,
                              const work::WorkFolder& workFolder, bool protectPersonalInfo) {
  std::string exporter = protectPersonalInfo ? "%Temp%\\StudyDB\\BCP\\Export_StudyDB_TXT_PP.bat"
                                             : "%Temp%\\StudyDB\\BCP\\Export_StudyDB_TXT.bat";
  if (base::Outcome expanded = paths.ExpandPathVariable(exporter); !expanded.IsDone()) return expanded;
  const std::string exported = base::FolderOf(exporter) + kStudyList;
  const std::string& staging = workFolder.StagingFolder();
  for (const std::string& earlier : {exported, staging + kStudyList}) {
    base::Outcome removed = RemoveEarlierList(tools.files, earlier);
    if (removed.IsDone()) continue;
    tools.log.WarnOfLoss("Earlier list of studies not removed: " + removed.cause, kCategory);
    return removed;
  }
  const work::ProgramEnd end = work::RunInItsFolder(tools, exporter, staging, kCategory);
  if (!end.started) return end.Started();
  if (base::Outcome moved = work::MoveFileToFolder(tools.files, exported, staging); !moved.IsDone()) {
    tools.log.WarnOfLoss("Not moved: " + exported + ": " + moved.cause, kCategory);
    return moved;
  }
  // However the copy failed, the list did.
  const base::Outcome copied = CopyStudyList(tools, workFolder, DesktopFolder(shell));
  return copied.IsDone() ? base::Result::Done : base::Failure(copied.cause);
}

base::Outcome CopyStudyList(const work::Tools& tools, const work::WorkFolder& workFolder,
                            const std::string& destination) {
  return work::CopyWholeFileByXcopy(tools, workFolder.StagingFolder() + kStudyList, destination, kCategory);
}

}  // namespace maintenance
