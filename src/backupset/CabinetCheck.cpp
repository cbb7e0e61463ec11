// What a cabinet says of itself, against what was put into it or came out of it.
#include "backupset/CabinetCheck.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/Path.h"

namespace backupset {
namespace {

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

}  // namespace

std::optional<CabinetHeader> ReadCabinetHeader(host::FileSystem& files, const std::string& path) {
  std::array<std::byte, kHeaderSize> bytes{};
  const auto file = files.OpenBinary(path);
  if (!file || file->Read(bytes.data(), bytes.size()) != static_cast<std::int64_t>(bytes.size())) return std::nullopt;
  if (!std::equal(kSignature.begin(), kSignature.end(), bytes.begin())) return std::nullopt;
  return CabinetHeader{Number(&bytes[kSizeAt], 4), static_cast<std::uint16_t>(Number(&bytes[kFilesAt], 2))};
}

std::size_t CountFiles(const work::Tools& tools, const std::string& folder, const std::string& leftOut) {
  std::vector<host::FolderEntry> entries;
  static_cast<void>(tools.files.List(folder, "*", entries));
  std::size_t count = 0;
  for (const host::FolderEntry& entry : entries) {
    if (!entry.isFolder) ++count;
    if (entry.isFolder && !base::SameName(entry.name, leftOut)) count += CountFiles(tools, folder + entry.name + "\\");
  }
  tools.messageLoop.Yield();
  return count;
}

base::Outcome CheckWhole(host::FileSystem& files, const std::string& archive, std::size_t members) {
  const auto header = ReadCabinetHeader(files, archive);
  if (!header || header->size != files.FileSize(archive)) return base::Failure("Archive is not whole: " + archive);
  if (header->files == members) return base::Result::Done;
  return base::Failure("Archive holds " + std::to_string(header->files) + " of " + std::to_string(members) +
                       " files: " + archive);
}

}  // namespace backupset
