// What a restore section does with an unpacked category.
#include "restore/RestoreActions.h"

#include "base/Path.h"
#include "jobs/Items.h"
#include "work/CheckedCopy.h"
#include "work/Programs.h"

namespace restore {
namespace {

/// Calls `action` with each item that names something once its path variable is expanded. Stopped ends the kind
/// without a failure.
template <typename Action>
base::Outcome ForEachItem(const Putting& putting, jobs::JobKey key, const std::string& section, Action action) {
  const auto take = [&](const std::string& item) { return item.empty() ? base::Outcome() : action(item); };
  base::Outcome ended = jobs::ForEachItem(putting.paths, putting.definitions.Items(key, section), take);
  return ended == base::Result::Stopped ? base::Result::Done : ended;
}

}  // namespace

base::Outcome RestoreCommonFiles(const Putting& putting, const std::string& section) {
  return ForEachItem(putting, jobs::JobKey::CommonFile, section, [&](const std::string& item) -> base::Outcome {
    const std::string unpacked = putting.workFolder.ArchiveFolder() + base::FileNameOf(item);
    work::CopyFilesChecked(putting.tools, unpacked, base::FolderOf(item), section);
    return base::Result::Done;
  });
}

base::Outcome RunBatchFiles(const Putting& putting, const std::string& section) {
  return ForEachItem(putting, jobs::JobKey::BatFile, section, [&](const std::string& item) -> base::Outcome {
    const auto end = work::RunInItsFolder(putting.tools, item, putting.workFolder.StagingFolder(), section);
    return end.started ? base::Result::Done : base::Result::Stopped;
  });
}

base::Outcome RestoreFolders(const Putting& putting, const std::string& section) {
  return ForEachItem(putting, jobs::JobKey::Folder, section, [&](const std::string& item) -> base::Outcome {
    const std::string folder = base::WithoutTrailingBackslash(jobs::WithDrive(item, putting.ApplicationRootFolder));
    const std::string parent = base::FolderOf(folder);
    if (!putting.tools.files.FolderExists(parent)) {
      putting.tools.log.WarnOfLoss("Not restored, no such folder: " + parent, section);
      return base::Result::Done;
    }
    const std::string unpacked = putting.workFolder.ArchiveFolder() + base::FileNameOf(folder);
    work::CopyFolderChecked(putting.tools, unpacked, parent, section);
    return base::Result::Done;
  });
}

}  // namespace restore
