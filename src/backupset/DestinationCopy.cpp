// Writes the archives and their descriptor to one medium or folder.
#include "backupset/SetWriter.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "base/Path.h"
#include "work/FileOperations.h"

namespace backupset {
namespace {

constexpr std::size_t kDriveRootLength = 3;

class DestinationCopy {
 public:
  DestinationCopy(app::Application& application, media::MediaDrives& drives, const Writing& writing)
      : application_(application),
        mediaDrives_(drives),
        writing_(writing),
        files_(writing.tools.files),
        messages_(writing.messages),
        letter_(base::DriveLetterOf(writing.destination)),
        drive_(letter_ + ":") {}

  base::Outcome Run() {
    using Step = base::Outcome (DestinationCopy::*)();
    constexpr std::array<Step, 10> kSteps = {&DestinationCopy::CheckMedium,     &DestinationCopy::FormatMedium,
                                             &DestinationCopy::CheckSpace,      &DestinationCopy::CheckLabel,
                                             &DestinationCopy::MakeFolder,      &DestinationCopy::ListSet,
                                             &DestinationCopy::AskToOverwrite,  &DestinationCopy::DescribeSet,
                                             &DestinationCopy::RetractOlderSet, &DestinationCopy::CopyFiles};
    for (const Step step : kSteps) {
      if (base::Outcome outcome = (this->*step)(); !outcome.IsDone()) return outcome;
    }
    return base::Result::Done;
  }

 private:
  base::Outcome Ask(app::MessageId question) {
    return application_.messages.Consents(question) ? base::Outcome() : app::Declined(question);
  }

  base::Outcome CheckMedium() {
    const media::Medium medium = mediaDrives_.WaitForMedium(letter_, messages_.medium);
    if (medium == media::Medium::Stopped) return base::Result::Stopped;
    mustFormat_ = medium == media::Medium::Readable;
    if (!mustFormat_ || application_.messages.Prompt(messages_.prepareMedium)) return base::Result::Done;
    return app::Declined(messages_.prepareMedium);
  }

  base::Outcome FormatMedium() {
    application_.toolkit.SetPointer(forms::Pointer::Hourglass);
    if (!mustFormat_) return base::Result::Done;
    base::Outcome prepared = mediaDrives_.PrepareMedia(letter_);
    if (!prepared.IsDone()) return std::move(prepared).OrSay(messages_.formatFailed);
    return application_.host.drives.SetVolumeLabel(drive_, kVolumeLabel).OrSay(messages_.labelFailed);
  }

  base::Outcome CheckSpace() {
    const std::int64_t free = application_.host.drives.FreeSpace(drive_);
    if (free >= 0 && static_cast<std::uint64_t>(free) > writing_.packed.BackupSize) return base::Result::Done;
    application_.failures.Show(
        {base::Result::Failed, messages_.noSpace, drive_ + " has " + std::to_string(free) + " bytes free"});
    return base::Result::Stopped;
  }

  base::Outcome CheckLabel() {
    const bool ours = application_.host.drives.VolumeLabel(drive_) == kVolumeLabel;
    return ours ? base::Result::Done : Ask(messages_.foreignLabel);
  }

  base::Outcome MakeFolder() {
    const std::string& destination = writing_.destination;
    if (destination.size() <= kDriveRootLength || files_.FolderExists(destination)) return base::Result::Done;
    if (base::Outcome answer = Ask(messages_.createFolder); !answer.IsDone()) return answer;
    return work::EnsureFolder(files_, destination).OrSay(messages_.folderNotCreated);
  }

  base::Outcome ListSet() {
    for (const Archive& archive : writing_.packed.set.archives) names_.push_back(archive.name);
    if (names_.empty()) return base::Failure("a descriptor alone is no backup");
    names_.emplace_back(kDescriptorFile);
    return base::Result::Done;
  }

  base::Outcome AskToOverwrite() {
    const bool exists = std::any_of(names_.begin(), names_.end(), [this](const std::string& name) {
      return files_.FileExists(writing_.destination + name);
    });
    return exists ? Ask(messages_.overwrite) : base::Result::Done;
  }

  base::Outcome DescribeSet() {
    PackedSet& packed = writing_.packed;
    return WriteDescriptor(writing_.tools, application_.host.clock, writing_.host, packed.workFolder, packed.set)
        .OrSay(messages_.descriptorFailed);
  }

  /// The operator has given the older set up. Without its descriptor nobody can take a mixture of old and
  /// new archives, which an interruption would leave, for a set.
  base::Outcome RetractOlderSet() { return RetractDescriptor(files_, writing_.destination); }

  /// What does not arrive whole leaves no descriptor that would promise it.
  base::Outcome CopyFiles() {
    base::Outcome copied = CopyAndReadBack();
    return copied.IsDone() ? copied : WithoutDescriptor(files_, writing_.destination, std::move(copied));
  }

  /// All archives are on the medium before the descriptor is written there, and that before anything is read back.
  base::Outcome CopyAndReadBack() {
    Plan();
    for (const std::string& name : names_) {
      const app::Progress::Part part(application_.progress, app::Work::Copying, name);
      const std::string copy = writing_.destination + name;
      base::Outcome step = work::CopyWholeFileByXcopy(writing_.tools, Staged(name), writing_.destination, name);
      if (step.IsDone()) step = files_.Flush(copy);
      if (!step.IsDone()) return step;
      application_.host.messageLoop.Yield();
    }
    for (const std::string& name : names_) {
      const app::Progress::Part part(application_.progress, app::Work::Comparing, name);
      base::Outcome same = work::CompareOnMedium(writing_.tools, Staged(name), writing_.destination + name);
      if (!same.IsDone()) return same;
    }
    writing_.tools.log.WriteLog(app::LogLevel::Information,
                                "Read back and compared: " + std::to_string(names_.size()) + " files");
    return base::Result::Done;
  }

  void Plan() {
    for (const Archive& archive : writing_.packed.set.archives) {
      application_.progress.Plan(app::Work::Copying, archive.name, archive.size);
      application_.progress.Plan(app::Work::Comparing, archive.name, archive.size);
    }
  }

  std::string Staged(const std::string& name) const { return writing_.packed.workFolder.StagingFolder() + name; }

  app::Application& application_;
  media::MediaDrives& mediaDrives_;
  const Writing& writing_;
  host::FileSystem& files_;
  const WritingMessages& messages_;
  const std::string letter_;
  const std::string drive_;
  bool mustFormat_ = false;
  std::vector<std::string>
      names_;  ///< what is copied; the descriptor last, so that a new set is whole once it is there
};

}  // namespace

base::Outcome CopyToDestination(app::Application& application, media::MediaDrives& drives, const Writing& writing) {
  return DestinationCopy(application, drives, writing).Run();
}

}  // namespace backupset
