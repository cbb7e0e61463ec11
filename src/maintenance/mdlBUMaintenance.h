// The maintenance log backup, from the main menu's choice to the selection dialog.
#pragma once

#include "app/ResultCodes.h"
#include "backup/JobContext.h"

namespace maintenance {

/// Asks for the options, collects, and has the destination chosen, where the bundle is written. Whatever
/// goes wrong was shown when this returns, and no staging folder is left.
void StartMaintenanceLogBackup(const backup::JobContext& job);

/// Collects and packs everything into a new staging folder and measures it. kFailed after message 60460,
/// 60470 or 60471; the staging folder is then gone.
app::ResultCode MaintenanceLogBackup(const backup::JobContext& job);

}  // namespace maintenance
