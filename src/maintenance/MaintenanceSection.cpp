// The job section of a maintenance log backup.
#include "maintenance/MaintenanceSection.h"

#include "backup/JobRunner.h"
#include "backup/Packing.h"

namespace maintenance {
namespace {

constexpr char kArchiveName[] = "MAINTENANCE";

}  // namespace

std::string MaintenanceSectionName(const app::Application& application) {
  return application.state.ProtectPersonalInfo ? "PERSONALINFOPROTECTION" : "MAINTENANCE";
}

app::ResultCode LoadMaintenanceSection(const backup::JobContext& job) {
  job.collectors.ImportClientLogs();
  return job.definitions.Load(job.application, job.application.state.SystemFolder, backup::kJobDefinitionFile,
                              MaintenanceSectionName(job.application));
}

app::ResultCode CollectMaintenanceSection(const backup::JobContext& job) {
  const std::string section = MaintenanceSectionName(job.application);
  if (backup::RunSectionItems(job, section, kArchiveName) == 0) return app::kFailed;
  return backup::CollectArchives(job.application);
}

}  // namespace maintenance
