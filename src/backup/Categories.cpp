// From the operator's choice to the archives: which sections belong to which check box.
#include "backup/Categories.h"

#include <array>
#include <cstddef>

#include "app/Records.h"
#include "backup/JobRunner.h"
#include "backup/Packing.h"

namespace backup {
namespace {

using Choice = bool CategoryChoice::*;

struct Category {
  Choice choice;
  const char* section;
  const char* archive;
  bool app::CategoriesPresent::*present;
};

// In the order in which they are loaded, run and packed.
constexpr std::array<Category, 8> kCategories = {{
    {&CategoryChoice::patient, "PATIENT_BACKUP", "PatientData", &app::CategoriesPresent::PatientData},
    {&CategoryChoice::system, "MENU_BACKUP", "MenuData", &app::CategoriesPresent::MenuData},
    {&CategoryChoice::system, "SYSTEM_BACKUP", "SystemData", &app::CategoriesPresent::SystemData},
    {&CategoryChoice::system, "USER_BACKUP", "UserData", &app::CategoriesPresent::UserData},
    {&CategoryChoice::system, "EXPLANATION_BACKUP", "ExplanationData", &app::CategoriesPresent::ExplanationData},
    {&CategoryChoice::system, "REPORTSET_BACKUP", "ReportSetData", &app::CategoriesPresent::ReportSetData},
    // The logs carry the IP counter, and restore offers them under its name.
    {&CategoryChoice::log, "LOG_BACKUP", "LogData", &app::CategoriesPresent::IPCounter},
    {&CategoryChoice::report, "REPORT_BACKUP", "ReportData", &app::CategoriesPresent::ReportData},
}};

struct CheckBox {
  Choice choice;
  std::size_t auditCategory;  ///< counts the state's `CategoryNames`
};

constexpr std::array<CheckBox, 4> kCheckBoxes = {{{&CategoryChoice::patient, 0},
                                                  {&CategoryChoice::system, 1},
                                                  {&CategoryChoice::log, 2},
                                                  {&CategoryChoice::report, 8}}};

/// Packs all categories behind one check box; whether any archive was made.
bool PackCheckBox(const JobContext& job, Choice choice) {
  bool any = false;
  for (const Category& category : kCategories) {
    if (category.choice != choice) continue;
    if (RunSectionItems(job, category.section, category.archive) == 0) continue;
    job.application.state.Present.*category.present = true;
    any = true;
  }
  return any;
}

}  // namespace

app::ResultCode LoadBackupSections(const JobContext& job, const CategoryChoice& choice) {
  const std::string& folder = job.application.state.SystemFolder;
  if (choice.log) job.collectors.ImportClientLogs();
  for (const Category& category : kCategories) {
    if (!(choice.*category.choice)) continue;
    if (job.definitions.Load(job.application, folder, kJobDefinitionFile, category.section) != app::kDone) {
      return app::kFailed;
    }
  }
  return app::kDone;
}

app::ResultCode PackCategories(const JobContext& job, const CategoryChoice& choice) {
  job.application.state.Present = {};
  for (const CheckBox& box : kCheckBoxes) {
    if (choice.*box.choice && !PackCheckBox(job, box.choice)) return app::kFailed;
  }
  return CollectArchives(job.application);
}

app::ResultCode RecordBackup(app::Application& application, const CategoryChoice& choice) {
  for (const CheckBox& box : kCheckBoxes) {
    if (!(choice.*box.choice)) continue;
    const std::string& user = application.state.UserId;
    if (app::RecordCategoryPhase(application, user, app::Phase::Start, box.auditCategory) != 0) return app::kFailed;
  }
  return app::kDone;
}

}  // namespace backup
