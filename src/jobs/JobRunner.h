// Runs one section of the job-definition file and packs what it gathers.
#pragma once

#include <cstdint>
#include <string>

#include "backupset/BackupSet.h"
#include "jobs/Items.h"

namespace jobs {

struct SectionResult {
  int kinds = 0;                        ///< item kinds that produced output; 0: there is no archive
  backupset::Archive archive;           ///< that was made
  std::int32_t PersonalInfoResult = 0;  ///< first non-zero code of the personal-information filter
  base::Outcome outcome;                ///< why there is no archive
};

/// Gathers the items of a loaded section into the work folder and packs them into `archiveName`
/// + ".cab" in the archive folder.
SectionResult RunSectionItems(const Job& job, const std::string& section, const std::string& archiveName);

/// When the maintenance script is run around the collection of a section.
enum class ScriptPhase : std::int32_t { BeforeGathering = 1, BeforePacking = 2, AfterPacking = 3 };

/// Runs "Maintenance.js" of the system folder hidden and waits for its end. It is handed the phase, the
/// work folder, the user folder, `CollectImages` and `ImageRangeDays`. Whether it starts and how it
/// ends is not looked at: the script is the host's business.
void RunMaintenanceScript(const Job& job, ScriptPhase phase);

}  // namespace jobs
