// The work folder of one job.
#include "work/WorkFolder.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/Path.h"
#include "base/Text.h"
#include "base/Wildcard.h"
#include "work/FileOperations.h"

namespace work {
namespace {

/// The work folders that are there, or may be: paths, separated by a character that no path can hold.
constexpr char kRecord[] = "BackupUtility\\WorkFolder";
constexpr char kSeparator = '|';

std::vector<std::string> ReadRecord(host::QX32& registry) {
  std::string value;
  if (!registry.RegGetKeySZ(kRecord, value).IsDone()) return {};
  std::vector<std::string> folders = base::Split(base::CutAtNul(value), kSeparator);
  std::erase(folders, std::string());
  return folders;
}

void WriteRecord(host::QX32& registry, const std::vector<std::string>& folders) {
  std::string value;
  for (const std::string& folder : folders) value += folder + kSeparator;
  static_cast<void>(registry.RegSetKeySZ(kRecord, value));  // without it, a crash leaves its folder for good
}

void Remember(host::QX32& registry, const std::string& folder) {
  std::vector<std::string> folders = ReadRecord(registry);
  folders.push_back(folder);
  WriteRecord(registry, folders);
}

void Forget(host::QX32& registry, const std::string& folder) {
  std::vector<std::string> folders = ReadRecord(registry);
  std::erase(folders, folder);
  WriteRecord(registry, folders);
}

/// Whether a work folder could bear this name; the record may have been tampered with.
bool IsNamedLikeOne(const std::string& folder) {
  return base::MatchesPattern(base::FileNameOf(base::WithoutTrailingBackslash(folder)), "############");
}

/// Whether something stands where a folder, which ends in "\\", was to be made.
bool IsTaken(host::FileSystem& files, const std::string& folder) {
  return files.FolderExists(folder) || files.FileExists(base::WithoutTrailingBackslash(folder));
}

}  // namespace

WorkFolder::WorkFolder(host::FileSystem& files, host::QX32& registry, std::string programFolder)
    : files_(files), registry_(registry), programFolder_(std::move(programFolder)) {}

WorkFolder::~WorkFolder() {
  if (!path_.empty()) static_cast<void>(Remove());  // nobody is left to be told
}

base::Outcome WorkFolder::MakeNew(host::Clock& clock, host::MessageLoop& loop, std::string& folder) {
  constexpr int kTries = 5;
  constexpr int kSecond = 1000;  // milliseconds
  std::string temporary = files_.TemporaryFolder();
  if (temporary.empty()) temporary = "C:\\";
  base::Outcome made;
  for (int tries = 0; tries < kTries; ++tries) {
    folder = base::WithTrailingBackslash(temporary) + base::FormatShortStamp(clock.Now()) + "\\";
    made = files_.MakePrivateFolder(folder);
    if (made.IsDone() || !IsTaken(files_, folder)) break;
    loop.Pause(kSecond);
  }
  return made;
}

base::Outcome WorkFolder::Create(host::Clock& clock, host::MessageLoop& loop) {
  std::string folder;
  if (base::Outcome made = MakeNew(clock, loop, folder); !made.IsDone()) return made;
  path_ = folder;
  Remember(registry_, path_);
  // Its own entry tells the time by the clock that dates the files.
  const std::string bare = base::WithoutTrailingBackslash(folder);
  std::vector<host::FolderEntry> entries;
  static_cast<void>(files_.List(base::FolderOf(bare), base::FileNameOf(bare), entries));
  madeAt_ = entries.empty() ? 0 : entries.front().modified;
  return base::Result::Done;
}

base::Outcome WorkFolder::Remove() {
  static_cast<void>(files_.SetCurrentFolder(programFolder_));
  if (!path_.empty()) {
    base::Outcome deleted = DeleteFolderForced(files_, path_);
    if (!deleted.IsDone() && files_.FolderExists(path_)) return deleted;
    Forget(registry_, path_);
  }
  path_.clear();
  return base::Result::Done;
}

void RemoveLeftWorkFolders(host::FileSystem& files, host::QX32& registry, app::OperationLog& log) {
  for (const std::string& folder : ReadRecord(registry)) {
    const bool removes = IsNamedLikeOne(folder) && files.FolderExists(folder);
    const base::Outcome removed = removes ? DeleteFolderForced(files, folder) : base::Outcome();
    if (!removed.IsDone()) {
      log.WriteLog(app::LogLevel::Warning, "Work folder of an earlier run not removed: " + removed.cause);
      continue;
    }
    if (removes) log.WriteLog(app::LogLevel::Information, "Work folder of an earlier run removed: " + folder);
    Forget(registry, folder);
  }
}

}  // namespace work
