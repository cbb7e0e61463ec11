// Writes a packed set to its destination.
#include "backupset/SetWriter.h"

#include "backupset/Pieces.h"
#include "work/FileOperations.h"

namespace backupset {

base::Outcome WriteBackupSet(app::Application& application, media::MediaDrives& drives, PackedSet& packed,
                             const WritingMessages& messages) {
  const Writing writing{work::ToolsOf(application), IdentityOf(application.state, application.appearance), packed,
                        application.state.SelectedFolder, messages};
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

base::Outcome ReportStopped(app::Application& application, const WritingMessages& messages) {
  application.messages.ShowMessage(messages.stopped);
  application.toolkit.SetPointer(forms::Pointer::Default);
  return base::Result::Stopped;
}

base::Outcome WritingOperation::Run() {
  application_.toolkit.SetPointer(forms::Pointer::Hourglass);
  return WithDefaultMessage(Write(), messages_);
}

void WritingOperation::Unloaded() {
  const base::Outcome removed = packed_.workFolder.Remove();
  if (!removed.IsDone()) application_.failures.Show(removed, app::MessageId::BackupWorkFolderNotRemoved);
}

}  // namespace backupset
