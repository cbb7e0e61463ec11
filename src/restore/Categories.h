// The categories that a restore can offer, in the order in which they are offered and restored.
#pragma once

#include <array>
#include <cstddef>
#include <optional>

namespace restore {

struct Category {
  const char* key;                         ///< in both version descriptors
  const char* section;                     ///< in the job-definition file
  const char* archive;                     ///< without ".cab"
  std::optional<std::size_t> auditTarget;  ///< of `CategoryNames`; the report categories write no record
};

inline constexpr std::size_t kCategories = 8;

/// The IP counter travels in the archive of the log data: the set has no archive of its own for it.
inline constexpr std::array<Category, kCategories> kCategoryTable{{
    {"PatientData", "PATIENT_RESTORE", "PatientData", 0},
    {"MenuData", "MENU_RESTORE", "MenuData", 3},
    {"SystemData", "SYSTEM_RESTORE", "SystemData", 4},
    {"UserData", "USER_RESTORE", "UserData", 5},
    {"ExplanationData", "EXPLANATION_RESTORE", "ExplanationData", 6},
    {"ReportSetData", "REPORTSET_RESTORE", "ReportSetData", std::nullopt},
    {"ReportData", "REPORT_RESTORE", "ReportData", std::nullopt},
    {"IPCounter", "IPCOUNTER_RESTORE", "LogData", 7},
}};

/// Only privileged users may put it back.
inline constexpr std::size_t kIPCounter = 7;

/// Which categories to restore, by their place in the table.
using Selection = std::array<bool, kCategories>;

}  // namespace restore
