// Deletes the host's logs after a backup that contains them.
#pragma once

#include <string>

#include "app/PathTable.h"
#include "jobs/JobDefinitions.h"
#include "work/Programs.h"

namespace jobs {

/// Loads, from the job file in `systemFolder`, and carries out the section `LOG_DELETE`: runs batch files, deletes
/// files, runs the event log and registry commands as they stand, and deletes the plain files of folders. Fails when
/// the section is missing, a path variable is unknown (message 60326), a batch file cannot be started, a folder cannot
/// be entered, or a file cannot be deleted; the last two do not keep the rest from being deleted. `stagingFolder` is
/// current afterwards.
base::Outcome RunLogDeletion(const work::Tools& tools, const app::PathTable& paths, JobDefinitions& definitions,
                             const std::string& systemFolder, const std::string& stagingFolder);

}  // namespace jobs
