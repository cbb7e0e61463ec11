// Images of floppies: FAT12 disks, of which the root folder alone is read. Nothing in them is believed.
#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <utility>

#include "cabarc/Platform.h"
#include "cabinet/Format.h"
#include "cabinet/Names.h"
#include "set-check/Folder.h"

namespace setcheck {
namespace {

using cabinet::Get16;
using cabinet::Get32;

constexpr std::size_t kBootSector = 512;
constexpr std::size_t kEntrySize = 32;
constexpr std::uint8_t kVolumeLabel = 0x08;
constexpr std::uint8_t kSubfolder = 0x10;
constexpr std::uint8_t kLongName = 0x0F;
constexpr std::uint8_t kDeleted = 0xE5;
constexpr unsigned kFirstCluster = 2;
constexpr unsigned kEndOfChain = 0xFF8;

/// Exactly `count` bytes.
bool Read(cabinet::Source& source, std::uint64_t at, std::size_t count, std::vector<std::uint8_t>& bytes) {
  bytes.resize(count);
  for (std::size_t have = 0; have < count;) {
    const std::int64_t got = source.ReadAt(at + have, bytes.data() + have, count - have);
    if (got <= 0) return false;
    have += static_cast<std::size_t>(got);
  }
  return true;
}

/// How a disk is laid out, in bytes.
struct Layout {
  std::size_t fatAt = 0;
  std::size_t fatSize = 0;
  std::size_t rootAt = 0;
  std::size_t rootSize = 0;
  std::size_t dataAt = 0;
  std::size_t clusterSize = 0;
};

/// Nothing where the boot sector is none of a FAT12 disk.
std::optional<Layout> LayoutOf(const std::vector<std::uint8_t>& boot, std::uint64_t imageSize) {
  const std::size_t sector = Get16(&boot[11]);
  Layout layout;
  layout.clusterSize = boot[13] * sector;
  layout.fatAt = Get16(&boot[14]) * sector;
  layout.fatSize = Get16(&boot[22]) * sector;
  layout.rootAt = layout.fatAt + boot[16] * layout.fatSize;
  layout.rootSize = Get16(&boot[17]) * kEntrySize;
  layout.dataAt = layout.rootAt + layout.rootSize;
  constexpr std::size_t kMostClusters = 4084;  // with more it would not be FAT12
  const bool sound = sector == kBootSector && layout.clusterSize > 0 && layout.fatAt > 0 && layout.fatSize > 0 &&
                     layout.rootSize > 0 && layout.dataAt < imageSize &&
                     (imageSize - layout.dataAt) / layout.clusterSize <= kMostClusters;
  return sound ? std::optional(layout) : std::nullopt;
}

/// A file on a disk: its bytes lie in clusters.
class FloppyFile : public cabinet::Source {
 public:
  FloppyFile(std::unique_ptr<cabinet::Source> image, const Layout& layout, std::vector<unsigned> clusters,
             std::uint64_t size)
      : image_(std::move(image)), layout_(layout), clusters_(std::move(clusters)), size_(size) {}

  std::int64_t ReadAt(std::uint64_t offset, void* data, std::size_t count) override {
    if (offset >= size_) return 0;
    const std::size_t index = static_cast<std::size_t>(offset / layout_.clusterSize);
    const std::size_t within = static_cast<std::size_t>(offset % layout_.clusterSize);
    if (index >= clusters_.size()) return -1;  // the disk has lost the rest
    std::size_t run = 1;                       // clusters that lie end to end are read at once
    while (index + run < clusters_.size() && clusters_[index + run] == clusters_[index] + run &&
           run * layout_.clusterSize < within + count) {
      ++run;
    }
    const std::uint64_t there = std::min<std::uint64_t>(run * layout_.clusterSize - within, size_ - offset);
    const std::uint64_t at = layout_.dataAt + std::uint64_t{clusters_[index] - kFirstCluster} * layout_.clusterSize;
    const std::int64_t got =
        image_->ReadAt(at + within, data, static_cast<std::size_t>(std::min<std::uint64_t>(there, count)));
    return got == 0 ? -1 : got;  // the image ends before the file
  }
  std::uint64_t Size() override { return size_; }

 private:
  std::unique_ptr<cabinet::Source> image_;
  const Layout layout_;
  const std::vector<unsigned> clusters_;
  const std::uint64_t size_;
};

class FloppyFolder : public Folder {
 public:
  FloppyFolder(Opener open, const Layout& layout, std::vector<std::uint8_t> fat)
      : open_(std::move(open)), layout_(layout), fat_(std::move(fat)) {}

