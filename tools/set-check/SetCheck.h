// Checks one set: what its descriptor promises against what is there, as a restore would judge it, and every archive.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "backupset/BackupSet.h"
#include "set-check/Archive.h"
#include "set-check/Disks.h"
#include "set-check/NoHost.h"
#include "set-check/Report.h"
#include "set-check/Workstation.h"

namespace setcheck {

/// Who is to restore the set. What is empty is taken from the set itself.
struct Identity {
  std::string application;  ///< the host application's name without ".exe"
  std::string version;      ///< its software version
};

/// The archives of a set, by their names with ".cab".
struct Archives {
  std::vector<std::string> names;
  /// Stopped, with a word for it, where there is none of this name.
  std::function<base::Obtained<cabinet::Source>(const std::string& name)> open;
};

/// Of a set in a folder, which must stay.
Archives ArchivesOf(Folder& folder);
/// Of a set on floppies: those in the joined archive.
Archives ArchivesOf(std::shared_ptr<cabinet::Source> joined, std::shared_ptr<const cabinet::Structure> structure);

/// The kind of data whose archive has this name.
std::optional<backupset::Category> CategoryOf(const std::string& archive);

class SetCheck {
 public:
  struct Options {
    Identity identity;
    bool list = false;  ///< the report is to have the members of each archive
  };

  /// `workstation`: null where none is known.
  SetCheck(NoHost& noHost, const Workstation* workstation, Options options, Progress progress)
      : noHost_(noHost), workstation_(workstation), options_(std::move(options)), archives_(std::move(progress)) {}

  /// The set that stands in a folder.
  SetReport Check(Folder& folder);

  /// The set that a pile of floppies makes up.
  SetReport Check(const Pile& pile);

 private:
  backupset::BackupSet Inspect(Folder& folder, SetReport& report);
  void CheckCategories(const backupset::BackupSet& set, const Archives& archives, SetReport& report);
  ArchiveReport CheckArchive(std::optional<backupset::Category> category, const std::string& name,
                             const Archives& archives);
  void Judge(ArchiveReport& archive);
  void NoteOthers(Folder& folder, const Archives& archives, SetReport& report);
  void CheckJoined(const Pieces& pieces, const backupset::BackupSet& set, SetReport& report);

  NoHost& noHost_;
  const Workstation* workstation_;
  const Options options_;
  ArchiveCheck archives_;
  std::map<backupset::Category, backupset::Offer> offers_;  ///< of the set that was inspected last
};

/// What the folder is to whoever looks for sets.
enum class Found { Nothing, Set, Disk };
Found WhatIs(NoHost& noHost, Folder& folder);

}  // namespace setcheck
