// What a restore looks at before it replaces anything.
#include "restore/Foresight.h"

#include <algorithm>
#include <functional>
#include <map>
#include <numeric>

#include "base/Path.h"
#include "base/Wildcard.h"
#include "jobs/Items.h"

namespace restore {
namespace {

using backupset::RowOf;

std::uint64_t BytesOf(const backupset::FileSizes& members) {
  return std::accumulate(members.begin(), members.end(), std::uint64_t{0},
                         [](std::uint64_t sum, const auto& member) { return sum + member.second; });
}

/// The needs of each drive, by its letter.
class Needs {
 public:
  Needs(const Putting& putting, host::Drives& drives) : putting_(putting), drives_(drives) {}

  void Add(const std::string& path, std::uint64_t bytes) { bytes_[base::DriveLetterOf(path)] += bytes; }

  /// Adds what the members need where they are put.
  void Add(const ArchiveAhead& archive) {
    ForEachPlace(archive, [this](const std::string& place, std::uint64_t size) { Add(place, size); });
  }

  /// Takes off what is there already and will be replaced.
  void TakeOffReplaced(const ArchiveAhead& archive) {
    ForEachPlace(archive, [this](const std::string& place, std::uint64_t) {
      const std::int64_t size = putting_.tools.files.FileSize(place);
      std::uint64_t& need = bytes_[base::DriveLetterOf(place)];
      if (size > 0) need -= std::min(need, static_cast<std::uint64_t>(size));
    });
  }

  /// A drive whose room cannot be had is left to the copies.
  base::Outcome Check() const {
    for (const auto& [letter, bytes] : bytes_) {
      const std::int64_t free = drives_.FreeSpace(letter + ":");
      if (free < 0 || bytes <= static_cast<std::uint64_t>(free)) continue;
      return base::Failure("drive " + letter + " has " + std::to_string(free) + " bytes free, needed are " +
                           std::to_string(bytes));
    }
    return base::Result::Done;
  }

 private:
  void ForEachPlace(const ArchiveAhead& archive, const std::function<void(const std::string&, std::uint64_t)>& visit) {
    const std::vector<Target> targets = TargetsOf(putting_.paths, putting_.definitions, putting_.ApplicationRootFolder,
                                                  RowOf(archive.category).restoreSection);
    for (const auto& [member, size] : archive.members) {
      for (const Target& target : targets) {
        if (const std::string place = PlaceOf(member, target); !place.empty()) visit(place, size);
      }
      putting_.tools.messageLoop.Yield();
    }
  }

  const Putting& putting_;
  host::Drives& drives_;
  std::map<std::string, std::uint64_t> bytes_;
};

base::Outcome Missing(const std::string& archive, bool copied) {
  const std::string words = archive + " is missing";
  if (!copied) return base::Failure(words);
  return {base::Result::StepFailed, app::MessageId::ArchiveNotUnpacked, words};
}

/// What is done with an archive, for the job's progress. Its own size stands for what is in it.
void Plan(app::Progress& progress, const ArchiveAhead& archive, bool copied) {
  const backupset::CategoryRow& row = RowOf(archive.category);
  const std::string name = base::FileNameOf(archive.path);
  progress.Plan(app::Work::Checking, name, archive.size);
  if (copied) progress.Plan(app::Work::Copying, name, archive.size);
  progress.Plan(app::Work::Unpacking, name, archive.size, BytesOf(archive.members));
  progress.Plan(app::Work::PuttingBack, row.restoreSection, archive.size, BytesOf(archive.members));
}

}  // namespace

std::vector<Target> TargetsOf(const app::PathTable& paths, const jobs::JobDefinitions& definitions,
                              const std::string& applicationRoot, const std::string& section) {
  std::vector<Target> targets;
  for (std::string item : definitions.FilledItems(jobs::JobKey::CommonFile, section)) {
    if (paths.ExpandQuietly(item).IsDone()) targets.push_back({base::FileNameOf(item), item});
  }
  for (std::string item : definitions.FolderItems(section)) {
    if (!paths.ExpandQuietly(item).IsDone()) continue;
    const std::string folder = base::WithoutTrailingBackslash(jobs::WithDrive(item, applicationRoot));
    targets.push_back({base::FileNameOf(folder) + "\\", folder + "\\"});
  }
  return targets;
}

std::string PlaceOf(const std::string& member, const Target& target) {
  if (target.head.find_first_of("*?") != std::string::npos) {
    // A pattern takes files in folders below, too, with their folders.
    const bool fits = base::MatchesFileName(base::FileNameOf(member), target.head);
    return fits ? base::FolderOf(target.place) + member : std::string();
  }
  const std::size_t length = target.head.size();
  if (!base::SameName(member.substr(0, length), target.head)) return {};
  if (target.head.ends_with('\\')) return target.place + member.substr(length);
  return member.size() == length ? target.place : std::string();
}

base::Outcome WalkArchives(const work::Tools& tools, const std::string& folder, bool copied,
                           const std::vector<backupset::Category>& categories, std::vector<ArchiveAhead>& archives) {
  for (const backupset::Category category : categories) {
    ArchiveAhead archive{category, folder + RowOf(category).archive + ".cab", 0, {}};
    const std::int64_t size = tools.files.FileSize(archive.path);
    if (size < 0) return Missing(archive.path, copied);
    archive.size = static_cast<std::uint64_t>(size);
    Plan(tools.progress, archive, copied);
    archives.push_back(std::move(archive));
  }
  for (ArchiveAhead& archive : archives) {
    const app::Progress::Part part(tools.progress, app::Work::Checking, base::FileNameOf(archive.path));
    if (base::Outcome walked = backupset::ReadWhole(tools, archive.path, archive.members); !walked.IsDone()) {
      return walked;
    }
    Plan(tools.progress, archive, copied);
  }
  return base::Result::Done;
}

base::Outcome CheckRoom(const Putting& putting, host::Drives& drives, const std::vector<ArchiveAhead>& archives,
                        bool copied) {
  Needs needs(putting, drives);
  std::uint64_t most = 0;
  for (const ArchiveAhead& archive : archives) {
    most = std::max(most, BytesOf(archive.members) + (copied ? archive.size : 0));
    needs.Add(archive);
  }
  needs.Add(putting.workFolder.StagingFolder(), most);
  if (needs.Check().IsDone()) return base::Result::Done;
  for (const ArchiveAhead& archive : archives) needs.TakeOffReplaced(archive);
  return needs.Check();
}

}  // namespace restore
