// The maintenance room's part in running a job.
#include "maintenance/Collectors.h"

#include "maintenance/ClientLogs.h"
#include "maintenance/MaintenanceScript.h"
#include "maintenance/PersonalInfo.h"
#include "maintenance/RecentImages.h"

namespace maintenance {

void Collectors::RunMaintenanceScript(backup::ScriptPhase phase) {
  maintenance::RunMaintenanceScript(application_, phase);
}

app::ResultCode Collectors::ApplyPersonalInfoList(const std::string& section) {
  return maintenance::ApplyPersonalInfoList(application_, definitions_, section);
}

void Collectors::CopyRecentImages(const std::string& stagingFolder) {
  maintenance::CopyRecentImages(application_, stagingFolder);
}

app::ResultCode Collectors::ImportClientLogs() {
  return maintenance::ImportClientLogs(application_);
}

}  // namespace maintenance
