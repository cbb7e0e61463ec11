// Writes a backup set to floppies.
#include "backupset/SetWriter.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "backupset/Archiver.h"
#include "backupset/Pieces.h"
#include "base/Path.h"
#include "work/FileOperations.h"

namespace backupset {
namespace {

// Pieces always go to the first floppy drive, and that is the one that is formatted, whatever
// letter the destination has.
constexpr std::uint32_t kFormattedDrive = 0;
constexpr char kFloppy[] = "A:\\";
constexpr std::uint32_t kFormatId = 0;
constexpr std::uint32_t kFormatOptions = 1;

/// The bytes of a descriptor; empty when it could not be opened.
std::string DescriptorBytes(const base::Obtained<host::BinaryReader>& file) {
  constexpr std::size_t kMost = 4096;  // longer ones are not ours
  std::array<std::byte, kMost> block{};
  std::string bytes;
  while (file && bytes.size() <= kMost) {
    const std::int64_t got = file->Read(block.data(), block.size());
    if (got <= 0) break;
    std::transform(block.begin(), block.begin() + got, std::back_inserter(bytes),
                   [](std::byte byte) { return static_cast<char>(byte); });
  }
  return bytes;
}

class FloppyWriter {
 public:
  FloppyWriter(app::Application& application, media::MediaDrives& drives, const Writing& writing)
      : application_(application),
        mediaDrives_(drives),
        writing_(writing),
        messages_(writing.messages),
        workFolder_(writing.packed.workFolder),
        letter_(base::DriveLetterOf(writing.destination)) {}

  base::Outcome Run() {
    Plan();
    base::Outcome joined = Archiver(writing_.tools, workFolder_).JoinArchives(writing_.packed.set);
    if (!joined.IsDone()) return joined;
    if (const base::Outcome split = Split(); !split.IsDone()) return Say(split, app::MessageId::PathEntryUnreadable);
    const auto disks = static_cast<std::int32_t>(FloppyDiskCount(disk_.joinedSize));
    for (disk_.number = 1; disk_.number <= disks; ++disk_.number) {
      if (base::Outcome written = WriteDisk(); !written.IsDone()) return written;
    }
    application_.toolkit.SetPointer(forms::Pointer::Default);
    return base::Result::Done;
  }

 private:
  /// Disk by disk; how many there are is nearly known before the archives are joined.
  void Plan() {
    const std::uint64_t size = writing_.packed.BackupSize;
    PlanPacking(application_.progress, kJoinedArchiveName, size);
    for (std::uint64_t before = 0; before < size; before += kPieceSize) {
      const auto number = static_cast<std::int32_t>(before / kPieceSize + 1);
      PlanDisk(application_.progress, number, std::min<std::uint64_t>(size - before, kPieceSize));
    }
  }

  /// The failure is shown here, and nothing else of it.
  base::Outcome Say(const base::Outcome& failure, app::MessageId message) {
    application_.progress.Fail();
    application_.failures.Show(failure, message);
    return base::Result::Stopped;
  }
  base::Outcome Say(app::MessageId message, const std::string& cause) {
    return Say({base::Result::Failed, message, cause}, message);
  }

  base::Outcome Split() {
    host::FileSystem& files = writing_.tools.files;
    const std::string folder = workFolder_.ArchiveFolder();
    const std::int64_t size = files.FileSize(folder + kJoinedArchive);
    if (size < 1 || size > std::numeric_limits<std::uint32_t>::max()) {
      return base::Failure("the joined archive is missing or too large");
    }
    disk_.joinedSize = static_cast<std::uint32_t>(size);
    return SplitArchive(files, writing_.tools.messageLoop, folder, disk_.joinedSize);
  }

  base::Outcome WriteDisk() {
    using Step = base::Outcome (FloppyWriter::*)();
    constexpr std::array<Step, 5> kSteps = {&FloppyWriter::TakeDisk, &FloppyWriter::Format, &FloppyWriter::Label,
                                            &FloppyWriter::PutDescriptor, &FloppyWriter::PutPiece};
    for (const Step step : kSteps) {
      if (base::Outcome outcome = (this->*step)(); !outcome.IsDone()) return outcome;
    }
    return base::Result::Done;
  }

  /// Waits for the next disk. One that this run has written already is asked for again: formatted, it would take a
  /// piece of the set with it.
  base::Outcome TakeDisk() {
    for (bool asks = disk_.number > 1;; asks = true) {
      if (asks && !application_.messages.Prompt(messages_.changeDisk)) return base::Result::Stopped;
      if (base::Outcome waited = WaitForDisk(); !waited.IsDone()) return waited;
      if (!IsOfThisRun()) return base::Result::Done;
      writing_.tools.log.WriteLog(app::LogLevel::Information, "Disk not changed, not formatted : " + letter_);
      writing_.tools.messageLoop.Yield();
    }
  }

