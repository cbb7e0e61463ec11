// Writes the archives and their descriptor to one medium or folder.
#pragma once

#include "app/Application.h"
#include "app/ResultCodes.h"
#include "backup/OperationMessages.h"

namespace backup {

/// Checks and, where it must be, formats and labels the medium of `SelectedFolder`, checks its space,
/// asks before it uses a foreign volume, makes a folder or overwrites, then writes the descriptor into
/// the staging folder and copies it with every archive. A file that does not arrive in its full size
/// is a failed copy. kStopped when the operator stopped or an error was shown; kFailed and kStepFailed
/// may leave a message in `PendingMessageId`.
app::ResultCode CopyToDestination(app::Application& application, const OperationMessages& messages);

}  // namespace backup
