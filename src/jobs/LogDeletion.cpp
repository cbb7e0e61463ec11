// Deletes the host's logs after a backup that contains them.
#include "jobs/LogDeletion.h"

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
              const std::string& stagingFolder)
      : tools_(tools), paths_(paths), definitions_(definitions), stagingFolder_(stagingFolder) {}

  base::Outcome Run() {
    base::Outcome ended = ForEach(JobKey::BatFile, &LogDeletion::RunBatFile);
    if (ended.IsDone()) ended = ForEach(JobKey::CommonFile, &LogDeletion::DeleteCommonFiles);
    if (ended.IsDone()) {
      RunCommands(JobKey::EventLog);
      RunCommands(JobKey::RegFile);
      ended = ForEach(JobKey::Folder, &LogDeletion::EmptyLogFolder);
    }
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
    if (tools_.files.FolderExists(folder)) Note(work::DeleteFilesMatching(tools_, folder, base::FileNameOf(item)));
    return base::Result::Done;  // without the folder nothing matches
  }

  base::Outcome EmptyLogFolder(const std::string& item) {
    const std::string folder = base::WithTrailingBackslash(item);
    const work::CurrentFolderScope inFolder(tools_.files, folder, stagingFolder_);
    Note(inFolder.Entered().IsDone() ? work::DeleteFilesMatching(tools_, folder, "*") : inFolder.Entered());
    return base::Result::Done;
  }

  /// The first thing that could not be deleted is the failure; the rest is deleted all the same.
  void Note(base::Outcome deleted) {
    if (notDeleted_.IsDone()) notDeleted_ = std::move(deleted);
  }

  const work::Tools& tools_;
  const app::PathTable& paths_;
  const JobDefinitions& definitions_;
  const std::string& stagingFolder_;
  base::Outcome notDeleted_;
};

}  // namespace

base::Outcome RunLogDeletion(const work::Tools& tools, const app::PathTable& paths, JobDefinitions& definitions,
                             const std::string& systemFolder, const std::string& stagingFolder) {
  base::Outcome loaded = definitions.Load(tools, systemFolder, kJobDefinitionFile, kSection);
  return loaded.IsDone() ? LogDeletion(tools, paths, definitions, stagingFolder).Run() : loaded;
}

}  // namespace jobs
