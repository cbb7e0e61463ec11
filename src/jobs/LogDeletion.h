// Deletes the host's logs after a backup that contains them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/PathTable.h"
#include "jobs/JobDefinitions.h"
#include "work/CheckedCopy.h"
#include "work/Programs.h"

namespace jobs {

/// What is known of the files whose deletion the host asks for.
struct SavedLogs {
  work::CopiedFiles copied;      ///< into the set, and how they looked then
  std::vector<std::string> own;  ///< this program's log and list of jobs: they stay, and that is no failure
  std::uint64_t gatheredAt = 0;  ///< when gathering began, as the file system counts
};

/// Loads, from the job file in `systemFolder`, and carries out the section `LOG_DELETE`: runs batch files, deletes
/// files, runs the event log and registry commands as they stand, and deletes the plain files of folders. A file that
/// has changed since it was saved stays, and so does one that has come since: it is in no set, and a failure. Fails
/// when the section is missing, a path variable is unknown (message 60326), a batch file cannot be started, a folder
/// cannot be entered, or a file stays; the last two do not keep the rest from being deleted. `stagingFolder` is current
/// afterwards.
base::Outcome RunLogDeletion(const work::Tools& tools, const app::PathTable& paths, JobDefinitions& definitions,
                             const SavedLogs& saved, const std::string& systemFolder, const std::string& stagingFolder);

}  // namespace jobs
