// Floppies: which of them make up a set, and the joined archive that their pieces are.
#include "set-check/Disks.h"

#include <algorithm>
#include <cstring>

#include "backupset/Pieces.h"
#include "cabinet/Blocks.h"
#include "unpack/Blocks.h"

namespace setcheck {
namespace {

/// So many disks that are missing are named.
constexpr std::size_t kNamed = 20;

/// The pieces one behind the other. One of them is open at a time.
class Joined : public cabinet::Source {
 public:
  explicit Joined(const Pieces& pieces) : pieces_(pieces.pieces) {
    for (const Pieces::Piece& piece : pieces_) size_ += piece.size;
  }

  std::int64_t ReadAt(std::uint64_t offset, void* data, std::size_t count) override {
    std::size_t index = 0;
    for (; index < pieces_.size() && offset >= pieces_[index].size; ++index) offset -= pieces_[index].size;
    if (index == pieces_.size()) return 0;
    const Pieces::Piece& piece = pieces_[index];
    if (!piece.disk || !OpenPiece(index)) return -1;
    const std::int64_t got =
        open_->ReadAt(offset, data, static_cast<std::size_t>(std::min<std::uint64_t>(count, piece.size - offset)));
    return got == 0 ? -1 : got;  // it became shorter
  }
  std::uint64_t Size() override { return size_; }

 private:
  bool OpenPiece(std::size_t index) {
    if (open_ && opened_ == index) return true;
    opened_ = index;
    open_ = pieces_[index].disk->Open(*pieces_[index].file).Take();
    return open_ != nullptr;
  }

  const std::vector<Pieces::Piece> pieces_;
  std::uint64_t size_ = 0;
  std::size_t opened_ = 0;
  std::unique_ptr<cabinet::Source> open_;
};

/// Unpacks block by block as it is read. Going back costs a block where blocks are independent of each other; where
/// they are not, all from the folder's start on, which is why that is done a few times only.
class MemberData : public cabinet::Source {
 public:
  MemberData(cabinet::Source& cabinet, const cabinet::Structure& structure, const cabinet::Member& member)
      : member_(member), folder_(structure.folders[member.folder]), window_(cabinet) {
    job_.method = static_cast<cabinet::Method>(folder_.method & cabinet::kMethodMask);
    job_.blockReserve = structure.blockReserve;
    places_.push_back({folder_.dataAt, 0});
  }

  std::int64_t ReadAt(std::uint64_t offset, void* data, std::size_t count) override {
    if (offset >= member_.size) return 0;
    const std::uint64_t at = member_.at + offset;
    if (!GoTo(at)) return -1;
    const std::uint64_t there = std::min<std::uint64_t>(end_ - at, member_.size - offset);
    const std::size_t got = static_cast<std::size_t>(std::min<std::uint64_t>(there, count));
    std::memcpy(data, job_.Data() + (at - start_), got);
    return static_cast<std::int64_t>(got);
  }
  std::uint64_t Size() override { return member_.size; }

 private:
  static constexpr int kMostReturns = 16;

  struct Place {
    std::uint64_t at;      ///< of a block in the cabinet
    std::uint64_t offset;  ///< of its data in the folder's stream
  };

  /// Sees to it that the block with the byte `at` of the folder's stream is unpacked.
  bool GoTo(std::uint64_t at) {
    if (at < start_ && !GoBack(at)) return false;
    while (at >= end_) {
      if (!Next()) return false;
    }
    return true;
  }

  bool GoBack(std::uint64_t at) {
    next_ = 0;
    if (!usesHistory_) {
      const auto behind = std::ranges::upper_bound(places_, at, {}, &Place::offset);
      next_ = static_cast<std::size_t>(behind - places_.begin()) - 1;
    } else if (++returns_ > kMostReturns) {
      return false;
    }
    start_ = end_ = places_[next_].offset;
    known_ = 0;
    return true;
  }

  bool Next() {
    if (next_ >= folder_.blocks) return false;
    const Place place = places_[next_];
    const std::size_t before = cabinet::kBlockHeaderSize + job_.blockReserve;
    const std::uint8_t* bytes = window_.At(place.at, before);
    if (!bytes) return false;
    const cabinet::BlockHeader header = cabinet::ReadBlockHeader(bytes);
    const std::size_t size = before + header.packedSize;
    bytes = header.IsPossible() ? window_.At(place.at, size) : nullptr;
    if (!bytes) return false;
    job_.blocks.assign(bytes, bytes + size);
    job_.places = {{0, size, header.unpackedSize}};
    // The last 32 KB go before the block's data, which may refer to them.
    std::memmove(job_.unpacked.data(), job_.unpacked.data() + (end_ - start_), cabinet::kBlockSize);
    if (!Unpack()) return false;
    start_ = place.offset;
    end_ = start_ + header.unpackedSize;
    known_ = std::min<std::size_t>(cabinet::kBlockSize, known_ + header.unpackedSize);
    if (++next_ == places_.size()) places_.push_back({place.at + size, end_});
    return true;
  }

