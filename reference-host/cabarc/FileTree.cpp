// Finds the files that the arguments of a packing command mean.
#include <algorithm>
#include <limits>

#include "cabarc/CabinetWriter.h"
#include "cabarc/FileAccess.h"
#include "cabarc/MemberNames.h"

namespace cabarc {

using platform::FolderEntry;
using platform::Kind;
using platform::kSeparator;

namespace {

// A path in the form of a member's name: "\" between its parts, parts that are "." left out.
std::string NameOf(std::string_view path) {
  std::string name;
  for (;;) {
    const std::size_t end = path.find(kSeparator);
    const std::string_view part = path.substr(0, end);
    if (part != ".") name += part;
    if (end == std::string_view::npos) return name;
    if (part != ".") name += '\\';
    path.remove_prefix(end + 1);
  }
}

// The size of a file; one that no file has where there is none.
std::uint64_t SizeOf(const std::string& path) {
  const platform::FileInfo info = platform::InfoOf(path);
  return info.kind == Kind::File ? info.size : std::numeric_limits<std::uint64_t>::max();
}

}  // namespace

FileTree::FileTree(Options options, std::string_view excluded)
    : options_(options), excluded_(platform::ToNative(excluded)), excludedSize_(SizeOf(excluded_)) {}

Status FileTree::Add(std::string_view argument) {
  const std::string path = platform::ToNative(argument);
  const std::size_t lastPart = path.rfind(kSeparator) + 1;
  const std::string folder = path.substr(0, lastPart);
  if (HasWildcard(folder)) return {ExitCode::Usage, path + ": wildcards may stand in the last part of a path only"};
  if (HasWildcard(path)) return AddFolder(folder, std::string_view(path).substr(lastPart));

  const platform::FileInfo info = platform::InfoOf(path);
  if (info.kind == Kind::Missing) return FileError(path + ": it cannot be found: " + platform::LastError());
  if (info.kind == Kind::Folder) return AddFolder(lastPart == path.size() ? path : path + kSeparator, "*");
  if (info.kind != Kind::File) return FileError(path + ": it is neither a file nor a folder");
  AddFile(path, info);
  return {};
}

Status FileTree::AddFolder(const std::string& folder, std::string_view pattern) {
  std::vector<FolderEntry> entries;
  if (!platform::ListFolder(folder.empty() ? "." : folder, entries)) {
    return FileError(folder + ": it cannot be listed: " + platform::LastError());
  }
  if (entries.empty() && options_.recurse) emptyFolders_.push_back(folder);
  std::sort(entries.begin(), entries.end(), [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
  for (const FolderEntry& entry : entries) {
    const std::string path = folder + entry.name;
    const bool matches = Matches(pattern, entry.name);
    if (entry.info.kind == Kind::File) {
      if (matches && !IsUnfinishedName(entry.name) && !IsExcluded(path, entry.info)) AddFile(path, entry.info);
    } else if (entry.info.kind != Kind::Folder && (matches || options_.recurse)) {
      return FileError(path + ": it is neither a file nor a folder; links to folders are not followed");
    }
  }
  for (const FolderEntry& entry : entries) {
    if (!options_.recurse || entry.info.kind != Kind::Folder) continue;
    if (Status status = AddFolder(folder + entry.name + kSeparator, pattern); status.Failed()) return status;
  }
  return {};
}

// By whatever path the cabinet was named. Only a file of its size is worth a closer look.
bool FileTree::IsExcluded(const std::string& path, const platform::FileInfo& info) const {
  return info.size == excludedSize_ && platform::IsSameFile(path, excluded_);
}

void FileTree::AddFile(const std::string& path, const platform::FileInfo& info) {
  const std::string name = NameOf(path);
  files_.push_back({path, options_.keepPaths ? name : std::string(BaseName(name)), info});
}

}  // namespace cabarc
