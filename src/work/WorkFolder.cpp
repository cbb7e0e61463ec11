// The work folder of one job.
#include "work/WorkFolder.h"

#include <utility>
#include <vector>

#include "base/Path.h"
#include "work/FileOperations.h"

namespace work {

WorkFolder::WorkFolder(host::FileSystem& files, std::string programFolder)
    : files_(files), programFolder_(std::move(programFolder)) {}

WorkFolder::~WorkFolder() {
  if (!path_.empty()) static_cast<void>(Remove());  // nobody is left to be told
}

base::Outcome WorkFolder::Create(host::Clock& clock) {
  std::string temporary = files_.TemporaryFolder();
  if (temporary.empty()) temporary = "C:\\";
  const std::string folder = base::WithTrailingBackslash(temporary) + base::FormatShortStamp(clock.Now()) + "\\";
  if (!files_.FolderExists(folder)) {
    if (base::Outcome made = files_.MakePrivateFolder(folder); !made.IsDone()) return made;
  }
  path_ = folder;
  // Its own entry tells the time by the clock that dates the files.
  std::vector<host::FolderEntry> entries;
  static_cast<void>(files_.List(base::FolderOf(base::WithoutTrailingBackslash(folder)),
                                base::FileNameOf(base::WithoutTrailingBackslash(folder)), entries));
  madeAt_ = entries.empty() ? 0 : entries.front().modified;
  return base::Result::Done;
}

base::Outcome WorkFolder::Remove() {
  static_cast<void>(files_.SetCurrentFolder(programFolder_));
  if (!path_.empty()) {
    base::Outcome deleted = DeleteFolderForced(files_, path_);
    if (!deleted.IsDone() && files_.FolderExists(path_)) return deleted;
  }
  path_.clear();
  return base::Result::Done;
}

}  // namespace work
