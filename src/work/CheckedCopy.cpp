// Copies that are held against what they were made of.
#include "work/CheckedCopy.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "base/Path.h"
#include "base/Unicode.h"
#include "base/Wildcard.h"
#include "work/FileOperations.h"

namespace work {
namespace {

/// File systems keep times of different fineness; the coarsest counts in two seconds.
constexpr std::uint64_t kSameTime = 20'000'000;

/// The same file, however its path was joined.
std::u32string KeyOf(const std::string& path) {
  std::u32string key = base::Folded(path);
  const auto doubled = std::unique(key.begin(), key.end(), [](char32_t a, char32_t b) { return a == U'\\' && b == a; });
  key.erase(doubled, key.end());
  return key;
}

bool IsPattern(const std::string& name) {
  return name.find_first_of("*?") != std::string::npos;
}

bool LooksAlike(const host::FolderEntry& source, const host::FolderEntry& copy) {
  const std::uint64_t apart = std::max(source.modified, copy.modified) - std::min(source.modified, copy.modified);
  return !copy.isFolder && copy.size == source.size && apart < kSameTime;
}

/// The entries of a folder, found by name.
class Listing {
 public:
  Listing(host::FileSystem& files, const std::string& folder, const std::string& pattern)
      : listed_(files.List(folder, pattern, entries_)) {
    for (const host::FolderEntry& entry : entries_) byName_[entry.name] = &entry;
  }
  const base::Outcome& Listed() const { return listed_; }
  const std::vector<host::FolderEntry>& Entries() const { return entries_; }

  /// Null when there is none. A copy usually bears its source's name to the letter; one that replaced an older file
  /// keeps that one's case.
  const host::FolderEntry* Find(const std::string& name) {
    if (const auto found = byName_.find(name); found != byName_.end()) return found->second;
    if (byFoldedName_.empty()) {
      for (const host::FolderEntry& entry : entries_) byFoldedName_[base::Folded(entry.name)] = &entry;
    }
    const auto same = byFoldedName_.find(base::Folded(name));
    return same == byFoldedName_.end() ? nullptr : same->second;
  }

 private:
  std::vector<host::FolderEntry> entries_;
  std::map<std::string_view, const host::FolderEntry*> byName_;
  std::map<std::u32string, const host::FolderEntry*> byFoldedName_;  ///< made when it is needed
  base::Outcome listed_;
};

/// Walks source and copy side by side. Made before the copy: what it finds right is told to the job's progress from
/// there on.
class Comparison {
 public:
  Comparison(const Tools& tools, std::string pattern, bool below, const std::string& category, CopiedFiles* noted)
      : tools_(tools), pattern_(std::move(pattern)), below_(below), category_(category), noted_(noted) {}

  /// Both folders end in "\".
  void Walk(const std::string& source, const std::string& copy) {
    const Listing from(tools_.files, source, "*");
    if (!from.Listed().IsDone()) return Miss(source, from.Listed());
    // A folder whose files are picked by a pattern is made by the first of them.
    if (pattern_ == "*" && !MakeFolder(copy)) return;
    Listing to(tools_.files, copy, "*");  // what is not there yet is an empty one
    for (const host::FolderEntry& entry : from.Entries()) {
      if (entry.isFolder) {
        if (below_ && !entry.isLink) Walk(source + entry.name + "\\", copy + entry.name + "\\");
      } else if (base::MatchesFileName(entry.name, pattern_)) {
        Compare(source, copy, entry, to.Find(entry.name));
      }
      tools_.messageLoop.Yield();
    }
  }

  /// Says what is missing beyond those that were named, and what was copied here.
  CopyResult Conclude(const std::string& source, base::Outcome command) {
    missing_.Conclude("Not copied");
    // An empty folder and a pattern that nothing fits are no loss; a file that is named is there, or missed.
    const bool named = pattern_ != "*" && !IsPattern(pattern_);
    if (named && right_ == 0 && missing_.Count() == 0) tools_.log.WarnOfLoss("Not there: " + source, category_);
    if (added_ > 0) {
      tools_.log.WriteLog(app::LogLevel::Information,
                          "Copied what xcopy has left out: " + std::to_string(added_) + " files (" + category_ + ")");
    }
    return {std::move(command), right_, missing_.Count()};
  }

