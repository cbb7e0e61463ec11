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
/// only one, and an earlier disk's descriptor is deleted first. Fails when the file cannot be written, or where the set
/// has categories, and so is made to be restored, when the host's application is unknown, its version is none that a
/// restore accepts, or the host's version file lacks one of the categories; what was written until then stays.
base::Outcome WriteDescriptor(const work::Tools& tools, host::Clock& clock, const HostIdentity& host,
                              const work::WorkFolder& workFolder, BackupSet& set,
                              const std::optional<FloppyDisk>& disk = std::nullopt);

/// Deletes the descriptor in `folder`, which ends in "\", if there is one. It is emptied on the medium before: a power
/// cut that undoes the deletion must not bring it back.
base::Outcome RetractDescriptor(host::FileSystem& files, const std::string& folder);

/// Retracts the descriptor of a copy that failed, and returns the failure; its cause tells when the descriptor stays.
base::Outcome WithoutDescriptor(host::FileSystem& files, const std::string& folder, base::Outcome failure);

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
/// major version. Minor versions may differ. A descriptor that cannot be read to its end is an incomplete one, and so
/// is one that names the archive of a category and not its version: its last lines are missing.
base::Outcome InspectBackupSet(const work::Tools& tools, const HostIdentity& host, const std::string& folder,
                               Inspection& inspection);

/// What the descriptors of all disks of one set have in common. Their dates may differ: the clock moves on from disk to
/// disk.
struct SetMark {
  std::string appType;
  std::string appVersion;
  std::string archives;
  std::string diskCount;
  std::map<Category, std::string> versions;

  /// Whether `other` may be of the same set: it is of the same version and has every category that this one has, in the
  /// same version; what else one of them lacks, because a disk could not be read, does not count.
  bool Fits(const SetMark& other) const;
};

/// Reads it from the descriptor in `folder`, which ends in "\"; what is not there, or cannot be read, stays empty.
SetMark ReadMark(const work::Tools& tools, const std::string& folder);

/// Whether this system may restore anything of a set with this mark.
bool MayRestore(const SetMark& mark, const HostIdentity& host);

/// The trimmed value of the first line anywhere in the file that begins with `key` and "=";
/// empty when there is none. Sections do not count, a blank before "=" or the key hides the
/// line, and "*", "?", "#" and "[...]" in the key are wildcards.
std::string ReadIniValue(const work::Tools& tools, const std::string& folder, const std::string& fileName,
                         const std::string& key);

}  // namespace backupset