  bool IsOfThisRun() const {
    if (written_.empty()) return false;  // nothing of it to lose, and often no disk that can be read
    const std::string descriptor = std::string(kFloppy) + kDescriptorFile;
    host::FileSystem& files = writing_.tools.files;
    if (!files.FileExists(descriptor)) return false;
    const std::string inDrive = DescriptorBytes(files.OpenBinary(descriptor));
    return !inDrive.empty() && std::ranges::find(written_, inDrive) != written_.end();
  }

  base::Outcome WaitForDisk() {
    const media::Medium medium = mediaDrives_.WaitForMedium(letter_, messages_.medium);
    if (medium == media::Medium::Readable) return Say(messages_.unusableFloppy, "drive " + letter_);
    return medium == media::Medium::Ready ? base::Result::Done : base::Result::Stopped;
  }

  base::Outcome Format() {
    application_.toolkit.SetPointer(forms::Pointer::Hourglass);
    switch (application_.host.shell.FormatDrive(kFormattedDrive, kFormatId, kFormatOptions)) {
      case host::FormatAnswer::NotPossible:
        return Say(messages_.formatFailed, "the drive cannot be formatted");
      case host::FormatAnswer::Cancelled:
        return Say(messages_.formatCancelled, "the operator has cancelled the formatting");
      case host::FormatAnswer::Failed:  // the format dialog has said what was wrong
        return base::Result::Stopped;
      default:
        return base::Result::Done;
    }
  }

  base::Outcome Label() {
    const base::Outcome labelled = application_.host.drives.SetVolumeLabel(letter_ + ":", kVolumeLabel);
    return labelled.IsDone() ? base::Result::Done : Say(labelled, messages_.labelFailed);
  }

  /// Beside the piece, where a restore looks for it, whatever folder the destination names: the disk was formatted, and
  /// has none.
  base::Outcome PutDescriptor() {
    const work::Tools& tools = writing_.tools;
    const base::Outcome described =
        WriteDescriptor(tools, application_.host.clock, writing_.host, workFolder_, writing_.packed.set, disk_);
    if (!described.IsDone()) return Say(described, app::MessageId::PathEntryUnreadable);
    const std::string archiveFolder = workFolder_.ArchiveFolder();
    const std::string staged = workFolder_.StagingFolder() + kDescriptorFile;
    if (base::Outcome moved = work::MoveFileToFolder(tools.files, staged, archiveFolder); !moved.IsDone()) return moved;
    written_.push_back(DescriptorBytes(tools.files.OpenBinary(archiveFolder + kDescriptorFile)));
    return work::MoveFileToFolder(tools.files, archiveFolder + kDescriptorFile, kFloppy);
  }

  /// A disk that does not hold the piece that it should keeps no descriptor either. The last one may lawfully have no
  /// piece; a restore knows it by its descriptor.
  base::Outcome PutPiece() {
    const std::string piece = workFolder_.ArchiveFolder() + PieceName(disk_.number);
    base::Outcome put = CopyPiece(piece);
    if (!put.IsDone() && writing_.tools.files.FileExists(piece)) {
      put = WithoutDescriptor(writing_.tools.files, kFloppy, std::move(put));
    }
    return std::move(put).OrSay(app::MessageId::MaintenanceDriveError);
  }

  base::Outcome CopyPiece(const std::string& piece) {
    const app::Progress::Part part(application_.progress, app::Work::Floppy, PieceName(disk_.number));
    host::FileSystem& files = writing_.tools.files;
    const std::string copy = kFloppy + base::FileNameOf(piece);
    const std::string descriptor = std::string(kFloppy) + kDescriptorFile;
    const std::string title = application_.messages.GetMessageText(app::MessageId::CopyingPieceTitle);
    base::Outcome step = files.Flush(descriptor);
    if (step.IsDone()) step = application_.host.shell.CopyWithProgress(piece, kFloppy, title);
    if (step.IsDone()) step = work::CompareSizes(files, piece, copy);
    if (step.IsDone()) step = files.Flush(copy);
    if (step.IsDone()) step = work::CompareOnMedium(writing_.tools, piece, copy);
    if (!step.IsDone() || DescriptorBytes(files.OpenUncached(descriptor)) == written_.back()) return step;
    return base::Failure("Copy cannot be read back as it was written: " + descriptor);
  }

  app::Application& application_;
  media::MediaDrives& mediaDrives_;
  const Writing& writing_;
  const WritingMessages& messages_;
  const work::WorkFolder& workFolder_;
  const std::string letter_;
  FloppyDisk disk_;
  std::vector<std::string> written_;  ///< the descriptors of the disks of this run
};

}  // namespace

base::Outcome WriteToFloppies(app::Application& application, media::MediaDrives& drives, const Writing& writing) {
  return FloppyWriter(application, drives, writing).Run();
}

}  // namespace backupset
