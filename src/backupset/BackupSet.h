// A backup set as a value: where it stands, what it is made of, and what it says of itself.
//
// Packing makes it, writers take it; inspection makes it of a descriptor, and a restore takes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "backupset/Categories.h"

namespace backupset {

struct Archive {
  std::string name;        ///< with ".cab"
  std::uint64_t size = 0;  ///< bytes
  std::size_t files = 0;   ///< that were packed into it; 0 where that is not known
};

struct BackupSet {
  std::string folder;                        ///< ends in "\"
  std::vector<Archive> archives;             ///< of a packed set, in the order of the folder
  Categories categories;                     ///< that it holds
  std::map<Category, std::string> versions;  ///< of its categories, as the host counts them
  std::string appVersion;                    ///< of the host that made it
  std::string date;                          ///< in the form of that host
};

inline constexpr char kDescriptorFile[] = "BackupInfo.ini";

/// Of the host: the versions of its data, by the categories' words.
inline constexpr char kVersionFile[] = "BackupVersion.ini";

/// What the label of every backup medium says.
inline constexpr char kVolumeLabel[] = "BACKUP";

}  // namespace backupset
