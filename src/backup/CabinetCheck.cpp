// What a cabinet says of itself, against what was put into it or came out of it.
#include "backup/CabinetCheck.h"

#include <algorithm>
#include <array>
#include <vector>

#include "app/WindowsPath.h"
#include "backup/Programs.h"

namespace backup {
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

std::optional<CabinetHeader> ReadCabinetHeader(app::Application& application, const std::string& path) {
  std::array<std::byte, kHeaderSize> bytes{};
  const auto file = application.host.files.OpenBinary(path);
  if (!file || file->Read(bytes.data(), bytes.size()) != static_cast<std::int64_t>(bytes.size())) return std::nullopt;
  if (!std::equal(kSignature.begin(), kSignature.end(), bytes.begin())) return std::nullopt;
  return CabinetHeader{Number(&bytes[kSizeAt], 4), static_cast<std::uint16_t>(Number(&bytes[kFilesAt], 2))};
}

std::size_t CountFiles(app::Application& application, const std::string& folder, const std::string& leftOut) {
  std::vector<host::FolderEntry> entries;
  application.host.files.List(folder, "*", entries);
  std::size_t count = 0;
  for (const host::FolderEntry& entry : entries) {
    if (!entry.isFolder) ++count;
    if (entry.isFolder && !app::SameName(entry.name, leftOut))
      count += CountFiles(application, folder + entry.name + "\\");
  }
  application.host.messageLoop.Yield();
  return count;
}

void WarnUnlessWhole(app::Application& application, const std::string& archive, std::size_t files,
                     const std::string& category) {
  const auto header = ReadCabinetHeader(application, archive);
  if (!header || header->size != application.host.files.FileSize(archive)) {
    WarnOfLoss(application, "Archive is not whole: " + archive, category);
  } else if (header->files != files) {
    WarnOfLoss(application,
               "Archive holds " + std::to_string(header->files) + " of " + std::to_string(files) + " files: " + archive,
               category);
  }
}

}  // namespace backup
