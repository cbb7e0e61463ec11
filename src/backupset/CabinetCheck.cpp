// What a cabinet says of itself, against what was put into it or came out of it.
#include "backupset/CabinetCheck.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <utility>

#include "base/Path.h"
#include "cabinet/Blocks.h"
#include "cabinet/Structure.h"

namespace backupset {
namespace {

/// A file on a disk.
class FileSource : public cabinet::Source {
 public:
  FileSource(host::FileSystem& files, std::string path)
      : files_(files), path_(std::move(path)), reader_(files_.OpenBinary(path_)) {}

  std::int64_t ReadAt(std::uint64_t offset, void* data, std::size_t count) override {
    if (!reader_ || (offset != at_ && !reader_->Seek(offset))) return -1;
    const std::int64_t got = reader_->Read(static_cast<std::byte*>(data), count);
    at_ = offset + static_cast<std::uint64_t>(std::max<std::int64_t>(got, 0));
    return got;
  }
  std::uint64_t Size() override {
    const std::int64_t size = files_.FileSize(path_);
    return size < 0 ? 0 : static_cast<std::uint64_t>(size);
  }
  const base::Outcome& Opened() const { return reader_.Why(); }

 private:
  host::FileSystem& files_;
  std::string path_;
  base::Obtained<host::BinaryReader> reader_;
  std::uint64_t at_ = 0;
};

/// `inner` is the path from the tree's root on, and ends in "\\" unless it is empty.
base::Outcome AddTree(const work::Tools& tools, const std::string& root, const std::string& inner,
                      const std::string& leftOut, FileTree& tree) {
  std::vector<host::FolderEntry> entries;
  if (base::Outcome listed = tools.files.List(root + inner, "*", entries); !listed.IsDone()) return listed;
  if (entries.empty() && !inner.empty()) ++tree.emptyFolders;
  for (const host::FolderEntry& entry : entries) {
    const std::string path = inner + entry.name;
    if (!entry.isFolder) {
      tree.sizes[path] = entry.size;
    } else if (!inner.empty() || !base::SameName(entry.name, leftOut)) {
      if (base::Outcome added = AddTree(tools, root, path + "\\", leftOut, tree); !added.IsDone()) return added;
    }
  }
  tools.messageLoop.Yield();
  return base::Result::Done;
}

/// What a file is known by, inside and outside of a cabinet: its path in small letters and its size. Archivers write
/// names beyond ASCII in code pages of their own; of those only the size counts.
using Mark = std::pair<std::string, std::uint64_t>;

Mark MarkOf(std::string path, std::uint64_t size) {
  if (!cabinet::IsAscii(path)) return {{}, size};
  std::ranges::transform(path, path.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return {path.starts_with(".\\") ? path.substr(2) : path, size};
}

std::vector<Mark> MarksOf(const FileSizes& sizes) {
  std::vector<Mark> marks;
  for (const auto& [path, size] : sizes) marks.push_back(MarkOf(path, size));
  std::ranges::sort(marks);
  return marks;
}

/// The members by their names; of several of one name the last is what unpacking leaves.
FileSizes SizesOf(const cabinet::Structure& structure) {
  FileSizes sizes;
  for (const cabinet::Member& member : structure.members) sizes[member.name] = member.size;
  return sizes;
}

base::Outcome About(const std::string& archive, const base::Outcome& outcome) {
  return outcome.IsDone() ? outcome : base::Failure(archive + ": " + outcome.cause);
}

base::Outcome Read(FileSource& source, const std::string& archive, cabinet::Structure& structure) {
  return source.Opened().IsDone() ? About(archive, cabinet::ReadStructure(source, structure)) : source.Opened();
}

/// Keeps the screen alive during a walk, and tells the job's progress how far it is.
class Serving : public cabinet::WalkObserver {
 public:
  explicit Serving(const work::Tools& tools) : tools_(tools) {}
  bool Sound(const cabinet::Block& block) override {
    constexpr std::size_t kServeEvery = std::size_t{1} << 20;  // bytes
    walked_ += block.size;
    if (walked_ < kServeEvery) return true;
    tools_.progress.Advance(std::exchange(walked_, 0));
    tools_.messageLoop.Yield();
    return true;
  }

 private:
  const work::Tools& tools_;
  std::size_t walked_ = 0;  ///< since it was told
};

/// Fails when something of `wanted` is not among `there`.
base::Outcome CheckAllThere(const FileSizes& wanted, const FileSizes& there, const std::string& words) {
  std::vector<Mark> missing;
  std::ranges::set_difference(MarksOf(wanted), MarksOf(there), std::back_inserter(missing));
  if (missing.empty()) return base::Result::Done;
  const Mark& first = missing.front();
  return base::Failure(words + ": " + std::to_string(missing.size()) + " of " + std::to_string(wanted.size()) +
                       " files, one of " + std::to_string(first.second) + " bytes" +
                       (first.first.empty() ? "" : " named " + first.first));
}

}  // namespace

base::Outcome ListTree(const work::Tools& tools, const std::string& folder, const std::string& leftOut,
                       FileTree& tree) {
  return AddTree(tools, folder, {}, leftOut, tree);
}

std::vector<std::string> TakeOutLongNames(FileTree& tree) {
  std::vector<std::string> taken;
  for (const auto& [path, size] : tree.sizes) {
    if (path.size() > cabinet::kMaxNameBytes) taken.push_back(path);
  }
  for (const std::string& path : taken) tree.sizes.erase(path);
  return taken;
}

base::Outcome CheckLimits(const FileTree& tree) {
  if (tree.sizes.size() > cabinet::kMaxFiles) {
    return base::Failure(std::to_string(tree.sizes.size()) + " files; an archive holds " +
                         std::to_string(cabinet::kMaxFiles));
  }
  const auto large =
      std::ranges::find_if(tree.sizes, [](const auto& file) { return file.second > cabinet::kMaxFileSize; });
  if (large == tree.sizes.end()) return base::Result::Done;
  return base::Failure(large->first + " has " + std::to_string(large->second) + " bytes; an archive holds " +
                       std::to_string(cabinet::kMaxFileSize) + " of a file");
}

base::Outcome ReadWhole(const work::Tools& tools, const std::string& archive, FileSizes& members) {
  FileSource source(tools.files, archive);
  cabinet::Structure structure;
  if (base::Outcome read = Read(source, archive, structure); !read.IsDone()) return read;
  members = SizesOf(structure);
  Serving serving(tools);
  return About(archive, cabinet::WalkBlocks(source, structure, serving));
}

base::Outcome CheckWhole(const work::Tools& tools, const std::string& archive, const FileTree& tree) {
  FileSizes members;
  base::Outcome read = ReadWhole(tools, archive, members);
  return read.IsDone() ? CheckAllThere(tree.sizes, members, archive + " lacks") : read;
}

base::Outcome CheckUnpacked(host::FileSystem& files, const std::string& archive, const FileTree& tree) {
  FileSource source(files, archive);
  cabinet::Structure structure;
  if (base::Outcome read = Read(source, archive, structure); !read.IsDone()) return read;
  if (structure.members.empty()) return base::Failure(archive + " holds no file");
  return CheckAllThere(SizesOf(structure), tree.sizes, archive + " was not unpacked whole, there lack");
}

}  // namespace backupset
