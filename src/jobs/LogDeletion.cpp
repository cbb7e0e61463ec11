// Deletes the host's logs after a backup that contains them.
#include "jobs/LogDeletion.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "base/Path.h"
#include "jobs/Items.h"
#include "work/FileOperations.h"
#include "work/Programs.h"

namespace jobs {
namespace {

constexpr char kSection[] = "LOG_DELETE";

class LogDeletion {
 public:
  LogDeletion(const work::Tools& tools, const app::PathTable& paths, const JobDefinitions& definitions,
              const SavedLogs& saved, const std::string& stagingFolder)
      : tools_(tools), paths_(paths), definitions_(definitions), saved_(saved), stagingFolder_(stagingFolder) {}

  base::Outcome Run() {
    base::Outcome ended = ForEach(JobKey::BatFile, &LogDeletion::RunBatFile);
    if (ended.IsDone()) ended = ForEach(JobKey::CommonFile, &LogDeletion::DeleteCommonFiles);
    if (ended.IsDone()) {
      RunCommands(JobKey::EventLog);
      RunCommands(JobKey::RegFile);
      ended = ForEach(JobKey::Folder, &LogDeletion::EmptyLogFolder);
    }
    stayed_.Conclude("Not deleted");
    tools_.log.WriteLog(app::LogLevel::Information, "Logs deleted: " + std::to_string(deleted_) + " files");
    static_cast<void>(tools_.files.SetCurrentFolder(stagingFolder_));  // it was current when its archives were made
    return ended.IsDone() ? notDeleted_ : ended;
  }

 private:
  using Step = base::Outcome (LogDeletion::*)(const std::string& item);

  /// Carries `step` out on every item that names something: an empty folder would be the root of the current drive.
  base::Outcome ForEach(JobKey key, Step step) {
    const auto take = [&](const std::string& item) { return (this->*step)(item); };
    return ForEachItem(paths_, definitions_.FilledItems(key, kSection), take);
  }

  void RunCommands(JobKey key) {
    for (const std::string& command : definitions_.FilledItems(key, kSection)) {
      work::RunProgram(tools_, command, kSection);
    }
  }

  base::Outcome RunBatFile(const std::string& item) {
    return work::RunInItsFolder(tools_, item, stagingFolder_, kSection).Started();
  }

  base::Outcome DeleteCommonFiles(const std::string& item) {
    const std::string folder = base::FolderOf(item);
    if (tools_.files.FolderExists(folder)) Delete(folder, base::FileNameOf(item));
    return base::Result::Done;  // without the folder nothing matches
  }

  base::Outcome EmptyLogFolder(const std::string& item) {
    const std::string folder = base::WithTrailingBackslash(item);
    const work::CurrentFolderScope inFolder(tools_.files, folder, stagingFolder_);
    if (inFolder.Entered().IsDone()) {
      Delete(folder, "*");
    } else {
      Note(inFolder.Entered());
    }
    return base::Result::Done;
  }

  void Delete(const std::string& folder, const std::string& pattern) {
    std::vector<host::FolderEntry> entries;
    Note(tools_.files.List(folder, pattern, entries));
    for (const host::FolderEntry& entry : entries) {
      if (!entry.isFolder && !IsOwn(folder + entry.name)) DeleteSaved(folder + entry.name, entry);
      tools_.messageLoop.Yield();
    }
  }

  bool IsOwn(const std::string& path) const {
    return std::ranges::any_of(saved_.own, [&](const std::string& own) { return work::IsSamePath(path, own); });
  }

  void DeleteSaved(const std::string& path, const host::FolderEntry& entry) {
    base::Outcome deleted =
        IsSaved(path, entry) ? tools_.files.RemoveFile(path) : base::Failure(path + " has changed since it was saved");
    if (deleted.IsDone()) ++deleted_;
    Note(std::move(deleted));
  }

  /// What this program has not copied itself may have been saved by a program of the host; nothing that is younger than
  /// the gathering can have been.
  bool IsSaved(const std::string& path, const host::FolderEntry& entry) const {
    return saved_.copied.IsUnchanged(path, entry).value_or(entry.modified < saved_.gatheredAt);
  }

  /// The first thing that stays is the failure; the rest is deleted all the same.
  void Note(base::Outcome deleted) {
    if (deleted.IsDone()) return;
    stayed_.Add("Not deleted: " + deleted.cause);
    if (notDeleted_.IsDone()) notDeleted_ = std::move(deleted);
  }

  const work::Tools& tools_;
  const app::PathTable& paths_;
  const JobDefinitions& definitions_;
  const SavedLogs& saved_;
  const std::string& stagingFolder_;
  app::NamedWarnings stayed_{tools_.log, kSection};
  base::Outcome notDeleted_;
  std::size_t deleted_ = 0;
};

}  // namespace

base::Outcome RunLogDeletion(const work::Tools& tools, const app::PathTable& paths, JobDefinitions& definitions,
                             const SavedLogs& saved, const std::string& systemFolder,
                             const std::string& stagingFolder) {
  base::Outcome loaded = definitions.Load(tools, systemFolder, kJobDefinitionFile, kSection);
  return loaded.IsDone() ? LogDeletion(tools, paths, definitions, saved, stagingFolder).Run() : loaded;
}

}  // namespace jobs
