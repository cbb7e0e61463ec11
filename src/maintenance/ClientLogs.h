// Takes in the maintenance archives that client workstations drop into the update folder.
#pragma once

#include <string>

#include "app/Application.h"
#include "app/ResultCodes.h"

namespace maintenance {

/// Moves every "Maintenance_*.cab" of the update folder into the client-log folder (made when it is
/// missing, one level), unpacks and deletes it, then prunes the client-log folder. kFailed as soon as
/// a step fails; an unknown path-table entry also shows message 60326.
app::ResultCode ImportClientLogs(app::Application& application);

/// Unpacks an archive that stands in `folder`, with the paths stored in it. kFailed when the archiver
/// cannot be started there; how it ends is logged and otherwise not looked at. The program's own folder
/// is current afterwards.
app::ResultCode ExtractClientArchive(app::Application& application, const std::string& archivePath,
                                     const std::string& folder);

}  // namespace maintenance
