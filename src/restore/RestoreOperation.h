// Restoring, as the selection dialog serves it.
#pragma once

#include <string>

#include "app/Application.h"
#include "backup/JobDefinitions.h"
#include "media/SelectionOperation.h"

namespace restore {

class RestoreOperation : public media::SelectionOperation {
 public:
  RestoreOperation(app::Application& application, backup::JobDefinitions& definitions)
      : application_(application), definitions_(definitions) {}

  std::string ProposeFolder() override;
  bool ShowsSpace() const override { return false; }
  /// Checks the drive, then shows the restore dialog for the set in `SelectedFolder`. kDone when a
  /// restore has fully succeeded; everything else was said and is kStopped.
  app::ResultCode Run() override;
  media::FailureMessages DefaultMessages() const override { return {}; }
  /// A restore clears its own staging folder away.
  void Unloaded() override {}

 private:
  app::Application& application_;
  backup::JobDefinitions& definitions_;
};

}  // namespace restore
