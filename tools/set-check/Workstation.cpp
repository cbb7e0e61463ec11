// What a workstation would make of the archives of a set.
#include "set-check/Workstation.h"

#include <algorithm>

#include "base/Path.h"
#include "base/Text.h"

namespace setcheck {
namespace {

using backupset::Category;
using backupset::RowOf;
using restore::Target;

/// Stands for a root that no path table tells.
constexpr const char* kUnknownRoot = "?:\\";

/// What exporters leave in the work folder, beside what a section names.
struct Exported {
  jobs::JobKey key;
  const char* pattern;
};
constexpr Exported kExported[] = {{jobs::JobKey::EventLog, "*.evt"}, {jobs::JobKey::RegFile, "*.reg"}};

bool Takes(const std::vector<Target>& targets, const std::string& member) {
  return std::ranges::any_of(targets, [&](const Target& target) { return !restore::PlaceOf(member, target).empty(); });
}

}  // namespace

base::Outcome Workstation::Open(Folder& system) {
  noHost_.files.Mount(NoHost::kSystem, &system);
  hasVersions_ = system.Find(backupset::kVersionFile) != nullptr;
  hasJobs_ = system.Find(jobs::kJobDefinitionFile) != nullptr;
  if (!hasVersions_ && !hasJobs_) {
    return base::Failure(std::string("it has neither ") + jobs::kJobDefinitionFile + " nor " + backupset::kVersionFile);
  }
  root_ = kUnknownRoot;
  static_cast<void>(noHost_.Paths().GetPathEntry("ApplicationRoot", root_));  // or it stays unknown
  root_ = base::WithTrailingBackslash(root_);
  if (!hasJobs_) return base::Result::Done;
  for (const Category category : backupset::kRestoreOrder) Load(category);
  return base::Result::Done;
}

void Workstation::Load(Category category) {
  const backupset::CategoryRow& row = RowOf(category);
  Sections& sections = sections_[category];
  const work::Tools tools = noHost_.Tools();
  const base::Outcome loaded = definitions_.Load(tools, NoHost::kSystem, jobs::kJobDefinitionFile, row.restoreSection);
  if (!loaded.IsDone()) sections.why = loaded.cause.substr(loaded.cause.find('\\') + 1);
  for (const jobs::JobKey key : {jobs::JobKey::CommonFile, jobs::JobKey::BatFile, jobs::JobKey::Folder}) {
    for (std::string item : definitions_.FilledItems(key, row.restoreSection)) {
      std::string variable;
      if (noHost_.Paths().ExpandQuietly(item, &variable).IsDone()) continue;
      sections.why = std::string(kPathTable) + " has no " + variable;
    }
  }
  sections.restored = restore::TargetsOf(noHost_.Paths(), definitions_, root_, row.restoreSection);
  if (!definitions_.Load(tools, NoHost::kSystem, jobs::kJobDefinitionFile, row.backupSection).IsDone()) return;
  sections.saved = restore::TargetsOf(noHost_.Paths(), definitions_, root_, row.backupSection);
  for (const Exported& exported : kExported) {
    if (definitions_.Items(exported.key, row.backupSection).empty()) continue;
    sections.saved.push_back({exported.pattern, "exported\\"});
  }
  sections.unsure = std::ranges::any_of(
      sections.saved, [](const Target& target) { return target.head.find('%') != std::string::npos; });
}

std::string Workstation::WhyNotRestored(Category category) const {
  const auto found = sections_.find(category);
  return found == sections_.end() ? std::string() : found->second.why;
}

std::size_t Workstation::CountSaved(Category category, const cabinet::Structure& archive) const {
  const std::vector<Target>& saved = sections_.at(category).saved;
  return static_cast<std::size_t>(
      std::ranges::count_if(archive.members, [&](const cabinet::Member& member) { return Takes(saved, member.name); }));
}

Matching Workstation::Match(Category category, const cabinet::Structure& archive) const {
  Matching matching;
  const auto found = sections_.find(category);
  if (found == sections_.end()) return matching;
  const Sections& own = found->second;
  std::size_t restored = 0;
  for (const Target& target : own.restored) {
    const auto files = static_cast<std::size_t>(std::ranges::count_if(
        archive.members, [&](const auto& member) { return !restore::PlaceOf(member.name, target).empty(); }));
    matching.items.push_back({target.place, files});
    restored += files;
  }
  if (own.saved.empty() || own.unsure) return matching;
  const std::size_t saved = CountSaved(category, archive);
  if (saved == archive.members.size()) return matching;
  if (saved == 0 && restored == 0) matching.foreign = "nothing in it is data of this kind";
  for (const auto& [other, sections] : sections_) {
    if (other == category || CountSaved(other, archive) <= saved) continue;
    matching.foreign = std::string("it holds ") + RowOf(other).archive;
    break;
  }
  return matching;
}

std::string Workstation::PlaceOf(Category category, const std::string& member) const {
  const auto found = sections_.find(category);
  if (found == sections_.end()) return {};
  for (const Target& target : found->second.restored) {
    const std::string place = restore::PlaceOf(member, target);
    if (base::SameName(place.substr(0, root_.size()), root_)) return place.substr(root_.size());
  }
  return {};
}

}  // namespace setcheck
