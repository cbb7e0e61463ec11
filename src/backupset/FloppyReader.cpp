// Gathers the pieces of a floppy set disk by disk.
#include "backupset/FloppyReader.h"

#include <string>
#include <utility>

#include "backupset/Archiver.h"
#include "backupset/Descriptor.h"
#include "backupset/Pieces.h"
#include "base/Path.h"
#include "work/FileOperations.h"

namespace backupset {
namespace {

class FloppyReader {
 public:
  FloppyReader(app::Application& application, media::MediaDrives& drives, const BackupSet& set,
               const work::WorkFolder& workFolder)
      : application_(application),
        mediaDrives_(drives),
        tools_(work::ToolsOf(application)),
        set_(set),
        source_(set.folder),
        workFolder_(workFolder),
        staging_(workFolder.StagingFolder()) {}

  base::Outcome Run() {
    const auto count = ReadDiskNumber(DescriptorValue("FDCount"));
    if (!count) return Incomplete("FDCount");
    mark_ = ReadMark(tools_, source_);
    for (std::int32_t number = 1; number <= *count; ++number) PlanDisk(tools_.progress, number, kPieceSize);
    tools_.progress.Plan(app::Work::Unpacking, kJoinedArchive, static_cast<std::uint64_t>(*count) * kPieceSize);
    // The disk may have been changed since the set was inspected.
    mark_.appVersion = set_.appVersion;
    mark_.versions = set_.versions;
    for (std::int32_t number = 1; number <= *count; ++number) {
      if (base::Outcome taken = TakeDisk(number, number == *count); !taken.IsDone()) return taken;
    }
    if (const base::Outcome joined = JoinPieces(tools_, workFolder_, pieces_); !joined.IsDone()) {
      application_.failures.Show(joined, app::MessageId::PathEntryUnreadable);
      return base::Result::Stopped;
    }
    const Archiver archiver(tools_, workFolder_);
    const base::Outcome extracted = archiver.ExtractArchive(staging_ + kJoinedArchiveName, false);
    if (!extracted.IsDone()) return {base::Result::Failed, app::MessageId::ArchiveNotUnpacked, extracted.cause};
    return archiver.TakeJoinedArchivesOut();
  }

 private:
  std::string DescriptorValue(const std::string& key) { return ReadIniValue(tools_, source_, kDescriptorFile, key); }

  base::Outcome Incomplete(const std::string& key) {
    return {base::Result::Failed, app::MessageId::DescriptorIncomplete, source_ + kDescriptorFile + ": " + key};
  }

  /// Copies what disk `number` holds.
  base::Outcome TakeDisk(std::int32_t number, bool last) {
    if (number != 1 && !application_.messages.Prompt(app::MessageId::AskNextSourceDisk)) return base::Result::Stopped;
    if (base::Outcome waited = WaitForDisk(number); !waited.IsDone()) return waited;
    if (last) {
      base::Outcome copied = work::CopyFileByXcopy(tools_, source_ + kDescriptorFile, staging_);
      if (copied == base::Result::Failed) return copied;  // what else xcopy may say does not matter here
      if (IsSurplusDisk(number)) return base::Result::Done;
    }
    ++pieces_;
    return CopyPiece(PieceName(number)).OrSay(app::MessageId::MaintenanceDriveError);
  }

  /// Waits until disk `number` of the inspected set is in the drive. Of two sets that were made alike, the pieces
  /// themselves tell that they do not belong together: the joined archive is then no whole one.
  base::Outcome WaitForDisk(std::int32_t number) {
    const std::string drive = base::DriveLetterOf(source_);
    for (;;) {
      switch (mediaDrives_.WaitForMedium(drive, media::kSourceMessages)) {
        case media::Medium::Stopped:
          return base::Result::Stopped;
        case media::Medium::Readable:
          application_.failures.Show({base::Result::Failed, app::MessageId::SourceMediumUnusable, "drive " + drive});
          return base::Result::Stopped;
        case media::Medium::Ready:
          break;
      }
      const std::string found = DescriptorValue("FDNumber");
      if (found.empty()) return Incomplete("FDNumber");
      if (found == std::to_string(number) && IsOfTheSet(number == 1)) return base::Result::Done;
      tools_.log.WriteLog(app::LogLevel::Information,
                          "Not disk " + std::to_string(number) + " of the set : FDNumber " + found);
      if (!application_.messages.Prompt(app::MessageId::AskRightDisk)) return base::Result::Stopped;
      tools_.messageLoop.Yield();
    }
  }

  /// Whether the disk in the drive is of the inspected set. The first one tells what all others must say.
  bool IsOfTheSet(bool first) {
    SetMark inDrive = ReadMark(tools_, source_);
    if (!mark_.Fits(inDrive) || !(first || inDrive.Fits(mark_))) return false;
    if (first) mark_ = std::move(inDrive);
    return true;
  }

  // A set whose size is an exact multiple of the piece size declares one disk more than it has
  // pieces: its last disk holds a descriptor alone, and all before it are full.
  bool IsSurplusDisk(std::int32_t number) {
    return !tools_.files.FileExists(source_ + PieceName(number)) &&
           tools_.files.FileSize(staging_ + PieceName(number - 1)) == kPieceSize;
  }

  base::Outcome CopyPiece(const std::string& name) {
    const app::Progress::Part part(tools_.progress, app::Work::Floppy, name);
    const std::string title = application_.messages.GetMessageText(app::MessageId::CopyingPieceTitle);
    base::Outcome copied = application_.host.shell.CopyWithProgress(source_ + name, staging_, title);
    return copied.IsDone() ? work::CompareSizes(tools_.files, source_ + name, staging_ + name) : copied;
  }

  app::Application& application_;
  media::MediaDrives& mediaDrives_;
  work::Tools tools_;
  const BackupSet& set_;
  const std::string source_;
  SetMark mark_;  ///< of every disk of the set
  const work::WorkFolder& workFolder_;
  const std::string staging_;
  std::int32_t pieces_ = 0;  ///< that have come in
};

}  // namespace

base::Outcome GatherSplitArchive(app::Application& application, media::MediaDrives& drives, const BackupSet& set,
                                 const work::WorkFolder& workFolder) {
  return FloppyReader(application, drives, set, workFolder).Run();
}

}  // namespace backupset
