// Deletes the host's logs after a backup that contains them.
#pragma once

#include "app/ResultCodes.h"
#include "backup/JobContext.h"

namespace backup {

/// Loads and carries out the section `LOG_DELETE`: runs batch files, deletes files, runs the event log
/// and registry commands as they stand, and deletes the plain files of folders. kFailed when the
/// section is missing, a path variable is unknown (message 60326), a batch file cannot be started, a
/// folder cannot be entered, or a file cannot be deleted; the last two do not keep the rest from being
/// deleted. The staging folder is current afterwards.
app::ResultCode RunLogDeletion(const JobContext& job);

}  // namespace backup
