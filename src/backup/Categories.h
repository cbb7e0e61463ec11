// From the operator's choice to the archives: which sections belong to which check box.
#pragma once

#include "app/ResultCodes.h"
#include "backup/JobContext.h"

namespace backup {

/// The check boxes of the backup dialog.
struct CategoryChoice {
  bool patient = false;
  bool system = false;  ///< menu, system, user, explanation and report-set data
  bool log = false;
  bool report = false;
};

/// Loads the sections of the chosen categories; client logs are imported first where logs are chosen,
/// whatever comes of that. kFailed for the first section that is missing.
app::ResultCode LoadBackupSections(const JobContext& job, const CategoryChoice& choice);

/// Gathers and packs the chosen categories, notes in `Present` which archives were made, and collects
/// them in the staging folder. kFailed when a chosen category yields no archive; the system group
/// fails only when none of its five does.
app::ResultCode PackCategories(const JobContext& job, const CategoryChoice& choice);

/// Writes the audit record of each chosen category. kFailed as soon as one is refused.
app::ResultCode RecordBackup(app::Application& application, const CategoryChoice& choice);

}  // namespace backup
