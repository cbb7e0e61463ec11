// Takes in the maintenance archives that client workstations drop into the update folder.
#pragma once

#include <string>

#include "app/PathTable.h"
#include "host/Libraries.h"
#include "work/Tools.h"

namespace jobs {

/// Moves every "Maintenance_*.cab" of the update folder into the client-log folder (made when it is
/// missing, one level), unpacks and deletes it, then prunes the client-log folder. Fails as soon as
/// a step fails; an unknown path-table entry also shows message 60326. `programFolder` is the current folder
/// afterwards, here and below.
base::Outcome ImportClientLogs(const work::Tools& tools, const app::PathTable& paths, host::QX32& registry,
                               const std::string& programFolder);

/// Unpacks an archive that stands in `folder`, with the paths stored in it. Fails when the archiver
/// cannot be started there; how it ends is logged and otherwise not looked at.
base::Outcome ExtractClientArchive(const work::Tools& tools, const std::string& archivePath, const std::string& folder,
                                   const std::string& programFolder);

}  // namespace jobs
