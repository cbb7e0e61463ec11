// What can be seen of another program's work from outside.
#include "work/Sights.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/Path.h"

namespace work {
namespace {

/// A folder that another program fills.
class GrowingTree {
 public:
  GrowingTree(host::FileSystem& files, host::MessageLoop& loop, const std::string& folder)
      : files_(files), loop_(loop), path_(base::WithTrailingBackslash(folder)) {}

  std::uint64_t Look() {
    const std::uint64_t before = root_.bytes;
    Look(path_, root_);
    if (root_.bytes != before) Settle(root_);
    return root_.bytes;
  }

 private:
  struct Folder {
    std::uint64_t bytes = 0;
    bool changed = true;
    bool finished = false;
    std::map<std::string, Folder> below;
  };

  void Look(const std::string& path, Folder& folder) {
    std::vector<host::FolderEntry> entries;
    static_cast<void>(files_.List(path, "*", entries));  // what is not there yet holds nothing
    std::uint64_t bytes = 0;
    for (const host::FolderEntry& entry : entries) {
      bytes += entry.size;
      if (!entry.isFolder || entry.isLink) continue;
      Folder& inner = folder.below[entry.name];
      if (!inner.finished) Look(path + entry.name + "\\", inner);
      bytes += inner.bytes;
    }
    folder.changed = std::exchange(folder.bytes, bytes) != bytes;
    loop_.Yield();
  }

  static void Settle(Folder& folder) {
    for (auto& [name, inner] : folder.below) {
      inner.finished = inner.finished || !inner.changed;
      if (inner.finished) {
        inner.below.clear();
      } else {
        Settle(inner);
      }
    }
  }

  host::FileSystem& files_;
  host::MessageLoop& loop_;
  const std::string path_;
  Folder root_;
};

}  // namespace

std::uint64_t BytesIn(host::FileSystem& files, const std::string& folder) {
  std::vector<host::FolderEntry> entries;
  static_cast<void>(files.List(base::WithTrailingBackslash(folder), "*", entries));
  std::uint64_t sum = 0;
  for (const host::FolderEntry& entry : entries) sum += entry.size;
  return sum;
}

Sight SizeOfFile(host::FileSystem& files, const std::string& path) {
  return [&files, path] { return static_cast<std::uint64_t>(std::max<std::int64_t>(files.FileSize(path), 0)); };
}

Sight SizeOfTree(host::FileSystem& files, host::MessageLoop& loop, const std::string& folder) {
  return [tree = std::make_shared<GrowingTree>(files, loop, folder)] { return tree->Look(); };
}

std::chrono::milliseconds Observation::Look() {
  constexpr std::chrono::milliseconds kLeast{250};
  constexpr std::chrono::milliseconds kMost{45'000};  // a bar that has not moved for a minute is taken for a dead one
  constexpr int kRest = 100;                          // times as long as the look has taken
  if (!std::exchange(begun_, true)) return kLeast;
  const auto begun = clock_.Running();
  const std::uint64_t now = sight_();
  const std::uint64_t before = std::exchange(seen_, now).value_or(now);
  // What becomes smaller is written anew.
  if (now > before) progress_.Advance(now - before);
  return std::clamp(kRest * (clock_.Running() - begun), kLeast, kMost);
}

}  // namespace work
