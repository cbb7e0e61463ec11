// What a cabinet says of itself, against what was put into it or came out of it.
#include "backupset/CabinetCheck.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/Path.h"

namespace backupset {
namespace {

constexpr std::size_t kMostFiles = 65'535;
constexpr std::size_t kLongestName = 255;
constexpr std::uint64_t kLargestFile = 0x7FFF'FFFF;
constexpr std::size_t kHeaderSize = 36;
constexpr std::size_t kSizeAt = 8;
constexpr std::size_t kFilesAt = 28;
constexpr std::array kSignature = {std::byte{'M'}, std::byte{'S'}, std::byte{'C'}, std::byte{'F'}};

/// A number of `width` bytes, the lowest first.
std::uint32_t Number(const std::byte* bytes, std::size_t width) {
  std::uint32_t number = 0;
  for (std::size_t i = width; i > 0; --i) number = number << 8 | std::to_integer<std::uint32_t>(bytes[i - 1]);
  return number;
}

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
      tree.bytes += entry.size;
    } else if (!inner.empty() || !base::SameName(entry.name, leftOut)) {
      if (base::Outcome added = AddTree(tools, root, path + "\\", leftOut, tree); !added.IsDone()) return added;
    }
  }
  tools.messageLoop.Yield();
  return base::Result::Done;
}

}  // namespace

std::optional<CabinetHeader> ReadCabinetHeader(host::FileSystem& files, const std::string& path) {
  std::array<std::byte, kHeaderSize> bytes{};
  const auto file = files.OpenBinary(path);
  if (!file || file->Read(bytes.data(), bytes.size()) != static_cast<std::int64_t>(bytes.size())) return std::nullopt;
  if (!std::equal(kSignature.begin(), kSignature.end(), bytes.begin())) return std::nullopt;
  return CabinetHeader{Number(&bytes[kSizeAt], 4), static_cast<std::uint16_t>(Number(&bytes[kFilesAt], 2))};
}

base::Outcome ListTree(const work::Tools& tools, const std::string& folder, const std::string& leftOut,
                       FileTree& tree) {
  return AddTree(tools, folder, {}, leftOut, tree);
}

std::vector<std::string> TakeOutLongNames(FileTree& tree) {
  std::vector<std::string> taken;
  for (const auto& [path, size] : tree.sizes) {
    if (path.size() > kLongestName) taken.push_back(path);
  }
  for (const std::string& path : taken) tree.sizes.erase(path);
  return taken;
}

base::Outcome CheckLimits(const FileTree& tree) {
  if (tree.sizes.size() > kMostFiles) {
    return base::Failure(std::to_string(tree.sizes.size()) + " files; an archive holds " + std::to_string(kMostFiles));
  }
  const auto large = std::ranges::find_if(tree.sizes, [](const auto& file) { return file.second > kLargestFile; });
  if (large == tree.sizes.end()) return base::Result::Done;
  return base::Failure(large->first + " has " + std::to_string(large->second) + " bytes; an archive holds " +
                       std::to_string(kLargestFile) + " of a file");
}

base::Outcome CheckWhole(host::FileSystem& files, const std::string& archive, const FileTree& tree) {
  const auto header = ReadCabinetHeader(files, archive);
  if (!header || header->size != files.FileSize(archive)) return base::Failure("Archive is not whole: " + archive);
  if (header->files == tree.sizes.size()) return base::Result::Done;
  return base::Failure("Archive holds " + std::to_string(header->files) + " of " + std::to_string(tree.sizes.size()) +
                       " files: " + archive);
}

base::Outcome CheckUnpacked(host::FileSystem& files, const std::string& archive, const FileTree& tree) {
  const auto header = ReadCabinetHeader(files, archive);
  if (header && header->files > 0 && tree.sizes.size() >= header->files) return base::Result::Done;
  return base::Failure(archive + " was not unpacked whole");
}

}  // namespace backupset
