// Writes a packed set to its destination.
#include "backupset/SetWriter.h"

#include "app/Finish.h"
#include "backupset/EndedJob.h"
#include "backupset/Pieces.h"
#include "base/Path.h"
#include "work/FileOperations.h"

namespace backupset {
namespace {

/// Whether the folder, or one above it, is the work folder, by whatever name: no other folder holds both.
bool LiesInWorkFolder(host::FileSystem& files, const PackedSet& packed, const std::string& destination) {
  constexpr std::size_t kDriveRootLength = 3;
  for (std::string folder = destination; folder.size() > kDriveRootLength;
       folder = base::FolderOf(base::WithoutTrailingBackslash(folder))) {
    if (files.FolderExists(folder + work::kArchiveFolderName) &&
        files.FileExists(folder + packed.set.archives.front().name)) {
      return true;
    }
  }
  return false;
}

/// Why nothing can be written to this destination; empty when that is not known yet.
std::string WhyImpossible(host::FileSystem& files, const PackedSet& packed, const std::string& destination) {
  if (destination.find(':') == std::string::npos) return "it names no drive";
  // The interpreter that copies would take what stands between two of them for a variable.
  if (destination.find('%') != std::string::npos) return "it holds a percent sign";
  if (packed.set.archives.empty() || !LiesInWorkFolder(files, packed, destination)) return {};
  return "it lies in the work folder, which will be removed";
}

base::Outcome RefuseImpossible(app::Application& application, const Writing& writing) {
  const std::string why = WhyImpossible(writing.tools.files, writing.packed, writing.destination);
  if (why.empty()) return base::Result::Done;
  const base::Outcome refused(base::Result::Failed, "destination " + writing.destination + ": " + why);
  application.failures.Show(refused, writing.messages.folderNotCreated);
  return {base::Result::Stopped, refused.cause};
}

}  // namespace

void Measure(const work::Tools& tools, const WritingMessages& messages, const app::Watch& gathering,
             PackedSet& packed) {
  const work::WorkFolder& folder = packed.workFolder;
  packed.BackupSize = work::GetFolderSize(tools, folder.StagingFolder(), folder.ProgramFolder());
  tools.log.WriteLog(app::LogLevel::Information,
                     std::string(messages.job) + " gathered: " + Description(packed.set) + "; " + gathering.Summary());
}

bool GatherUnderBar(app::Application& application, forms::ProgressBar& bar, forms::Label& numbers, const Gathering& job,
                    const std::function<base::Outcome()>& gather) {
  const app::Progress::Job shown(application.progress, bar, numbers);
  auto running = app::KeepRunning(application);
  const base::Outcome gathered = gather();
  running.reset();
  if (gathered.IsDone()) {
    application.progress.Complete();
    return true;
  }
  application.progress.Fail();
  const BackupSet& set = job.packed.set;
  ListEndedJob(application, job.kind, {}, set, set.categories, job.watch, gathered);
  application.failures.Show(gathered);
  RemoveWorkFolderOrSay(application.failures, job.packed);
  return false;
}

base::Outcome WriteBackupSet(app::Application& application, media::MediaDrives& drives, PackedSet& packed,
                             const WritingMessages& messages) {
  const Writing writing{work::ToolsOf(application), IdentityOf(application.state, application.appearance), packed,
                        application.state.SelectedFolder, messages};
  if (base::Outcome refused = RefuseImpossible(application, writing); !refused.IsDone()) return refused;
  const bool floppies = IsOnFloppies(writing.destination);
  base::Outcome outcome =
      floppies ? WriteToFloppies(application, drives, writing) : CopyToDestination(application, drives, writing);
  // The pieces may fill the disk that the next try needs. What cannot be deleted goes with the work folder.
  if (floppies) {
    static_cast<void>(work::DeleteFilesMatching(writing.tools, packed.workFolder.ArchiveFolder(), "*"));
  }
  const std::string descriptor = packed.workFolder.StagingFolder() + kDescriptorFile;
  // It would be appended to at the next try.
  if (writing.tools.files.FileExists(descriptor)) static_cast<void>(writing.tools.files.RemoveFile(descriptor));
  return outcome;
}

base::Outcome ReportStopped(app::Application& application, const WritingMessages& messages, const base::Outcome& why) {
  const std::string line = std::string(messages.job) + " stopped";
  application.log.WriteLog(app::LogLevel::Information, why.cause.empty() ? line : line + ": " + why.cause);
  application.messages.ShowMessage(messages.stopped);
  application.toolkit.SetPointer(forms::Pointer::Default);
  return base::Result::Stopped;
}

void ReportWritten(app::Application& application, const WritingMessages& messages, const BackupSet& set,
                   const app::Watch& job) {
  const std::string& destination = application.state.SelectedFolder;
  application.log.WriteLog(app::LogLevel::Information, std::string(messages.job) + " written to " + destination + ": " +
                                                           Description(set) + "; " + job.Summary());
  const base::Outcome end{base::Result::Done, messages.finished};
  ListEndedJob(application, messages.kind, destination, set, set.categories, job, end);
  application.progress.Complete();
  application.messages.TellWarnings(messages.warnings, job.Warnings());
  application.messages.ShowMessage(messages.finished);
}

std::string Description(const BackupSet& set) {
  std::string text;
  for (const Archive& archive : set.archives) {
    text += (text.empty() ? "" : ", ") + archive.name + " (files " + std::to_string(archive.files) + ", bytes " +
            std::to_string(archive.size) + ")";
  }
  return text;
}

base::Outcome WritingOperation::Run() {
  application_.toolkit.SetPointer(forms::Pointer::Hourglass);
  const auto running = app::KeepRunning(application_);
  tried_ = application_.state.SelectedFolder;
  end_ = WithDefaultMessage(Write(), messages_);
  return end_;
}

void RemoveWorkFolderOrSay(app::Failures& failures, PackedSet& packed) {
  const base::Outcome removed = packed.workFolder.Remove();
  if (!removed.IsDone()) failures.Show(removed, app::MessageId::BackupWorkFolderNotRemoved);
}

/// What was written is listed already, and was before its success was told.
void WritingOperation::ListUnlessWritten() {
  if (end_.IsDone()) return;
  const bool isTold = end_ == base::Result::Stopped && !tried_.empty();
  const base::Outcome end = isTold ? base::Outcome(end_.result, messages_.stopped) : end_;
  ListEndedJob(application_, messages_.kind, tried_, packed_.set, packed_.set.categories, job_, end);
}

void WritingOperation::Unloaded() {
  ListUnlessWritten();
  RemoveWorkFolderOrSay(application_.failures, packed_);
}

}  // namespace backupset
