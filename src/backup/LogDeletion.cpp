// Deletes the host's logs after a backup that contains them.
#include "backup/LogDeletion.h"

#include <string>
#include <vector>

#include "app/External.h"
#include "app/PathVariables.h"
#include "app/WindowsPath.h"
#include "backup/FileOperations.h"
#include "backup/Programs.h"

namespace backup {
namespace {

constexpr char kSection[] = "LOG_DELETE";

class LogDeletion {
 public:
  explicit LogDeletion(const JobContext& job) : job_(job), application_(job.application) {}

  app::ResultCode Run() {
    app::State& state = application_.state;
    if (job_.definitions.Load(application_, state.SystemFolder, kJobDefinitionFile, kSection) != app::kDone) {
      return app::kFailed;
    }
    const bool wentThrough = ForEach(JobKey::BatFile, &LogDeletion::RunBatFile) &&
                             ForEach(JobKey::CommonFile, &LogDeletion::DeleteCommonFiles);
    if (wentThrough) {
      RunCommands(JobKey::EventLog);
      RunCommands(JobKey::RegFile);
    }
    const bool allDone = wentThrough && ForEach(JobKey::Folder, &LogDeletion::EmptyLogFolder) && everythingDeleted_;
    application_.host.files.SetCurrentFolder(state.StagingFolder);
    return allDone ? app::kDone : app::kFailed;
  }

 private:
  using Step = bool (LogDeletion::*)(const std::string& item);

  /// Carries `step` out on every item, expanded; false as soon as an item ends the run. An empty item
  /// names nothing: as a folder it would be the root of the current drive.
  bool ForEach(JobKey key, Step step) {
    for (std::string item : job_.definitions.Items(key, kSection)) {
      if (item.empty()) continue;
      if (app::ExpandPathVariable(application_, item) != app::kDone) return false;
      if (!(this->*step)(item)) return false;
    }
    return true;
  }

  void RunCommands(JobKey key) {
    for (const std::string& command : job_.definitions.Items(key, kSection)) {
      if (!command.empty()) RunProgram(application_, command, kSection);
    }
  }

  bool RunBatFile(const std::string& item) { return RunInItsFolder(application_, item, kSection).started; }

  bool DeleteCommonFiles(const std::string& item) {
    const std::string folder = app::FolderOf(item);
    if (!application_.host.files.FolderExists(folder)) return true;  // nothing matches
    Delete(folder, app::FileNameOf(item));
    return true;
  }

  bool EmptyLogFolder(const std::string& item) {
    const std::string folder = app::WithTrailingBackslash(item);
    const app::CurrentFolderScope inFolder(application_, folder, application_.state.StagingFolder);
    if (inFolder.Entered()) {
      Delete(folder, "*");
    } else {
      everythingDeleted_ = false;
    }
    return true;
  }

  void Delete(const std::string& folder, const std::string& pattern) {
    if (DeleteFilesMatching(application_, folder, pattern) != app::kDone) everythingDeleted_ = false;
  }

  const JobContext& job_;
  app::Application& application_;
  bool everythingDeleted_ = true;
};

}  // namespace

app::ResultCode RunLogDeletion(const JobContext& job) {
  return LogDeletion(job).Run();
}

}  // namespace backup