 private:
  void Miss(const std::string& path, const base::Outcome& why) {
    missing_.Add("Not copied: " + (why.cause.empty() ? path : why.cause));
  }

  bool MakeFolder(const std::string& folder) {
    const base::Outcome made = EnsureFolder(tools_.files, folder);
    if (!made.IsDone()) Miss(folder, made);
    return made.IsDone();
  }

  void Compare(const std::string& source, const std::string& copy, const host::FolderEntry& entry,
               const host::FolderEntry* there) {
    const bool same = there != nullptr && LooksAlike(entry, *there);
    if (!same && !Copy(source + entry.name, copy, entry.name)) return;
    if (same && entry.isReadOnly && !there->isReadOnly) {
      static_cast<void>(tools_.files.SetReadOnly(copy + entry.name));  // the file itself is whole
    }
    ++right_;
    bytes_ += entry.size;
    tools_.progress.Reach(before_ + bytes_);
    if (noted_ != nullptr) noted_->Note(source + entry.name, entry);
  }

  bool Copy(const std::string& source, const std::string& folder, const std::string& name) {
    base::Outcome copied = EnsureFolder(tools_.files, folder);
    if (copied.IsDone()) copied = tools_.files.CopyTo(source, folder + name);
    if (copied.IsDone()) {
      ++added_;
    } else {
      Miss(source, copied);
    }
    return copied.IsDone();
  }

  const Tools& tools_;
  const std::string pattern_;
  const bool below_;
  const std::string& category_;
  CopiedFiles* noted_;
  std::size_t right_ = 0;
  std::uint64_t bytes_ = 0;  ///< of them
  const std::uint64_t before_ = tools_.progress.Reached();
  std::size_t added_ = 0;
  app::NamedWarnings missing_{tools_.log, category_};
};

}  // namespace

bool IsSamePath(const std::string& left, const std::string& right) {
  return KeyOf(left) == KeyOf(right);
}

void CopiedFiles::Note(const std::string& path, const host::FolderEntry& entry) {
  files_[KeyOf(path)] = {entry.size, entry.modified};
}

std::optional<bool> CopiedFiles::IsUnchanged(const std::string& path, const host::FolderEntry& now) const {
  const auto found = files_.find(KeyOf(path));
  if (found == files_.end()) return std::nullopt;
  return found->second.size == now.size && found->second.modified == now.modified;
}

CopyResult CopyFilesChecked(const Tools& tools, const std::string& source, const std::string& destinationFolder,
                            const std::string& category, CopiedFiles* noted) {
  const std::string name = base::FileNameOf(source);
  const Sight sight = IsPattern(name) ? SizeOfTree(tools.files, tools.messageLoop, destinationFolder)
                                      : SizeOfFile(tools.files, destinationFolder + name);
  Comparison comparison(tools, name, IsPattern(name), category, noted);
  const ProgramEnd end = RunXcopy(tools, source, destinationFolder, sight);
  comparison.Walk(base::FolderOf(source), destinationFolder);
  return comparison.Conclude(source, OutcomeOfXcopy(end));
}

CopyResult CopyFolderChecked(const Tools& tools, const std::string& sourceFolder, const std::string& destinationFolder,
                             const std::string& category, CopiedFiles* noted) {
  const std::string source = base::WithoutTrailingBackslash(sourceFolder);
  const std::string copy = destinationFolder + base::FileNameOf(source) + "\\";
  Comparison comparison(tools, "*", true, category, noted);
  const ProgramEnd end = RunXcopy(tools, source, copy, SizeOfTree(tools.files, tools.messageLoop, copy));
  comparison.Walk(source + "\\", copy);
  return comparison.Conclude(source, OutcomeOfXcopy(end));
}

}  // namespace work