  base::Obtained<cabinet::Source> Open(const Entry& file) override {
    auto image = open_();
    if (!image) return image.Why();
    return std::make_unique<FloppyFile>(image.Take(), layout_, Chain(file), file.size);
  }

 private:
  /// The clusters of a file; fewer than it needs where the chain ends or leads astray.
  std::vector<unsigned> Chain(const Entry& file) const {
    const std::uint64_t needed = (file.size + layout_.clusterSize - 1) / layout_.clusterSize;
    std::vector<unsigned> chain;
    unsigned cluster = file.start;
    while (chain.size() < needed && cluster >= kFirstCluster && cluster < kEndOfChain) {
      chain.push_back(cluster);
      const std::size_t at = cluster + cluster / 2;  // twelve bits each
      if (at + 2 > fat_.size()) break;
      cluster = (cluster % 2 == 0 ? Get16(&fat_[at]) : Get16(&fat_[at]) >> 4) & 0xFFFu;
    }
    return chain;
  }

  const Opener open_;
  const Layout layout_;
  const std::vector<std::uint8_t> fat_;
};

std::string ShortName(const std::uint8_t* entry) {
  const auto part = [&](std::size_t from, std::size_t size) {
    std::string text(entry + from, entry + from + size);
    return text.substr(0, text.find_last_not_of(' ') + 1);
  };
  const std::string extension = part(8, 3);
  return cabarc::platform::FromCodePage(part(0, 8) + (extension.empty() ? "" : "." + extension));
}

/// A long name stands in the entries before that of the file, the last piece first: thirteen UTF-16 units each. Of
/// names that a set has none is beyond ASCII; other characters are told apart no further.
class LongName {
 public:
  void Add(const std::uint8_t* entry) {
    constexpr std::array<std::uint8_t, 13> kUnits = {1, 3, 5, 7, 9, 14, 16, 18, 20, 22, 24, 28, 30};
    std::string& piece = pieces_[entry[0] & 0x1F];
    piece.clear();
    for (const std::uint8_t at : kUnits) {
      const unsigned unit = Get16(entry + at);
      if (unit == 0) break;
      piece += unit < 0x80 ? static_cast<char>(unit) : '_';
    }
  }
  /// The name, which is forgotten with this.
  std::string Take() {
    std::string name;
    for (const auto& [number, piece] : pieces_) name += piece;
    pieces_.clear();
    return name;
  }

 private:
  std::map<unsigned, std::string> pieces_;
};

void ReadRoot(const std::vector<std::uint8_t>& root, std::vector<Entry>& entries) {
  LongName longName;
  for (std::size_t at = 0; at + kEntrySize <= root.size() && root[at] != 0; at += kEntrySize) {
    const std::uint8_t* const entry = &root[at];
    if (entry[0] == kDeleted) {
      longName.Take();
    } else if (entry[11] == kLongName) {
      longName.Add(entry);
    } else {
      std::string name = longName.Take();
      if (name.empty()) name = ShortName(entry);
      if ((entry[11] & (kVolumeLabel | kSubfolder)) == 0) {
        entries.push_back({std::move(name), false, Get32(entry + 28), Get16(entry + 26)});
      }
    }
  }
}

}  // namespace

base::Obtained<Folder> OpenFloppy(Opener open, const std::string& path) {
  const auto image = open();
  if (!image) return image.Why();
  std::vector<std::uint8_t> boot;
  std::vector<std::uint8_t> fat;
  std::vector<std::uint8_t> root;
  if (!Read(*image, 0, kBootSector, boot)) return base::Failure("its first sector cannot be read");
  const auto layout = LayoutOf(boot, image->Size());
  if (!layout) return base::Failure("it is no floppy's image");
  if (!Read(*image, layout->fatAt, layout->fatSize, fat) || !Read(*image, layout->rootAt, layout->rootSize, root)) {
    return base::Failure("its list of files cannot be read");
  }
  auto folder = std::make_unique<FloppyFolder>(std::move(open), *layout, std::move(fat));
  folder->path = path;
  ReadRoot(root, folder->entries);
  std::ranges::sort(folder->entries, {}, &Entry::name);
  return folder;
}

}  // namespace setcheck
