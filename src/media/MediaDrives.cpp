// The host's removable media drives.
#include "media/MediaDrives.h"

#include <vector>

#include "base/Path.h"
#include "base/Text.h"

namespace media {
namespace {

constexpr int kRest = 100;     // milliseconds between two answers that mean nothing
constexpr int kPatience = 50;  // such answers, until the operator is asked

}  // namespace

std::string MediaDrives::FirstWritableDrive() {
  std::vector<std::int32_t> numbers;
  if (const base::Outcome listed = host_.qxNetDB.GetEquip("MEDIA", numbers); !listed.IsDone()) {
    failures_.Note("Media drives not listed", listed);
    return {};
  }
  for (const std::int32_t number : numbers) {
    host::MediaRecord record;
    if (const base::Outcome read = host_.qxNetDB.GetDriveInfo(number, record); !read.IsDone()) {
      failures_.Note("Media drive " + std::to_string(number) + " not read", read);
      return {};
    }
    if (record.attribute == "WRITABLE") {
      MediaAppType = record.preparationType;
      MediaAppCommand = record.programCommand;
      return record.drive;
    }
    host_.messageLoop.Yield();
  }
  return {};
}

std::string MediaDrives::GetDefaultMediaDrive() {
  std::string location;
  if (!paths_.GetPathEntryOrShow("NetConfigDB", location).IsDone()) return {};
  std::string drive;
  if (const base::Outcome connected = host_.qxNetDB.Connect(location); connected.IsDone()) {
    drive = FirstWritableDrive();
  } else {
    failures_.Show(connected, app::MessageId::NetworkDatabaseNotOpened);
  }
  host_.qxNetDB.Close();
  return drive;
}

std::string MediaDrives::ProposeMediaDrive() {
  std::string drive = GetDefaultMediaDrive();
  if (drive.size() < 2) drive = base::Trim(drive) + ":\\";
  return base::WithTrailingBackslash(drive);
}

host::DriveStatus MediaDrives::GetDriveStatus(const std::string& driveOrFolder) {
  const auto component = host_.components.CreateMediaComponent();
  if (!component) {
    failures_.Note("Drive " + driveOrFolder, base::Failure("the media component cannot be created"));
    return host::DriveStatus::Error;
  }
  component->SetUp(MediaAppCommand);
  return component->GetDriveStatus(driveOrFolder);
}

Medium MediaDrives::WaitForMedium(const std::string& drive, const MediumMessages& messages) {
  int unclear = 0;
  const auto stop = [&](app::MessageId message) {
    failures_.Show({base::Result::Failed, message, "the media component finds drive " + drive + " unfit"});
    return Medium::Stopped;
  };
  for (;;) {
    switch (GetDriveStatus(drive)) {
      case host::DriveStatus::Ready:
        return Medium::Ready;
      case host::DriveStatus::Readable:
        return Medium::Readable;
      case host::DriveStatus::Error:
        return stop(messages.error);
      case host::DriveStatus::Unusable:
        return stop(messages.unusable);
      case host::DriveStatus::NoMedium:
        if (!messages_.Prompt(messages.insert)) return Medium::Stopped;
        host_.messageLoop.Yield();
        break;
      default:  // an answer that means nothing: ask again, but leave the operator a way out
        host_.messageLoop.Pause(kRest);
        if (++unclear % kPatience != 0) break;
        failures_.Note("Drive " + drive, base::Failure("the media component's answers mean nothing"));
        if (!messages_.Prompt(messages.insert)) return Medium::Stopped;
        break;
    }
  }
}

base::Outcome MediaDrives::CheckSourceDrive(const std::string& folder) {
  const Medium medium = WaitForMedium(base::DriveLetterOf(folder), kSourceMessages);
  return medium == Medium::Stopped ? base::Result::Stopped : base::Result::Done;
}

base::Outcome MediaDrives::RunMediaProgram() {
  const auto program = host_.processes.Start(MediaAppCommand, host::WindowStyle::Normal);
  if (!program) return program.Why();
  static_cast<void>(program->Wait());  // how it ended shows in the medium alone
  return base::Result::Done;
}

base::Outcome MediaDrives::PrepareByComponent(const std::string& drive) {
  const auto component = host_.components.CreateMediaComponent();
  base::Outcome prepared =
      component ? component->PrepareDrive(drive, "C:\\", 0, 0) : base::Failure("the media component cannot be created");
  if (!prepared.IsDone()) failures_.Show(prepared, app::MessageId::BackupFormatFailed);
  return prepared;
}

base::Outcome MediaDrives::PrepareMedia(const std::string& drive) {
  if (MediaAppType == "APPLICATION") return RunMediaProgram();
  if (MediaAppType == "STANDARD") return PrepareByComponent(drive);
  if (MediaAppType == "NONE") {
    base::Outcome refused = base::Failure("the host has no way to prepare a medium in drive " + drive);
    failures_.Show(refused, app::MessageId::MediumNotPreparable);
    return refused;
  }
  // Hosts that name no type prepare their media by hand: not a failure.
  return base::Result::Done;
}

std::string MediaDrives::GetCapacityText(const std::string& folder, std::uint64_t backupSize) {
  const std::string letter = base::DriveLetterOf(folder);
  const std::string drive = letter + ":";
  const bool usable = GetDriveStatus(letter) > host::DriveStatus::Unusable;
  std::int64_t freeSpace = -1;
  if (usable && host_.drives.IsReady(drive)) freeSpace = host_.drives.FreeSpace(drive);
  const std::string free = freeSpace < 0 ? "-" : base::FormatMegabytes(static_cast<std::uint64_t>(freeSpace));
  return base::FormatMegabytes(backupSize) + "MB / " + free + "MB";
}

}  // namespace media
