// What a set is made of: the categories, one row each, and the orders in which they are gone through.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <set>

namespace backupset {

/// The categories, by their words in the version files.
enum class Category {
  PatientData,
  MenuData,
  SystemData,
  UserData,
  ExplanationData,
  ReportSetData,
  IPCounter,  ///< the logs, which carry the IP counter: a restore offers them under its name
  ReportData,
};

/// The check boxes of the backup dialog.
enum class Box { Patient, System, Log, Report };

using Categories = std::set<Category>;
using Boxes = std::set<Box>;

struct CategoryRow {
  Category category;
  Box box;
  const char* backupSection;                   ///< in the job-definition file
  const char* restoreSection;                  ///< likewise
  const char* archive;                         ///< without ".cab"
  const char* versionKey;                      ///< in both version files
  std::optional<std::size_t> restoreRecorded;  ///< target of the audit record; the report categories write none
};

/// The row of one category.
const CategoryRow& RowOf(Category category);

/// In which a backup loads, runs and packs them.
inline constexpr std::array kPackingOrder = {Category::PatientData, Category::MenuData,        Category::SystemData,
                                             Category::UserData,    Category::ExplanationData, Category::ReportSetData,
                                             Category::IPCounter,   Category::ReportData};

/// In which the descriptor lists their versions.
inline constexpr std::array kDescriptorOrder = {
    Category::PatientData,     Category::MenuData,  Category::SystemData,    Category::UserData,
    Category::ExplanationData, Category::IPCounter, Category::ReportSetData, Category::ReportData};

/// In which they are offered and restored.
inline constexpr std::array kRestoreOrder = {Category::PatientData, Category::MenuData,        Category::SystemData,
                                             Category::UserData,    Category::ExplanationData, Category::ReportSetData,
                                             Category::ReportData,  Category::IPCounter};

struct BoxRow {
  Box box;
  std::size_t backupRecorded;  ///< target of the audit record; counts the state's `CategoryNames`
};

/// In which the boxes are gone through.
inline constexpr std::array kBoxOrder = {BoxRow{Box::Patient, 0}, BoxRow{Box::System, 1}, BoxRow{Box::Log, 2},
                                         BoxRow{Box::Report, 8}};

}  // namespace backupset
