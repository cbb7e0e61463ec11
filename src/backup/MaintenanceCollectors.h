// What the job runner asks of the maintenance room, which stands above this one.
#pragma once

#include <cstdint>
#include <string>

#include "app/ResultCodes.h"

namespace backup {

/// When the maintenance script is run around the collection of a section.
enum class ScriptPhase : std::int32_t { BeforeGathering = 1, BeforePacking = 2, AfterPacking = 3 };

class MaintenanceCollectors {
 public:
  virtual ~MaintenanceCollectors() = default;

  /// Starts the host's maintenance script and waits for its end. Its success is nobody's concern.
  /// Called in a maintenance log backup only.
  virtual void RunMaintenanceScript(ScriptPhase phase) = 0;

  /// Hands the section's `PersonalInfo` items to the host's filter. kDone when all were handed over
  /// (none at all included), kFailed otherwise. Called for every backup section.
  virtual app::ResultCode ApplyPersonalInfoList(const std::string& section) = 0;

  /// Copies the image files of the last `ImageRangeDays` days below `stagingFolder`.
  virtual void CopyRecentImages(const std::string& stagingFolder) = 0;

  /// Takes in what the client workstations have dropped. kDone or kFailed; callers go on either way.
  virtual app::ResultCode ImportClientLogs() = 0;
};

}  // namespace backup
