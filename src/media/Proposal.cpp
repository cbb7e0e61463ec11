// Folders that the selection dialog can open with.
#include "media/Proposal.h"

#include "app/WindowsPath.h"
#include "media/MediaDrive.h"

namespace media {

std::string ProposeMediaDrive(app::Application& application) {
  std::string drive = GetDefaultMediaDrive(application);
  if (drive.size() < 2) drive = app::Trim(drive) + ":\\";
  return app::WithTrailingBackslash(drive);
}

std::string DesktopFolder(app::Application& application) {
  const std::string desktop = application.host.shell.DesktopFolder();
  return desktop.empty() ? "C:\\" : app::WithTrailingBackslash(desktop);
}

std::string ProposeDesktop(app::Application& application) {
  GetDefaultMediaDrive(application);
  return DesktopFolder(application);
}

}  // namespace media
