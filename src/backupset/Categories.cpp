// The one table of the categories.
#include "backupset/Categories.h"

#include <algorithm>

namespace backupset {
namespace {

constexpr std::array<CategoryRow, 8> kRows = {{
    {Category::PatientData, Box::Patient, "PATIENT_BACKUP", "PATIENT_RESTORE", "PatientData", "PatientData", 0},
    {Category::MenuData, Box::System, "MENU_BACKUP", "MENU_RESTORE", "MenuData", "MenuData", 3},
    {Category::SystemData, Box::System, "SYSTEM_BACKUP", "SYSTEM_RESTORE", "SystemData", "SystemData", 4},
    {Category::UserData, Box::System, "USER_BACKUP", "USER_RESTORE", "UserData", "UserData", 5},
    {Category::ExplanationData, Box::System, "EXPLANATION_BACKUP", "EXPLANATION_RESTORE", "ExplanationData",
     "ExplanationData", 6},
    {Category::ReportSetData, Box::System, "REPORTSET_BACKUP", "REPORTSET_RESTORE", "ReportSetData", "ReportSetData",
     std::nullopt},
    // The set has no archive of its own for the IP counter: it travels with the logs.
    {Category::IPCounter, Box::Log, "LOG_BACKUP", "IPCOUNTER_RESTORE", "LogData", "IPCounter", 7},
    {Category::ReportData, Box::Report, "REPORT_BACKUP", "REPORT_RESTORE", "ReportData", "ReportData", std::nullopt},
}};

}  // namespace

const CategoryRow& RowOf(Category category) {
  return *std::ranges::find(kRows, category, &CategoryRow::category);
}

}  // namespace backupset
