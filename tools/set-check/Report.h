// What a check has found out about a set.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "backupset/Categories.h"
#include "set-check/Archive.h"
#include "set-check/Workstation.h"

namespace setcheck {

enum class Restorable { Wholly, InPart, NotAtAll };

enum class State {
  Whole,
  Damaged,
  Missing,
  Foreign,       ///< whole, and by the workstation's job file no archive of this kind of data
  OtherVersion,  ///< whole, and not offered on the workstation
  NotRestored,   ///< whole, and the workstation's job file cannot put it back
  NotOffered,    ///< whole, and a damaged descriptor does not offer it
};

struct ArchiveReport {
  std::optional<backupset::Category> category;  ///< nothing for an archive that is none of a kind of data
  std::string name;                             ///< the archive's, with ".cab"
  std::string version;                          ///< of its data, as the set has it; empty where it has none
  State state = State::Whole;
  std::string why;  ///< in words, of another state than whole
  ArchiveState found;
  std::vector<ItemFinding> items;        ///< of the workstation's restore section
  std::vector<cabinet::Member> members;  ///< where a list is wanted
};

enum class Kind { Folder, Floppies, Bundle };

struct SetReport {
  std::string path;
  Kind kind = Kind::Folder;
  std::string refusal;  ///< why a restore takes nothing of it; empty where it takes something
  std::string application;
  std::string version;
  std::string date;
  std::vector<ArchiveReport> archives;
  std::vector<std::string> notes;  ///< what is odd and costs nothing

  Restorable Verdict() const;
  /// How many kinds of data it is to hold, and how many of them can be restored.
  std::size_t Promised() const;
  std::size_t Whole() const;
};

/// "PatientData", and the like.
std::string CategoryName(backupset::Category category);

/// The report in words, UTF-8: the first line is the answer.
std::string InWords(const SetReport& report);

/// The report as an object of JSON; docs/backup-set.md has the schema.
std::string AsJson(const SetReport& report);

/// `text` as a string of JSON.
std::string JsonText(const std::string& text);

}  // namespace setcheck
