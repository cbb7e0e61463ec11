// The host's own script around the collection of a maintenance log.
#include "maintenance/MaintenanceScript.h"

#include <string>

#include "app/External.h"
#include "app/WindowsPath.h"

namespace maintenance {

void RunMaintenanceScript(app::Application& application, backup::ScriptPhase phase) {
  const app::State& state = application.state;
  app::RunAndWait(application, "cscript " + app::Quoted(state.SystemFolder + "Maintenance.js") + " " +
                                   std::to_string(static_cast<std::int32_t>(phase)) + " " +
                                   app::Quoted(state.StagingFolder) + " " + app::Quoted(state.UserFolder) + " " +
                                   std::to_string(state.CollectImages) + " " + std::to_string(state.ImageRangeDays));
}

}  // namespace maintenance
