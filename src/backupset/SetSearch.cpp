// Finds the newest set on a medium.
#include "backupset/SetSearch.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <utility>
#include <vector>

#include "base/Path.h"

namespace backupset {
namespace {

constexpr int kDeepest = 3;
constexpr std::size_t kMostFolders = 2000;
constexpr std::chrono::seconds kLongest{5};

class SetSearch {
 public:
  SetSearch(const work::Tools& tools, const HostIdentity& host) : tools_(tools), host_(host) {}

  std::string Run(const std::string& folder) {
    const auto end = std::chrono::steady_clock::now() + kLongest;
    ahead_.emplace_back(folder, 0);
    for (std::size_t seen = 0; !ahead_.empty() && seen < kMostFolders; ++seen) {
      if (std::chrono::steady_clock::now() > end) break;
      const auto [next, depth] = std::move(ahead_.front());
      ahead_.pop_front();
      LookInto(next, depth);
      tools_.messageLoop.Yield();
    }
    return newest_;
  }

 private:
  void LookInto(const std::string& folder, int depth) {
    std::vector<host::FolderEntry> entries;
    static_cast<void>(tools_.files.List(folder, "*", entries));  // what cannot be read holds nothing to restore
    for (const host::FolderEntry& entry : entries) {
      if (!entry.isFolder && base::SameName(entry.name, kDescriptorFile)) return Consider(folder, entry.modified);
    }
    if (depth == kDeepest) return;
    for (const host::FolderEntry& entry : entries) {
      if (entry.isFolder && !entry.isLink) ahead_.emplace_back(folder + entry.name + "\\", depth + 1);
    }
  }

  void Consider(const std::string& folder, std::uint64_t written) {
    if (!newest_.empty() && written <= writtenAt_) return;
    if (!MayRestore(ReadMark(tools_, folder), host_)) return;
    newest_ = folder;
    writtenAt_ = written;
  }

  const work::Tools& tools_;
  const HostIdentity& host_;
  std::deque<std::pair<std::string, int>> ahead_;  ///< folders, and how deep they lie
  std::string newest_;
  std::uint64_t writtenAt_ = 0;
};

}  // namespace

std::string FindNewestSet(const work::Tools& tools, const HostIdentity& host, const std::string& folder) {
  return SetSearch(tools, host).Run(folder);
}

}  // namespace backupset
