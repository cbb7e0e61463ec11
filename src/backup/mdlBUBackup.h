// The backup driver: writes what was gathered to the chosen destination and reports the result.
#pragma once

#include "app/ResultCodes.h"
#include "backup/Categories.h"
#include "backup/JobContext.h"
#include "backup/OperationMessages.h"

namespace backup {

/// Whether `SelectedFolder` stands on drive "A": the set then goes to floppies.
bool GoesToFloppies(const app::Application& application);

/// Writes the set in the staging folder to `SelectedFolder`: to floppies when that is on drive "A",
/// else to one medium or folder. No descriptor is left in the staging folder. Results as
/// CopyToDestination. Used by both operations that write a set.
app::ResultCode WriteBackupSet(app::Application& application, const OperationMessages& messages);

/// Shows that the operator has stopped, sets the pointer back, and returns kStopped.
app::ResultCode ReportStopped(app::Application& application, const OperationMessages& messages);

/// The driver of an ordinary backup: asks about the deletion of logs, writes the set, records the
/// backup, says so, and deletes the logs. kDone, kStopped (already shown), or kFailed or kStepFailed
/// with, perhaps, a message in `PendingMessageId`.
app::ResultCode RunBackupDriver(const JobContext& job, const CategoryChoice& choice);

}  // namespace backup
