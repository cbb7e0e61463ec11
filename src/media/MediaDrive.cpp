// The host's removable media drives: which one backups go to, and how its media are prepared.
#include "media/MediaDrive.h"

#include <cstdint>
#include <vector>

#include "app/External.h"
#include "app/Messages.h"

namespace media {
namespace {

std::string FirstWritableDrive(app::Application& application) {
  host::QXNetDB& database = application.host.qxNetDB;
  std::vector<std::int32_t> numbers;
  if (database.GetEquip("MEDIA", numbers) == -1) return {};
  for (const std::int32_t number : numbers) {
    host::MediaRecord record;
    if (database.GetDriveInfo(number, record) == -1) return {};
    if (record.attribute == "WRITABLE") {
      application.state.MediaAppType = record.preparationType;
      application.state.MediaAppCommand = record.programCommand;
      return record.drive;
    }
    application.host.messageLoop.Yield();
  }
  return {};
}

bool RunMediaProgram(app::Application& application) {
  const auto program = application.host.processes.Start(application.state.MediaAppCommand, host::WindowStyle::Normal);
  if (!program) return false;
  std::uint32_t exitCode = 0;
  program->Wait(exitCode);  // how it ended shows in the medium alone
  return true;
}

bool PrepareByComponent(app::Application& application, const std::string& drive) {
  const auto component = application.host.components.CreateMediaComponent();
  if (component && component->PrepareDrive(drive, "C:\\", 0, 0) == 0) return true;
  app::ShowMessage(application, 60382);
  return false;
}

}  // namespace

std::string GetDefaultMediaDrive(app::Application& application) {
  std::string location;
  if (app::GetPathEntry(application, "NetConfigDB", location) != app::kDone) {
    app::ShowMessage(application, 60326);
    return {};
  }
  std::string drive;
  if (application.host.qxNetDB.Connect(location) == 0) {
    drive = FirstWritableDrive(application);
  } else {
    app::ShowMessage(application, 60323);
  }
  application.host.qxNetDB.Close();
  return drive;
}

bool PrepareMedia(app::Application& application, const std::string& drive) {
  const std::string& type = application.state.MediaAppType;
  if (type == "APPLICATION") return RunMediaProgram(application);
  if (type == "STANDARD") return PrepareByComponent(application, drive);
  if (type == "NONE") {
    app::ShowMessage(application, 63380);
    return false;
  }
  // Hosts that name no type prepare their media by hand: not a failure.
  return true;
}

}  // namespace media
