// Checks one set.
#include "set-check/SetCheck.h"

#include <algorithm>

#include "backupset/Descriptor.h"
#include "backupset/Pieces.h"
#include "base/Path.h"
#include "base/Text.h"

namespace setcheck {
namespace {

using backupset::Category;
using backupset::RowOf;

constexpr char kCabinet[] = ".cab";
constexpr char kJoinedMember[] = ".tmp";  ///< behind an archive's name in the joined one
constexpr char kMaintenanceArchive[] = "MAINTENANCE.cab";

std::string ArchiveOf(Category category) {
  return std::string(RowOf(category).archive) + kCabinet;
}

bool EndsIn(const std::string& name, const std::string& end) {
  return name.size() >= end.size() && base::SameName(name.substr(name.size() - end.size()), end);
}

/// Words of the program's rules, without the name that the folder has for them.
std::string WithoutFolder(const std::string& words) {
  return base::Replaced(words, NoHost::kSet, "");
}

std::string Value(NoHost& noHost, const char* key) {
  return backupset::ReadIniValue(noHost.Tools(), NoHost::kSet, backupset::kDescriptorFile, key);
}

/// Why an archive that is not there cannot be opened.
base::Outcome Missing() {
  return {base::Result::Stopped, "its archive is not there"};
}

bool Promises(const SetReport& report, const std::string& name) {
  return std::ranges::any_of(report.archives,
                             [&](const ArchiveReport& archive) { return base::SameName(archive.name, name); });
}

}  // namespace

Archives ArchivesOf(Folder& folder) {
  Archives archives;
  for (const Entry& entry : folder.entries) {
    if (!entry.isFolder && EndsIn(entry.name, kCabinet)) archives.names.push_back(entry.name);
  }
  archives.open = [&folder](const std::string& name) -> base::Obtained<cabinet::Source> {
    const Entry* const file = folder.Find(name);
    if (!file) return Missing();
    return folder.Open(*file);
  };
  return archives;
}

Archives ArchivesOf(std::shared_ptr<cabinet::Source> joined, std::shared_ptr<const cabinet::Structure> structure) {
  Archives archives;
  for (const cabinet::Member& member : structure->members) {
    if (!EndsIn(member.name, std::string(kCabinet) + kJoinedMember)) continue;
    archives.names.push_back(member.name.substr(0, member.name.size() - std::string_view(kJoinedMember).size()));
  }
  archives.open = [joined, structure](const std::string& name) -> base::Obtained<cabinet::Source> {
    const auto member = std::ranges::find_if(
        structure->members, [&](const cabinet::Member& one) { return base::SameName(one.name, name + kJoinedMember); });
    if (member == structure->members.end()) return Missing();
    return OpenMember(*joined, *structure, *member);
  };
  return archives;
}

std::optional<Category> CategoryOf(const std::string& archive) {
  const auto* const found = std::ranges::find_if(
      backupset::kRestoreOrder, [&](Category category) { return base::SameName(ArchiveOf(category), archive); });
  return found == backupset::kRestoreOrder.end() ? std::nullopt : std::optional(*found);
}

Found WhatIs(NoHost& noHost, Folder& folder) {
  const bool descriptor = folder.Find(backupset::kDescriptorFile) != nullptr;
  if (folder.Find(backupset::PieceName(1))) return Found::Disk;
  if (!descriptor) {
    const bool archives = std::ranges::any_of(
        folder.entries, [](const Entry& entry) { return !entry.isFolder && CategoryOf(entry.name); });
    const bool piece = std::ranges::any_of(folder.entries, [](const Entry& entry) {
      return !entry.isFolder && entry.name.starts_with(backupset::kJoinedArchiveName);
    });
    return archives ? Found::Set : piece ? Found::Disk : Found::Nothing;
  }
  noHost.files.Mount(NoHost::kSet, &folder);
  return Value(noHost, "FDNumber").empty() ? Found::Set : Found::Disk;
}

SetReport SetCheck::Check(Folder& folder) {
  SetReport report;
  report.path = folder.path;
  const backupset::BackupSet set = Inspect(folder, report);
  const Archives archives = ArchivesOf(folder);
  const bool ofMaintenance = Value(noHost_, "CABFile") == std::string(kMaintenanceArchive) + ";";
  if (ofMaintenance && set.categories.empty()) {
    report.kind = Kind::Bundle;
    report.refusal.clear();
    report.archives.push_back(CheckArchive(std::nullopt, kMaintenanceArchive, archives));
  }
  CheckCategories(set, archives, report);
  if (!report.refusal.empty()) {  // what could be had of it all the same
    for (const std::string& name : archives.names) {
      const auto category = CategoryOf(name);
      if (category && !Promises(report, name)) report.archives.push_back(CheckArchive(category, name, archives));
    }
  }
  NoteOthers(folder, archives, report);
  return report;
}

/// The descriptor, as the workstation would judge it; or, where none is known, the one that the set was made on.
backupset::BackupSet SetCheck::Inspect(Folder& folder, SetReport& report) {
  noHost_.files.Mount(NoHost::kSet, &folder);
  report.application = Value(noHost_, "AppType");
  report.version = Value(noHost_, "AppVersion");
  report.date = Value(noHost_, "Date");
  const auto orOwn = [](const std::string& wanted, const std::string& own) { return wanted.empty() ? own : wanted; };
  const backupset::HostIdentity identity{orOwn(options_.identity.version, report.version),
                                         orOwn(options_.identity.application, report.application), NoHost::kSystem};
  backupset::Inspection inspection;
  const base::Outcome inspected = backupset::InspectBackupSet(noHost_.Tools(), identity, NoHost::kSet, inspection);
  report.refusal = inspected.IsDone() ? std::string() : WithoutFolder(inspected.cause);
  offers_ = inspection.offers;
  if (inspected.IsDone() && inspection.set.categories.empty()) report.refusal = "its descriptor offers no data";
  return inspection.set;
}

void SetCheck::CheckCategories(const backupset::BackupSet& set, const Archives& archives, SetReport& report) {
  for (const Category category : backupset::kRestoreOrder) {
    if (!set.categories.contains(category)) continue;
    ArchiveReport archive = CheckArchive(category, ArchiveOf(category), archives);
    archive.version = set.versions.at(category);
    Judge(archive);
    report.archives.push_back(std::move(archive));
  }
}

ArchiveReport SetCheck::CheckArchive(std::optional<Category> category, const std::string& name,
                                     const Archives& archives) {
  ArchiveReport archive;
  archive.category = category;
  archive.name = name;
  const auto source = archives.open(name);
  if (!source) {
    archive.why = source.Why().cause;
    archive.state = source.Why() == base::Result::Stopped ? State::Missing : State::Damaged;
    return archive;
  }
  Matching matching;
  archive.found = archives_.Run(*source, [&](const cabinet::Structure& structure) {
    if (category && workstation_) matching = workstation_->Match(*category, structure);
    if (options_.list) archive.members = structure.members;
  });
  archive.items = std::move(matching.items);
  if (!archive.found.damage.empty()) {
    archive.state = State::Damaged;
    archive.why = archive.found.damage.front();
  } else if (!matching.foreign.empty()) {
    archive.state = State::Foreign;
    archive.why = matching.foreign;
  }
  return archive;
}

/// Whether the workstation would put back what is whole.
void SetCheck::Judge(ArchiveReport& archive) {
  if (!workstation_ || archive.state != State::Whole) return;
  const std::string why = workstation_->WhyNotRestored(*archive.category);
  if (!why.empty()) {
    archive.state = State::NotRestored;
    archive.why = why;
  } else if (workstation_->HasVersions() && offers_[*archive.category] == backupset::Offer::OtherVersion) {
    archive.state = State::OtherVersion;
    archive.why = "the workstation has another version of this data";
  }
}

/// What else is there. Archives of an older set may lawfully stand beside those of a newer one that holds less; but not
/// where the descriptor's own list of archives is wrong: then what it does not offer was lost with its lines.
void SetCheck::NoteOthers(Folder& folder, const Archives& archives, SetReport& report) {
  bool listed = false;
  bool wrong = false;
  for (const std::string& name : base::Split(Value(noHost_, "CABFile"), ';')) {
    listed = listed || !name.empty();
    if (name.empty() || folder.Find(name) || Promises(report, name)) continue;
    wrong = true;
    report.notes.push_back("the descriptor names " + name + ", which is not there");
  }
  for (const std::string& name : archives.names) {
    if (Promises(report, name)) continue;
    const std::string words = "the descriptor offers nothing of it";
    const auto category = CategoryOf(name);
    if (category && (wrong || !listed)) {
      report.archives.push_back(CheckArchive(category, name, archives));
      ArchiveReport& hidden = report.archives.back();
      hidden.state = State::NotOffered;
      hidden.why = words;
    } else {
      report.notes.push_back(name + " is there, and " + words);
    }
  }
}

SetReport SetCheck::Check(const Pile& pile) {
  SetReport report;
  report.path = pile.path;
  report.kind = Kind::Floppies;
  Folder& first = *pile.disks.front().folder;
  const backupset::BackupSet set = Inspect(first, report);
  const auto count = backupset::ReadDiskNumber(Value(noHost_, "FDCount"));
  if (!report.refusal.empty()) return report;
  if (!count) {
    report.refusal = std::string(backupset::kDescriptorFile) + ": no FDCount";
    return report;
  }
  CheckJoined(FindPieces(pile, *count), set, report);
  return report;
}

void SetCheck::CheckJoined(const Pieces& pieces, const backupset::BackupSet& set, SetReport& report) {
  report.notes = pieces.odd;
  if (!pieces.missing.empty()) {
    report.refusal = pieces.missing.front();
    report.notes.insert(report.notes.end(), pieces.missing.begin() + 1, pieces.missing.end());
    return;
  }
  const std::shared_ptr<cabinet::Source> joined = Join(pieces);
  const auto structure = std::make_shared<cabinet::Structure>();
  ArchiveReport outer;
  outer.name = backupset::kJoinedArchive;
  outer.found = archives_.Run(*joined, [&](const cabinet::Structure& records) { *structure = records; });
  if (!outer.found.damage.empty()) {
    outer.state = State::Damaged;
    outer.why = outer.found.damage.front();
    report.refusal = "the archive that its pieces make up is damaged: " + outer.why;
    report.archives.push_back(std::move(outer));
    return;
  }
  CheckCategories(set, ArchivesOf(joined, structure), report);
}

}  // namespace setcheck
