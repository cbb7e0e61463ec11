// What a restore section does with an unpacked category.
#include "restore/RestoreActions.h"

#include <vector>

#include "base/Path.h"
#include "jobs/Items.h"
#include "work/CheckedCopy.h"
#include "work/Programs.h"

namespace restore {
namespace {

/// Calls `action` with each item, its path variable expanded. Stopped ends the kind without a failure.
template <typename Action>
base::Outcome ForEachItem(const Putting& putting, const std::vector<std::string>& items, Action action) {
  base::Outcome ended = jobs::ForEachItem(putting.paths, items, action);
  return ended == base::Result::Stopped ? base::Result::Done : ended;
}

}  // namespace

base::Outcome RestoreCommonFiles(const Putting& putting, const std::string& section) {
  const auto copy = [&](const std::string& item) -> base::Outcome {
    const std::string unpacked = putting.workFolder.ArchiveFolder() + base::FileNameOf(item);
    work::CopyFilesChecked(putting.tools, unpacked, base::FolderOf(item), section);
    return base::Result::Done;
  };
  return ForEachItem(putting, putting.definitions.FilledItems(jobs::JobKey::CommonFile, section), copy);
}

base::Outcome RunBatchFiles(const Putting& putting, const std::string& section) {
  const auto run = [&](const std::string& item) -> base::Outcome {
    const auto end = work::RunInItsFolder(putting.tools, item, putting.workFolder.StagingFolder(), section);
    return end.started ? base::Result::Done : base::Result::Stopped;
  };
  return ForEachItem(putting, putting.definitions.FilledItems(jobs::JobKey::BatFile, section), run);
}

base::Outcome RestoreFolders(const Putting& putting, const std::string& section) {
  return ForEachItem(putting, putting.definitions.FolderItems(section), [&](const std::string& item) -> base::Outcome {
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
