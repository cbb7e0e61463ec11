// The maintenance room's part in running a job.
#pragma once

#include <string>

#include "app/Application.h"
#include "backup/JobDefinitions.h"
#include "backup/MaintenanceCollectors.h"

namespace maintenance {

class Collectors : public backup::MaintenanceCollectors {
 public:
  Collectors(app::Application& application, const backup::JobDefinitions& definitions)
      : application_(application), definitions_(definitions) {}

  void RunMaintenanceScript(backup::ScriptPhase phase) override;
  app::ResultCode ApplyPersonalInfoList(const std::string& section) override;
  void CopyRecentImages(const std::string& stagingFolder) override;
  app::ResultCode ImportClientLogs() override;

 private:
  app::Application& application_;
  const backup::JobDefinitions& definitions_;
};

}  // namespace maintenance
