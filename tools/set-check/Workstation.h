// A workstation as its files describe it: what it would make of the archives of a set.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "backupset/Categories.h"
#include "backupset/Descriptor.h"
#include "cabinet/Structure.h"
#include "jobs/JobDefinitions.h"
#include "restore/Foresight.h"
#include "set-check/NoHost.h"

namespace setcheck {

/// An item of a restore section.
struct ItemFinding {
  std::string item;       ///< where it puts them
  std::size_t files = 0;  ///< of the archive that it puts back
};

/// An archive, held against the sections of its kind of data.
struct Matching {
  std::vector<ItemFinding> items;
  std::string foreign;  ///< what it is instead of an archive of this kind; empty where nothing says so
};

class Workstation {
 public:
  explicit Workstation(NoHost& noHost) : noHost_(noHost) {}

  /// Reads BackupList.ini, BackupVersion.ini and Directory.ini of a system folder, as far as they are there. Fails
  /// where the folder cannot be listed or has none of the first two. The folder stays in use.
  base::Outcome Open(Folder& system);

  bool HasVersions() const { return hasVersions_; }
  bool HasJobs() const { return hasJobs_; }

  /// Why a restore of this kind of data would end before it begins; empty where it would not.
  std::string WhyNotRestored(backupset::Category category) const;

  Matching Match(backupset::Category category, const cabinet::Structure& archive) const;

  /// Where a restore would put a member of an archive, from the application's root on, with "\" between its parts;
  /// empty where it would not, or somewhere else.
  std::string PlaceOf(backupset::Category category, const std::string& member) const;

 private:
  struct Sections {
    std::vector<restore::Target> restored;  ///< what the restore section puts back
    std::vector<restore::Target> saved;     ///< what the backup section can have gathered
    bool unsure = false;                    ///< some of these need a path table that is not there
    std::string why;                        ///< it cannot be carried out
  };

  void Load(backupset::Category category);
  std::size_t CountSaved(backupset::Category category, const cabinet::Structure& archive) const;

  NoHost& noHost_;
  jobs::JobDefinitions definitions_;
  std::string root_;  ///< of the application, as the path table has it
  bool hasVersions_ = false;
  bool hasJobs_ = false;
  std::map<backupset::Category, Sections> sections_;
};

}  // namespace setcheck
