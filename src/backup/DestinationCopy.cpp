// Writes the archives and their descriptor to one medium or folder.
#include "backup/DestinationCopy.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "app/Messages.h"
#include "app/WindowsPath.h"
#include "backup/Descriptor.h"
#include "backup/FileOperations.h"
#include "media/DriveStatus.h"
#include "media/MediaDrive.h"
#include "media/Question.h"

namespace backup {
namespace {

constexpr std::size_t kDriveRootLength = 3;

class DestinationCopy {
 public:
  DestinationCopy(app::Application& application, const OperationMessages& messages)
      : application_(application),
        messages_(messages),
        destination_(application.state.SelectedFolder),
        letter_(app::DriveLetterOf(destination_)),
        drive_(letter_ + ":") {}

  app::ResultCode Run() {
    using Step = app::ResultCode (DestinationCopy::*)();
    constexpr std::array<Step, 10> kSteps = {&DestinationCopy::CheckMedium,     &DestinationCopy::FormatMedium,
                                             &DestinationCopy::CheckSpace,      &DestinationCopy::CheckLabel,
                                             &DestinationCopy::MakeFolder,      &DestinationCopy::ListSet,
                                             &DestinationCopy::AskToOverwrite,  &DestinationCopy::DescribeSet,
                                             &DestinationCopy::RetractOlderSet, &DestinationCopy::CopyFiles};
    for (const Step step : kSteps) {
      if (const app::ResultCode result = (this->*step)(); result != app::kDone) return result;
    }
    return app::kDone;
  }

 private:
  app::ResultCode Fail(std::int32_t pendingMessage) {
    application_.state.PendingMessageId = pendingMessage;
    return app::kFailed;
  }

  app::ResultCode Ask(std::int32_t question) {
    return media::Consents(application_, question) ? app::kDone : app::kStopped;
  }

  app::ResultCode CheckMedium() {
    const media::Medium medium = media::WaitForMedium(application_, letter_, messages_.medium);
    if (medium == media::Medium::Stopped) return app::kStopped;
    mustFormat_ = medium == media::Medium::Readable;
    return mustFormat_ ? Ask(messages_.prepareMedium) : app::kDone;
  }

  app::ResultCode FormatMedium() {
    application_.toolkit.SetPointer(forms::Pointer::Hourglass);
    if (!mustFormat_) return app::kDone;
    if (!media::PrepareMedia(application_, letter_)) return Fail(messages_.formatFailed);
    const bool labelled = application_.host.drives.SetVolumeLabel(drive_, kVolumeLabel) == 0;
    return labelled ? app::kDone : Fail(messages_.labelFailed);
  }

  app::ResultCode CheckSpace() {
    if (application_.host.drives.FreeSpace(drive_) > std::int64_t{application_.state.BackupSize}) return app::kDone;
    app::ShowMessage(application_, messages_.noSpace);
    return app::kStopped;
  }

  app::ResultCode CheckLabel() {
    std::string label;
    application_.host.drives.VolumeLabel(drive_, label);
    return label == kVolumeLabel ? app::kDone : Ask(messages_.foreignLabel);
  }

  app::ResultCode MakeFolder() {
    if (destination_.size() <= kDriveRootLength || application_.host.files.FolderExists(destination_)) {
      return app::kDone;
    }
    if (const app::ResultCode answer = Ask(messages_.createFolder); answer != app::kDone) return answer;
    const std::string folder = app::WithoutTrailingBackslash(destination_);
    return application_.host.files.MakeFolder(folder) == 0 ? app::kDone : Fail(messages_.folderNotCreated);
  }

  app::ResultCode ListSet() {
    std::vector<host::FolderEntry> entries;
    if (application_.host.files.List(application_.state.StagingFolder, "*.cab", entries) != 0) return app::kFailed;
    for (const host::FolderEntry& entry : entries) {
      if (!entry.isFolder) names_.push_back(entry.name);
    }
    if (names_.empty()) return app::kFailed;  // a descriptor alone is no backup
    names_.emplace_back(kDescriptorFile);
    return app::kDone;
  }

  app::ResultCode AskToOverwrite() {
    const bool exists = std::any_of(names_.begin(), names_.end(), [this](const std::string& name) {
      return application_.host.files.FileExists(destination_ + name);
    });
    return exists ? Ask(messages_.overwrite) : app::kDone;
  }

  app::ResultCode DescribeSet() {
    return WriteDescriptor(application_, 0) == app::kDone ? app::kDone : Fail(messages_.descriptorFailed);
  }

  /// The operator has given the older set up. Without its descriptor nobody can take a mixture of old and
  /// new archives, which an interruption would leave, for a set.
  app::ResultCode RetractOlderSet() {
    const std::string descriptor = destination_ + kDescriptorFile;
    return application_.host.files.FileExists(descriptor) ? DeleteFileForced(application_, descriptor) : app::kDone;
  }

  app::ResultCode CopyFiles() {
    for (const std::string& name : names_) {
      const std::string source = application_.state.StagingFolder + name;
      const app::ResultCode result = CopyWholeFileByXcopy(application_, source, destination_, name);
      if (result != app::kDone) return result;
      application_.host.messageLoop.Yield();
    }
    return app::kDone;
  }

  app::Application& application_;
  const OperationMessages& messages_;
  const std::string destination_;
  const std::string letter_;
  const std::string drive_;
  bool mustFormat_ = false;
  std::vector<std::string>
      names_;  ///< what is copied; the descriptor last, so that a new set is whole once it is there
};

}  // namespace

app::ResultCode CopyToDestination(app::Application& application, const OperationMessages& messages) {
  return DestinationCopy(application, messages).Run();
}

}  // namespace backup
