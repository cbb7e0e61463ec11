// Collects the images of recent studies.
#pragma once

#include <string>

#include "app/Application.h"
#include "app/ResultCodes.h"

namespace maintenance {

/// Copies the image files of the studies of the last `ImageRangeDays` days into `stagingFolder`, as
/// they stand below the host's image folder. Files on other computers, and those outside the image
/// folder as the path table writes it, letter case included, stay where they are. A file that cannot
/// be copied is logged and passed over; an unknown image folder shows message 60326.
void CopyRecentImages(app::Application& application, const std::string& stagingFolder);

/// Creates a folder and those above it that are missing. kFailed when one cannot be created.
app::ResultCode EnsureFolder(app::Application& application, const std::string& path);

}  // namespace maintenance
