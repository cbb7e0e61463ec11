// How many unpacked maintenance folders are kept per client.
#include "maintenance/Retention.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "app/TextFormat.h"
#include "app/Unicode.h"
#include "app/WindowsPath.h"
#include "backup/FileOperations.h"
#include "backup/Programs.h"

namespace maintenance {
namespace {

constexpr std::uint32_t kDefaultNumber = 20;
constexpr std::size_t kSuffixLength = 13;  // "_yymmddhhmmss"

/// `text` as Windows compares names.
std::u32string Folded(std::string_view text) {
  std::u32string folded = app::ToCharacters(text);
  for (char32_t& character : folded) character = app::FoldCase(character);
  return folded;
}

struct Folder {
  std::string name;
  std::u32string folded;
  bool deleted = false;
};

/// All folders in `folder`, the newest of a client first.
std::vector<Folder> FoldersIn(app::Application& application, const std::string& folder) {
  std::vector<host::FolderEntry> entries;
  application.host.files.List(folder, "*", entries);
  std::vector<std::string> names;
  for (const host::FolderEntry& entry : entries) {
    if (entry.isFolder) names.push_back(entry.name);
  }
  SortDescending(names, names.size());
  std::vector<Folder> folders;
  for (std::string& name : names) {
    std::u32string folded = Folded(name);
    folders.push_back({std::move(name), std::move(folded)});
  }
  return folders;
}

/// The part of a folder's name that tells the client; nothing when the name is too short to have one.
std::optional<std::u32string> ClientPrefix(const Folder& folder) {
  if (folder.folded.size() < kSuffixLength) return std::nullopt;
  return folder.folded.substr(0, folder.folded.size() - kSuffixLength);
}

/// Each client once, in the order of `folders`; false when a maintenance folder's name has no prefix.
bool DistinctPrefixes(const std::vector<Folder>& folders, std::vector<std::u32string>& prefixes) {
  std::set<std::u32string> known;
  for (const Folder& folder : folders) {
    if (!app::MatchesFileName(folder.name, "Maintenance_*")) continue;
    const std::optional<std::u32string> prefix = ClientPrefix(folder);
    if (!prefix) return false;
    if (known.insert(*prefix).second) prefixes.push_back(*prefix);
  }
  return true;
}

bool Delete(app::Application& application, const std::string& folder) {
  const bool deleted = backup::DeleteFolderForced(application, folder) == app::kDone;
  if (!deleted) backup::WarnOfLoss(application, "Not deleted: " + folder, "client logs");
  application.host.messageLoop.Yield();
  return deleted;
}

/// Deletes all but the first `keep` of the folders whose names begin with `prefix`. They stand
/// together, because `folders` is sorted. The prefix is a plain wildcard, as the host's own tools
/// have it: a client whose name begins another one's counts, and may delete, that one's folders too.
void PruneClient(app::Application& application, const std::string& path, const std::u32string& prefix, std::size_t keep,
                 std::vector<Folder>& folders) {
  const auto begins = [&](const Folder& folder) { return folder.folded.starts_with(prefix); };
  auto next = std::ranges::partition_point(
      folders, [&](const Folder& folder) { return !begins(folder) && folder.folded > prefix; });
  for (std::size_t kept = 0; next != folders.end() && begins(*next); ++next) {
    if (next->deleted) continue;
    if (kept < keep) {
      ++kept;
    } else {
      next->deleted = Delete(application, path + next->name);
    }
  }
}

}  // namespace

app::ResultCode PruneClientLogBackups(app::Application& application, const std::string& folder) {
  const std::string from = app::WithTrailingBackslash(app::Trim(folder));
  std::vector<Folder> folders = FoldersIn(application, from);
  std::uint32_t keep = kDefaultNumber;
  if (application.host.qx32.RegGetKeyDWORD("ClientLogBackupNumber", keep) == -1) keep = kDefaultNumber;
  std::vector<std::u32string> prefixes;
  if (!DistinctPrefixes(folders, prefixes)) return app::kFailed;
  for (const std::u32string& prefix : prefixes) PruneClient(application, from, prefix, keep, folders);
  return app::kDone;
}

// Shell sort: for each gap, sink every element backwards while the one a gap before it is less. It compares each
// text more than once, so they are folded before.
void SortDescending(std::vector<std::string>& list, std::size_t count) {
  std::vector<std::pair<std::u32string, std::string>> sorted;
  for (std::size_t i = 0; i < count; ++i) sorted.emplace_back(Folded(list[i]), std::move(list[i]));
  for (std::size_t gap = count / 2; gap > 0; gap /= 2) {
    for (std::size_t next = gap; next < count; ++next) {
      for (std::size_t i = next; i >= gap && sorted[i - gap].first < sorted[i].first; i -= gap) {
        std::swap(sorted[i - gap], sorted[i]);
      }
    }
  }
  for (std::size_t i = 0; i < count; ++i) list[i] = std::move(sorted[i].second);
}

}  // namespace maintenance
