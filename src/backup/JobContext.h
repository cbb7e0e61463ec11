// What running a job needs besides its section's name.
#pragma once

#include "app/Application.h"
#include "backup/JobDefinitions.h"
#include "backup/MaintenanceCollectors.h"

namespace backup {

/// References only; the objects live from sign-in to exit.
struct JobContext {
  app::Application& application;
  JobDefinitions& definitions;
  MaintenanceCollectors& collectors;
};

}  // namespace backup
