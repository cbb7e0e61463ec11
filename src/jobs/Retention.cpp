// How many unpacked maintenance folders are kept per client.
#include "jobs/ClientLogs.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "base/Path.h"
#include "base/Text.h"
#include "base/Unicode.h"
#include "base/Wildcard.h"
#include "work/FileOperations.h"

namespace jobs {
namespace {

constexpr char kCategory[] = "client logs";
constexpr std::uint32_t kDefaultNumber = 20;
constexpr std::size_t kSuffixLength = 13;  // "_yymmddhhmmss"
constexpr std::string_view kHead = "Maintenance_";

struct Folder {
  std::string name;
  std::u32string folded;
  bool deleted = false;
};

/// All folders among `entries`, the newest of a client first.
std::vector<Folder> FoldersOf(const std::vector<host::FolderEntry>& entries) {
  std::vector<std::string> names;
  for (const host::FolderEntry& entry : entries) {
    if (entry.isFolder) names.push_back(entry.name);
  }
  SortDescending(names, names.size());
  std::vector<Folder> folders;
  for (std::string& name : names) {
    std::u32string folded = base::Folded(name);
    folders.push_back({std::move(name), std::move(folded)});
  }
  return folders;
}

/// The part of a folder's name that tells the client; nothing when the name is too short to have one.
std::optional<std::u32string> ClientPrefix(const Folder& folder) {
  if (folder.folded.size() < kSuffixLength) return std::nullopt;
  return folder.folded.substr(0, folder.folded.size() - kSuffixLength);
}

/// Whether a name that is long enough ends in "_" and twelve digits.
bool EndsInStamp(const std::u32string& name) {
  const std::u32string_view suffix = std::u32string_view(name).substr(name.size() - kSuffixLength);
  return suffix.front() == U'_' &&
         std::ranges::all_of(suffix.substr(1), [](char32_t digit) { return digit >= U'0' && digit <= U'9'; });
}

/// Each client once, in the order of `folders`; fails when a maintenance folder's name has no prefix.
base::Outcome DistinctPrefixes(app::OperationLog& log, const std::vector<Folder>& folders,
                               std::vector<std::u32string>& prefixes) {
  std::set<std::u32string> known;
  for (const Folder& folder : folders) {
    if (!base::MatchesFileName(folder.name, "Maintenance_*")) continue;
    const std::optional<std::u32string> prefix = ClientPrefix(folder);
    if (!prefix) return base::Failure("no time stamp in the folder's name " + folder.name);
    if (prefix->size() <= kHead.size() && !EndsInStamp(folder.folded)) {  // would be a wildcard for every client
      log.WriteLog(app::LogLevel::Information, "No client's folder, kept : " + folder.name);
    } else if (known.insert(*prefix).second) {
      prefixes.push_back(*prefix);
    }
  }
  return base::Result::Done;
}

bool Delete(const work::Tools& tools, const std::string& folder) {
  const bool deleted = work::DeleteFolderForced(tools.files, folder).IsDone();
  if (!deleted) tools.log.WarnOfLoss("Not deleted: " + folder, kCategory);
  tools.messageLoop.Yield();
  return deleted;
}

/// Deletes all but the first `keep` of the folders whose names begin with `prefix`. They stand
/// together, because `folders` is sorted. The prefix is a plain wildcard, as the host's own tools
/// have it: a client whose name begins another one's counts, and may delete, that one's folders too.
void PruneClient(const work::Tools& tools, const std::string& path, const std::u32string& prefix, std::size_t keep,
                 std::vector<Folder>& folders) {
  const auto begins = [&](const Folder& folder) { return folder.folded.starts_with(prefix); };
  auto next = std::ranges::partition_point(
      folders, [&](const Folder& folder) { return !begins(folder) && folder.folded > prefix; });
  for (std::size_t kept = 0; next != folders.end() && begins(*next); ++next) {
    if (next->deleted) continue;
    if (kept < keep) {
      ++kept;
    } else {
      next->deleted = Delete(tools, path + next->name);
    }
  }
}

}  // namespace

base::Outcome PruneClientLogBackups(const work::Tools& tools, host::QX32& registry, const std::string& folder) {
  const std::string from = base::WithTrailingBackslash(base::Trim(folder));
  std::vector<host::FolderEntry> entries;
  std::vector<std::u32string> prefixes;
  base::Outcome pruned = tools.files.List(from, "*", entries);
  std::vector<Folder> folders = FoldersOf(entries);
  if (pruned.IsDone()) pruned = DistinctPrefixes(tools.log, folders, prefixes);
  if (!pruned.IsDone()) {
    tools.log.WarnOfLoss("Client logs not pruned: " + pruned.cause, kCategory);
    return pruned;
  }
  std::uint32_t keep = kDefaultNumber;
  if (!registry.RegGetKeyDWORD("ClientLogBackupNumber", keep).IsDone()) keep = kDefaultNumber;
  for (const std::u32string& prefix : prefixes) PruneClient(tools, from, prefix, keep, folders);
  return base::Result::Done;
}

// Shell sort: for each gap, sink every element backwards while the one a gap before it is less. It compares each
// text more than once, so they are folded before.
void SortDescending(std::vector<std::string>& list, std::size_t count) {
  std::vector<std::pair<std::u32string, std::string>> sorted;
  for (std::size_t i = 0; i < count; ++i) sorted.emplace_back(base::Folded(list[i]), std::move(list[i]));
  for (std::size_t gap = count / 2; gap > 0; gap /= 2) {
    for (std::size_t next = gap; next < count; ++next) {
      for (std::size_t i = next; i >= gap && sorted[i - gap].first < sorted[i].first; i -= gap) {
        std::swap(sorted[i - gap], sorted[i]);
      }
    }
  }
  for (std::size_t i = 0; i < count; ++i) list[i] = std::move(sorted[i].second);
}

}  // namespace jobs
