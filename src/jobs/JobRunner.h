// Runs one section of the job-definition file and packs what it gathers.
#pragma once

#include <cstdint>
#include <string>

#include "backupset/BackupSet.h"
#include "jobs/Items.h"

namespace jobs {

struct SectionResult {
  backupset::Archive archive;           ///< that was made
  std::int32_t PersonalInfoResult = 0;  ///< first non-zero code of the personal-information filter
  base::Outcome outcome;                ///< why there is no archive
};

/// Plans, for the job's progress, what RunSectionItems() will gather and pack.
void PlanSection(const Job& job, const std::string& section, const std::string& archiveName);

/// Gathers the items of a loaded section into the work folder and packs them into `archiveName`
/// + ".cab" in the archive folder. `copied`, where it is given, learns which files were copied.
SectionResult RunSectionItems(const Job& job, const std::string& section, const std::string& archiveName,
                              work::CopiedFiles* copied = nullptr);

/// When the maintenance script is run around the collection of a section.
enum class ScriptPhase : std::int32_t { BeforeGathering = 1, BeforePacking = 2, AfterPacking = 3 };

/// Runs "Maintenance.js" of the system folder hidden and waits for its end. It is handed the phase, the
/// work folder, the user folder, `CollectImages` and `ImageRangeDays`. What comes of it is
/// logged and otherwise not looked at: the script is the host's business.
void RunMaintenanceScript(const Job& job, ScriptPhase phase);

}  // namespace jobs
