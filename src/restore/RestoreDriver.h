// Carries a restore out: brings the archives in, unpacks each category and puts it back.
#pragma once

#include "app/Application.h"
#include "app/ResultCodes.h"
#include "backup/JobDefinitions.h"
#include "restore/Categories.h"

namespace restore {

/// Restores the selected categories of the set in `SelectedFolder`, in the table's order, through a
/// staging folder that exists already and is gone afterwards, whatever happens. A source on drive A
/// is a pile of floppies; one on any other drive, "a" included, is a folder or one medium.
/// kDone; kStopped when the operator stopped the gathering; kFailed when gathering or unpacking
/// failed; kStepFailed when a job or an audit record did. The message may be in `PendingMessageId`.
/// What was restored before a failure stays restored.
app::ResultCode RunRestore(app::Application& application, backup::JobDefinitions& definitions,
                           const Selection& selection);

/// Removes the staging folder, if it is there; message 60411 when that fails.
void RemoveStagingOrSay(app::Application& application);

}  // namespace restore