  bool Unpack() {
    job_.history = usesHistory_;
    unpacker_.Run(job_);
    if (job_.states[0] != unpack::BlockState::NeedsHistory) return job_.states[0] == unpack::BlockState::Good;
    usesHistory_ = true;
    return history_.Unpack(job_, job_.places[0], job_.Data(), known_);
  }

  const cabinet::Member& member_;
  const cabinet::Folder& folder_;
  cabinet::Window window_;
  unpack::UnpackJob job_;
  unpack::BlockUnpacker unpacker_;
  unpack::HistoryUnpacker history_;
  std::vector<Place> places_;  // of the blocks that were come by, and of the next one
  std::size_t next_ = 0;       // among them
  std::uint64_t start_ = 0;    // of what is unpacked, in the folder's stream
  std::uint64_t end_ = 0;
  std::size_t known_ = 0;  // bytes before the next block that were unpacked without a gap
  bool usesHistory_ = false;
  int returns_ = 0;
};

bool AreOfOneSet(const Disk& one, const Disk& other) {
  return one.mark.Fits(other.mark) && other.mark.Fits(one.mark);
}

/// Whether one folder holds what stood on several disks.
bool IsGathered(const Pile& pile, std::int16_t count) {
  if (pile.disks.size() > 1) return false;
  const Disk& disk = pile.disks.front();
  for (std::int16_t number = 1; number <= count; ++number) {
    if (number != disk.number && disk.folder->Find(backupset::PieceName(number))) return true;
  }
  return false;
}

std::int16_t NumberOf(const Disk& disk) {
  return disk.number.value_or(0);
}

}  // namespace

Disk ReadDisk(NoHost& noHost, std::unique_ptr<Folder> folder) {
  noHost.files.Mount(NoHost::kSet, folder.get());
  const work::Tools tools = noHost.Tools();
  const std::string number = backupset::ReadIniValue(tools, NoHost::kSet, backupset::kDescriptorFile, "FDNumber");
  Disk disk{nullptr, backupset::ReadMark(tools, NoHost::kSet), backupset::ReadDiskNumber(number)};
  disk.folder = std::move(folder);
  return disk;
}

std::vector<Pile> SortDisks(std::vector<Disk> disks, const std::string& path) {
  std::vector<Pile> piles;
  for (Disk& disk : disks) {
    auto pile = std::ranges::find_if(piles, [&](const Pile& one) { return AreOfOneSet(one.disks.front(), disk); });
    if (pile == piles.end()) pile = piles.insert(pile, Pile{path, {}});
    pile->disks.push_back(std::move(disk));
  }
  for (Pile& pile : piles) {
    std::ranges::stable_sort(pile.disks, {}, NumberOf);
    if (pile.disks.size() == 1) pile.path = pile.disks.front().folder->path;
  }
  return piles;
}

Pieces FindPieces(const Pile& pile, std::int16_t count) {
  Pieces pieces;
  const bool gathered = IsGathered(pile, count);
  for (std::int16_t number = 1; number <= count; ++number) {
    const std::string name = backupset::PieceName(number);
    Pieces::Piece piece{nullptr, nullptr, backupset::kPieceSize};
    std::size_t disks = 0;
    for (const Disk& disk : pile.disks) {
      if (!gathered && disk.number != number) continue;
      if (++disks > 1) continue;
      piece.file = disk.folder->Find(name);
      if (piece.file) piece = {disk.folder.get(), piece.file, piece.file->size};
    }
    const bool full = !pieces.pieces.empty() && pieces.pieces.back().size == backupset::kPieceSize;
    if (number == count && disks == 1 && !piece.file && full) break;  // a last disk that holds a descriptor alone
    const std::string disk = "disk " + std::to_string(number);
    if (pieces.missing.size() == kNamed) break;
    if (!piece.file) pieces.missing.push_back(disk + (disks == 0 || gathered ? " is missing" : " lacks " + name));
    if (disks > 1) pieces.missing.push_back(std::to_string(disks) + " disks say that they are " + disk);
    pieces.pieces.push_back(piece);
  }
  if (gathered) pieces.odd.push_back("all pieces stand in one folder; a restore asks for disk after disk");
  return pieces;
}

std::unique_ptr<cabinet::Source> Join(const Pieces& pieces) {
  return std::make_unique<Joined>(pieces);
}

std::unique_ptr<cabinet::Source> OpenMember(cabinet::Source& cabinet, const cabinet::Structure& structure,
                                            const cabinet::Member& member) {
  return std::make_unique<MemberData>(cabinet, structure, member);
}

}  // namespace setcheck
