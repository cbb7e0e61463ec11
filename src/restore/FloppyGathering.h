// Gathers the pieces of a floppy set disk by disk.
#pragma once

#include "app/Application.h"
#include "app/ResultCodes.h"

namespace restore {

/// Asks for each disk of the set in `SelectedFolder`, copies its piece into the staging folder, joins
/// the pieces and unpacks them, so that the category archives stand in the staging folder. kStopped
/// when the operator stopped or an error was shown; kFailed with the message in `PendingMessageId`.
app::ResultCode GatherSplitArchive(app::Application& application);

}  // namespace restore
