// The space line of the selection dialog.
#pragma once

#include <string>

#include "app/Application.h"
#include "app/ResultCodes.h"

namespace media {

/// `BackupSize` against the space free on the drive of `SelectedFolder`, such as
/// "1.50MB / 10,240.00MB"; "-MB" stands for a free space that cannot be had.
/// Returns -1 when the drive holds no usable medium, else 0; `text` is set either way.
app::ResultCode GetCapacityText(app::Application& application, std::string& text);

}  // namespace media
