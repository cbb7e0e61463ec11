// The descriptor BackupInfo.ini that goes with every backup set: written, read, and judged.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "app/Application.h"
#include "backupset/BackupSet.h"
#include "work/Programs.h"
#include "work/WorkFolder.h"

namespace backupset {

/// This system, as sets are marked and judged by it.
struct HostIdentity {
  std::string softwareVersion;
  std::string applicationType;  ///< the host application's name without ".exe"
  std::string versionFolder;    ///< where BackupVersion.ini stands
};

HostIdentity IdentityOf(const app::State& state, const app::AppearanceSettings& settings);

/// One disk of a set that is split over floppies.
struct FloppyDisk {
  std::int32_t number = 1;       ///< from 1
  std::uint32_t joinedSize = 0;  ///< bytes of the joined archive
};

/// Writes the descriptor of `set` into the work folder, and dates the set by it. For a floppy the joined archive is the
/// only one, and an earlier disk's descriptor is deleted first. Fails when the file cannot be written, the host's
/// version or application is unknown, or a category of the set has no version in the host's version file; what was
/// written until then stays.
base::Outcome WriteDescriptor(const work::Tools& tools, host::Clock& clock, const HostIdentity& host,
                              const work::WorkFolder& workFolder, BackupSet& set,
                              const std::optional<FloppyDisk>& disk = std::nullopt);

enum class Offer {
  Missing,       ///< the set does not hold the category
  OtherVersion,  ///< it holds the category in a version that is not this system's
  Fits,
};

struct Inspection {
  BackupSet set;
  std::map<Category, Offer> offers;  ///< for every category
};

/// Reads the descriptor in `folder`, which ends in "\". Fails when this system may not restore the set, with the
/// message that says why: 60426 no descriptor, 60427 an incomplete one, 60429 another host application, 60430 another
/// major version. Minor versions may differ.
base::Outcome InspectBackupSet(const work::Tools& tools, const HostIdentity& host, const std::string& folder,
                               Inspection& inspection);

/// The trimmed value of the first line anywhere in the file that begins with `key` and "=";
/// empty when there is none. Sections do not count, a blank before "=" or the key hides the
/// line, and "*", "?", "#" and "[...]" in the key are wildcards.
std::string ReadIniValue(const work::Tools& tools, const std::string& folder, const std::string& fileName,
                         const std::string& key);

}  // namespace backupset
