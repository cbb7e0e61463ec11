// The space line of the selection dialog.
#include "media/Capacity.h"

#include <cstdint>

#include "app/TextFormat.h"
#include "app/WindowsPath.h"
#include "media/DriveStatus.h"

namespace media {

app::ResultCode GetCapacityText(app::Application& application, std::string& text) {
  const std::string letter = app::DriveLetterOf(application.state.SelectedFolder);
  const std::string drive = letter + ":";
  const bool usable = GetDriveStatus(application, letter) > kDriveUnusable;
  std::int64_t freeSpace = -1;
  if (usable && application.host.drives.IsReady(drive)) freeSpace = application.host.drives.FreeSpace(drive);

  text = app::FormatMegabytes(application.state.BackupSize) + "MB / ";
  text += freeSpace < 0 ? "-" : app::FormatMegabytes(static_cast<std::uint64_t>(freeSpace));
  text += "MB";
  return usable ? app::kDone : app::kFailed;
}

}  // namespace media
