// The job-definition file BackupList.ini, and what of it has been loaded.
//
// One section per job, "[NAME]" alone on its line, up to the next line that begins with "[" and ends
// with "]". An item line is KEY=VALUE from the line's first character on; VALUE is a list separated
// by ";". There is no quoting, and a repeated key overwrites the earlier one.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "work/Programs.h"

namespace jobs {

inline constexpr char kJobDefinitionFile[] = "BackupList.ini";

/// The item kinds.
enum class JobKey : std::size_t { BatFile, CommonFile, EventLog, RegFile, Folder, PersonalInfo };
inline constexpr std::size_t kJobKeys = 6;

/// Stands for an empty `RegFile` value: the export of the host's registry key. It is one command
/// line, not a path.
inline constexpr char kDefaultRegistryCommand[] =
    "Reg.exe save HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvantis\\TARSUS Tarsus.reg";

/// The file that it writes.
inline constexpr char kDefaultRegistryFile[] = "Tarsus.reg";

/// Every section, at its fixed number.
inline constexpr std::array<std::string_view, 19> kJobSections = {
    "PATIENT_BACKUP", "MENU_BACKUP",         "SYSTEM_BACKUP",     "USER_BACKUP",      "EXPLANATION_BACKUP",
    "LOG_BACKUP",     "LOG_DELETE",          "PATIENT_RESTORE",   "MENU_RESTORE",     "SYSTEM_RESTORE",
    "USER_RESTORE",   "EXPLANATION_RESTORE", "IPCOUNTER_RESTORE", "MAINTENANCE",      "PERSONALINFOPROTECTION",
    "REPORT_BACKUP",  "REPORT_RESTORE",      "REPORTSET_BACKUP",  "REPORTSET_RESTORE"};

/// The fixed number of a section, 0 to 18; -1 for a name that is none, letter case included.
int SectionIndex(const std::string& section);

/// Lives from sign-in to exit. A section's values stay until the same section is loaded again.
class JobDefinitions {
 public:
  /// Reads one section, which first loses what it held. Fails when the file exists but has no such
  /// section or cannot be read, and for an item of a section without a number; succeeds otherwise, also
  /// when there is no file: nothing is loaded then, and the log has a line.
  base::Outcome Load(const work::Tools& tools, const std::string& folder, const std::string& fileName,
                     const std::string& section);

  /// The items of one kind, empty pieces included: none when the section does not hold the key, one
  /// empty item when the key stands there with an empty value.
  std::vector<std::string> Items(JobKey key, const std::string& section) const;

  /// The same without the empty ones, which name nothing.
  std::vector<std::string> FilledItems(JobKey key, const std::string& section) const;

  /// The items of `Folder`, in a backup as in a restore: one empty item, which stands for the whole application root,
  /// where the key stands there with an empty value, and else no empty or blank piece: a ";" too many must not take the
  /// whole installation.
  std::vector<std::string> FolderItems(const std::string& section) const;

 private:
  static constexpr std::size_t kSlots = 20;  // the last one is never used
  using Table = std::array<std::optional<std::string>, kSlots>;

  void Forget(int section);
  base::Outcome TakeLine(const std::string& line, int section);

  std::array<Table, kJobKeys> tables_;
};

}  // namespace jobs
