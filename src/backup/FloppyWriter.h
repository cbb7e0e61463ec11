// Writes a backup set to floppies: joined, cut into pieces, one piece a disk.
#pragma once

#include "app/Application.h"
#include "app/ResultCodes.h"
#include "backup/OperationMessages.h"

namespace backup {

/// Joins the archives of the staging folder, cuts the result, and writes disk by disk: asks for the
/// disk, formats and labels it, and puts its descriptor and its piece on it. Nothing but the joined
/// archive and its pieces is left in the archive folder. kStopped when the operator stopped or an error
/// was shown; kFailed, perhaps with a message in `PendingMessageId`.
app::ResultCode WriteToFloppies(app::Application& application, const OperationMessages& messages);

}  // namespace backup
