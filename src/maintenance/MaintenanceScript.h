// The host's own script around the collection of a maintenance log.
#pragma once

#include "app/Application.h"
#include "backup/MaintenanceCollectors.h"

namespace maintenance {

/// Runs "Maintenance.js" of the system folder hidden and waits for its end. It is handed the phase, the
/// staging folder, the user folder, `CollectImages` and `ImageRangeDays`. Whether it starts and how it
/// ends is not looked at: the script is the host's business.
void RunMaintenanceScript(app::Application& application, backup::ScriptPhase phase);

}  // namespace maintenance
