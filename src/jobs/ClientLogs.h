// The maintenance archives that client workstations drop into the update folder: taken in, and how many are kept.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "app/PathTable.h"
#include "host/Libraries.h"
#include "work/Programs.h"

namespace jobs {

/// Moves every "Maintenance_*.cab" of the update folder into the client-log folder (made when it is
/// missing, one level), unpacks and deletes it, then prunes the client-log folder. Archives that an earlier
/// run has left there come first. Fails as soon as a step fails, with a warning in the log; an unknown path-table
/// entry also shows message 60326. `programFolder` is the current folder afterwards, here and below.
base::Outcome ImportClientLogs(const work::Tools& tools, const app::PathTable& paths, host::QX32& registry,
                               const std::string& programFolder);

/// Unpacks an archive that stands in `folder`, with the paths stored in it. Fails when the archiver
/// cannot be started there; how it ends is logged and otherwise not looked at.
base::Outcome ExtractClientArchive(const work::Tools& tools, const std::string& archivePath, const std::string& folder,
                                   const std::string& programFolder);

/// Keeps, of each client's folders "Maintenance_..." in `folder`, as many of the newest as the registry
/// value "ClientLogBackupNumber" says (20 when it cannot be read) and deletes the others. A client is
/// told by a folder's name without its last 13 characters; one without a time stamp, of which that leaves nothing but a
/// part of "Maintenance_", is no client's. Fails, with nothing deleted and a warning in the log, when a name is shorter
/// than 13 characters or the folder cannot be listed; a folder that cannot be deleted is logged and passed over.
base::Outcome PruneClientLogBackups(const work::Tools& tools, host::QX32& registry, const std::string& folder);

/// Sorts the first `count` texts in descending order without regard to case. Equal texts may change places.
void SortDescending(std::vector<std::string>& list, std::size_t count);

}  // namespace jobs
