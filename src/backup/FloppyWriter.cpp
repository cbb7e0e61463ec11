// Writes a backup set to floppies: joined, cut into pieces, one piece a disk.
#include "backup/FloppyWriter.h"

#include <array>
#include <limits>
#include <string>

#include "app/Messages.h"
#include "app/WindowsPath.h"
#include "backup/ArchivePieces.h"
#include "backup/Descriptor.h"
#include "backup/FileOperations.h"
#include "backup/Packing.h"
#include "backup/StagingFolder.h"
#include "media/DriveStatus.h"
#include "media/Question.h"

namespace backup {
namespace {

constexpr std::int32_t kSetNotPrepared = 60326;
constexpr std::int32_t kPieceNotCopied = 63460;
constexpr std::int32_t kProgressTitle = 60444;

// Pieces always go to the first floppy drive, and that is the one that is formatted, whatever
// letter the destination has.
constexpr std::uint32_t kFormattedDrive = 0;
constexpr char kPieceTarget[] = "A:\\";
constexpr std::uint32_t kFormatId = 0;
constexpr std::uint32_t kFormatOptions = 1;

class FloppyWriter {
 public:
  FloppyWriter(app::Application& application, const OperationMessages& messages)
      : application_(application), messages_(messages), archiveFolder_(ArchiveFolder(application)) {}

  app::ResultCode Run() {
    if (const app::ResultCode joined = JoinArchives(application_, kJoinedArchiveName); joined != app::kDone)
      return joined;
    if (!Split()) return Say(kSetNotPrepared);
    const auto disks = static_cast<std::int32_t>(FloppyDiskCount(application_.state.JoinedArchiveSize));
    for (disk_ = 1; disk_ <= disks; ++disk_) {
      if (const app::ResultCode written = WriteDisk(); written != app::kDone) return written;
    }
    application_.toolkit.SetPointer(forms::Pointer::Default);
    return app::kDone;
  }

 private:
  app::ResultCode Say(std::int32_t message) {
    app::ShowMessage(application_, message);
    return app::kStopped;
  }

  bool Split() {
    const std::int64_t size = application_.host.files.FileSize(archiveFolder_ + kJoinedArchiveName + ".cab");
    if (size < 1 || size > std::numeric_limits<std::uint32_t>::max()) return false;
    application_.state.JoinedArchiveSize = static_cast<std::uint32_t>(size);
    return SplitArchive(application_.host, archiveFolder_, application_.state.JoinedArchiveSize) == app::kDone;
  }

  app::ResultCode WriteDisk() {
    using Step = app::ResultCode (FloppyWriter::*)();
    constexpr std::array<Step, 6> kSteps = {&FloppyWriter::AskForNextDisk, &FloppyWriter::WaitForDisk,
                                            &FloppyWriter::Format,         &FloppyWriter::Label,
                                            &FloppyWriter::PutDescriptor,  &FloppyWriter::PutPiece};
    for (const Step step : kSteps) {
      if (const app::ResultCode result = (this->*step)(); result != app::kDone) return result;
    }
    return app::kDone;
  }

  app::ResultCode AskForNextDisk() {
    return disk_ == 1 || media::Consents(application_, messages_.changeDisk) ? app::kDone : app::kStopped;
  }

  app::ResultCode WaitForDisk() {
    const std::string letter = app::DriveLetterOf(application_.state.SelectedFolder);
    const media::Medium medium = media::WaitForMedium(application_, letter, messages_.medium);
    if (medium == media::Medium::Readable) return Say(messages_.unusableFloppy);
    return medium == media::Medium::Ready ? app::kDone : app::kStopped;
  }

  app::ResultCode Format() {
    application_.toolkit.SetPointer(forms::Pointer::Hourglass);
    switch (application_.host.shell.FormatDrive(kFormattedDrive, kFormatId, kFormatOptions)) {
      case -3:
        return Say(messages_.formatFailed);
      case -2:
        return Say(messages_.formatCancelled);
      case -1:  // the format dialog has said what was wrong
        return app::kStopped;
      default:
        return app::kDone;
    }
  }

  app::ResultCode Label() {
    const std::string drive = app::DriveLetterOf(application_.state.SelectedFolder) + ":";
    return application_.host.drives.SetVolumeLabel(drive, kVolumeLabel) == 0 ? app::kDone : Say(messages_.labelFailed);
  }

  app::ResultCode PutDescriptor() {
    if (WriteDescriptor(application_, static_cast<std::int16_t>(disk_)) != app::kDone) return Say(kSetNotPrepared);
    const std::string staged = application_.state.StagingFolder + kDescriptorFile;
    if (MoveFileToFolder(application_, staged, archiveFolder_) != app::kDone) return app::kFailed;
    return MoveFileToFolder(application_, archiveFolder_ + kDescriptorFile, application_.state.SelectedFolder);
  }

  app::ResultCode PutPiece() {
    const std::string piece = archiveFolder_ + PieceName(disk_);
    host::FileSystem& files = application_.host.files;
    const std::string title = app::GetMessageText(application_, kProgressTitle);
    if (application_.host.shell.CopyWithProgress(piece, kPieceTarget, title) == 0 &&
        files.FileSize(kPieceTarget + PieceName(disk_)) == files.FileSize(piece))
      return app::kDone;
    application_.state.PendingMessageId = kPieceNotCopied;
    return app::kFailed;
  }

  app::Application& application_;
  const OperationMessages& messages_;
  const std::string archiveFolder_;
  std::int32_t disk_ = 0;
};

}  // namespace

app::ResultCode WriteToFloppies(app::Application& application, const OperationMessages& messages) {
  return FloppyWriter(application, messages).Run();
}

}  // namespace backup
