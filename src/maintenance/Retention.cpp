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

/// Takes what both texts have in common off their heads, compared as Windows compares names; below,
/// at or above 0 as the left one's next letter is to the right one's, 0 also when a text has ended.
int CompareCommon(std::string_view& left, std::string_view& right) {
  while (!left.empty() && !right.empty()) {
    const char32_t leftLetter = app::FoldCase(app::TakeCharacter(left));
    const char32_t rightLetter = app::FoldCase(app::TakeCharacter(right));
    if (leftLetter != rightLetter) return leftLetter < rightLetter ? -1 : 1;
  }
  return 0;
}

bool IsLess(std::string_view left, std::string_view right) {
  const int order = CompareCommon(left, right);
  return order < 0 || (order == 0 && left.empty() && !right.empty());
}

bool BeginsWith(std::string_view name, std::string_view prefix) {
  return CompareCommon(name, prefix) == 0 && prefix.empty();
}

/// Names of all folders in `folder`, the newest of a client first.
std::vector<std::string> FolderNames(app::Application& application, const std::string& folder) {
  std::vector<host::FolderEntry> entries;
  application.host.files.List(folder, "*", entries);
  std::vector<std::string> names;
  for (const host::FolderEntry& entry : entries) {
    if (entry.isFolder) names.push_back(entry.name);
  }
  SortDescending(names, names.size());
  return names;
}

/// The part of a folder's name that tells the client; nothing when the name is too short to have one.
std::optional<std::string> ClientPrefix(std::string_view name) {
  const std::size_t length = app::ToCharacters(name).size();
  if (length < kSuffixLength) return std::nullopt;
  std::string_view rest = name;
  for (std::size_t i = kSuffixLength; i < length; ++i) app::TakeCharacter(rest);
  return std::string(name.substr(0, name.size() - rest.size()));
}

/// Each client once, in the order of `names`; false when a maintenance folder's name has no prefix.
bool DistinctPrefixes(const std::vector<std::string>& names, std::vector<std::string>& prefixes) {
  std::set<std::string, decltype(&IsLess)> known(&IsLess);
  for (const std::string& name : names) {
    if (!app::MatchesFileName(name, "Maintenance_*")) continue;
    const std::optional<std::string> prefix = ClientPrefix(name);
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

/// Deletes, and takes out of `names`, all but the first `keep` names that begin with `prefix`. They
/// stand together, because `names` is sorted. The prefix is a plain wildcard, as the host's own tools
/// have it: a client whose name begins another one's counts, and may delete, that one's folders too.
void PruneClient(app::Application& application, const std::string& folder, const std::string& prefix, std::size_t keep,
                 std::vector<std::string>& names) {
  const auto begins = [&](const std::string& name) { return BeginsWith(name, prefix); };
  const auto first = std::partition_point(
      names.begin(), names.end(), [&](const std::string& name) { return !begins(name) && IsLess(prefix, name); });
  const auto last = std::partition_point(first, names.end(), begins);
  if (static_cast<std::size_t>(last - first) <= keep) return;
  const auto kept = std::remove_if(first + static_cast<std::ptrdiff_t>(keep), last,
                                   [&](const std::string& name) { return Delete(application, folder + name); });
  names.erase(kept, last);
}

}  // namespace

app::ResultCode PruneClientLogBackups(app::Application& application, const std::string& folder) {
  const std::string from = app::WithTrailingBackslash(app::Trim(folder));
  std::vector<std::string> names = FolderNames(application, from);
  std::uint32_t keep = kDefaultNumber;
  if (application.host.qx32.RegGetKeyDWORD("ClientLogBackupNumber", keep) == -1) keep = kDefaultNumber;
  std::vector<std::string> prefixes;
  if (!DistinctPrefixes(names, prefixes)) return app::kFailed;
  for (const std::string& prefix : prefixes) PruneClient(application, from, prefix, keep, names);
  return app::kDone;
}

// Shell sort: for each gap, sink every element backwards while the one a gap before it is less.
void SortDescending(std::vector<std::string>& list, std::size_t count) {
  for (std::size_t gap = count / 2; gap > 0; gap /= 2) {
    for (std::size_t next = gap; next < count; ++next) {
      for (std::size_t i = next; i >= gap && IsLess(list[i - gap], list[i]); i -= gap) {
        std::swap(list[i - gap], list[i]);
      }
    }
  }
}

}  // namespace maintenance
