// The maintenance log backup, as the selection dialog sees it.
#pragma once

#include <string>

#include "backup/WritingOperation.h"

namespace maintenance {

class MaintenanceOperation : public backup::WritingOperation {
 public:
  explicit MaintenanceOperation(app::Application& application)
      : WritingOperation(application, app::Operation::MaintenanceLogBackup) {}

  /// The desktop: the bundle is handed on from there.
  std::string ProposeFolder() override;

  /// Exports the list of studies, writes the set and says so. A list that fails is a failed bundle.
  app::ResultCode Run() override;

 private:
  app::ResultCode Write();
};

}  // namespace maintenance
