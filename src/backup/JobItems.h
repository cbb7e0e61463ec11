// The executors that gather the items of one section into the staging folder, one per item kind.
//
// Each returns kDone when at least one item produced output, kStopped when nothing was produced, and
// kFailed when a path variable is unknown (message 60326) or, for some kinds, a step fails.
#pragma once

#include <string>

#include "app/ResultCodes.h"
#include "backup/JobContext.h"

namespace backup {

/// Runs the programs. One that cannot be started fails the kind. In a maintenance log backup, what
/// the databases' export has left in a program's folder is moved to the staging folder's "BCP\" after
/// each run; a move that fails fails the kind.
app::ResultCode RunBatFileItems(const JobContext& job, const std::string& section);

/// Copies files and file patterns. A copy that fails is logged and otherwise passed over.
app::ResultCode RunCommonFileItems(const JobContext& job, const std::string& section);

/// Runs the programs and takes the "*.evt" files that stand in their folders afterwards.
app::ResultCode RunEventLogItems(const JobContext& job, const std::string& section);

/// The same with "*.reg" files. The default export command is run as it stands, in the staging folder.
app::ResultCode RunRegFileItems(const JobContext& job, const std::string& section);

/// Copies folders with all that is in them; one without a drive is taken from the application root.
app::ResultCode RunFolderItems(const JobContext& job, const std::string& section);

}  // namespace backup
