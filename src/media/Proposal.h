// Folders that the selection dialog can open with.
#pragma once

#include <string>

#include "app/Application.h"

namespace media {

/// The root of the first writable media drive; ":\" when the host has none. Ends in "\".
std::string ProposeMediaDrive(app::Application& application);

/// The Windows user's desktop, "C:\" when it cannot be had. Ends in "\".
std::string DesktopFolder(app::Application& application);

/// The desktop folder. Looks the media drives up all the same: a medium chosen by hand is prepared by
/// what is found there.
std::string ProposeDesktop(app::Application& application);

}  // namespace media
