// The job section of a maintenance log backup.
#pragma once

#include <string>

#include "app/ResultCodes.h"
#include "backup/JobContext.h"

namespace maintenance {

/// The section that belongs to `ProtectPersonalInfo`.
std::string MaintenanceSectionName(const app::Application& application);

/// Imports the client logs, whatever comes of it, then loads the section. kFailed when it is missing.
app::ResultCode LoadMaintenanceSection(const backup::JobContext& job);

/// Runs the loaded section, packs what it gathers into "MAINTENANCE.cab", whichever section it is, and
/// moves that up into the staging folder. kFailed when there is nothing to pack, or packing or the move
/// fails.
app::ResultCode CollectMaintenanceSection(const backup::JobContext& job);

}  // namespace maintenance
