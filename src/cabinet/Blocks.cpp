// Walks the data blocks of a cabinet.
#include "cabinet/Blocks.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace cabinet {
namespace {

using base::Failure;
using base::Outcome;
using base::Result;

class Walk {
 public:
  Walk(Source& source, const Structure& structure, WalkObserver& observer)
      : window_(source), structure_(structure), observer_(observer), extents_(structure.Extents()) {}

  Outcome Run() {
    for (std::size_t i = 0; i < structure_.folders.size() && !ended_; ++i) WalkFolder(i);
    if (!first_.empty()) return Failure(first_);
    return ended_ ? Outcome(Result::Stopped) : Outcome(Result::Done);
  }

 private:
  void WalkFolder(std::size_t index) {
    const Folder& folder = structure_.folders[index];
    folder_ = index;
    at_ = folder.dataAt;
    end_ = structure_.EndOfFolder(index);
    offset_ = 0;
    for (unsigned i = 0; i < folder.blocks && !ended_; ++i) {
      if (!WalkBlock()) return;
    }
    if (!ended_) CheckExtent();
  }

  /// False where nothing tells where the next block stands.
  bool WalkBlock() {
    const std::size_t before = kBlockHeaderSize + structure_.blockReserve;
    const std::uint8_t* bytes = at_ + before <= end_ ? window_.At(at_, before) : nullptr;
    if (!bytes) return LoseRest(Unreadable());
    const BlockHeader header = ReadBlockHeader(bytes);
    const std::size_t size = before + header.packedSize;
    if (!header.IsPossible() || at_ + size > end_) return LoseRest("a block's size is impossible");
    bytes = window_.At(at_, size);
    const char* const wrong = bytes ? WhatIsWrong(bytes, header) : Unreadable();
    if (wrong) {
      Tell(wrong, offset_ + header.unpackedSize);
    } else if (!observer_.Sound({folder_, at_, offset_, header, bytes, size})) {
      ended_ = true;
    }
    at_ += size;
    offset_ += header.unpackedSize;
    return true;
  }

  const char* WhatIsWrong(const std::uint8_t* bytes, const BlockHeader& header) const {
    const std::uint8_t* const packed = bytes + kBlockHeaderSize + structure_.blockReserve;
    if (header.checksum == 0 && structure_.guarded) return "a block has no checksum";
    if (header.checksum != 0 && !ChecksumFits(bytes, header, structure_.blockReserve)) return "a checksum is wrong";
    const auto method = static_cast<Method>(structure_.folders[folder_].method & kMethodMask);
    if (method == Method::None && header.packedSize != header.unpackedSize) return "a block's size is impossible";
    const bool marked =
        header.packedSize >= kZipMark.size() && std::memcmp(packed, kZipMark.data(), kZipMark.size()) == 0;
    return method == Method::MsZip && !marked ? "a block is not packed as it should be" : nullptr;
  }

  const char* Unreadable() const { return window_.CannotBeRead() ? "they cannot be read" : "their end is missing"; }

  bool LoseRest(const char* wrong) {
    Tell(wrong, std::max(extents_[folder_], offset_));
    return false;
  }

  /// The blocks must hold all that the members need; those of a guarded cabinet, nothing else.
  void CheckExtent() {
    const std::uint64_t extent = extents_[folder_];
    if (offset_ < extent) Tell("a part of them is missing", extent);
    if (structure_.guarded && offset_ > extent) Tell("they are not those that it was written with", offset_);
  }

  void Tell(const char* wrong, std::uint64_t to) {
    const Damage damage{std::string("its data are damaged: ") + wrong, folder_, std::min(offset_, to), to};
    if (first_.empty()) first_ = damage.words;
    ended_ = !observer_.Damaged(damage);
  }

  Window window_;
  const Structure& structure_;
  WalkObserver& observer_;
  const std::vector<std::uint64_t> extents_;
  std::size_t folder_ = 0;
  std::uint64_t at_ = 0;      // of the next block in the cabinet
  std::uint64_t end_ = 0;     // of the folder there
  std::uint64_t offset_ = 0;  // of the next block's data in the folder's stream
  std::string first_;         // damage
  bool ended_ = false;
};

}  // namespace

BlockHeader ReadBlockHeader(const std::uint8_t* block) {
  return {Get32(block), Get16(block + 4), Get16(block + 6)};
}

bool ChecksumFits(const std::uint8_t* block, const BlockHeader& header, std::size_t reserve) {
  const std::uint32_t sum = Checksum(block + kBlockHeaderSize + reserve, header.packedSize, 0);
  return Checksum(block + 4, 4, sum) == header.checksum || Checksum(block + 4, 4 + reserve, sum) == header.checksum;
}

std::optional<BlockHeader> SoundBlockAt(Window& window, std::uint64_t at, std::size_t reserve) {
  const std::uint8_t* bytes = window.At(at, kBlockHeaderSize + reserve);
  if (!bytes) return std::nullopt;
  const BlockHeader header = ReadBlockHeader(bytes);
  if (!header.IsPossible() || header.checksum == 0) return std::nullopt;
  bytes = window.At(at, kBlockHeaderSize + reserve + header.packedSize);
  return bytes && ChecksumFits(bytes, header, reserve) ? std::optional(header) : std::nullopt;
}

base::Outcome WalkBlocks(Source& source, const Structure& structure, WalkObserver& observer) {
  return Walk(source, structure, observer).Run();
}

base::Outcome WalkBlocks(Source& source, const Structure& structure) {
  WalkObserver observer;
  return WalkBlocks(source, structure, observer);
}

std::vector<const Member*> TouchedMembers(const Structure& structure, const Damage& damage) {
  std::vector<const Member*> touched;
  for (const Member& member : structure.members) {
    const std::uint64_t end = std::uint64_t{member.at} + member.size;
    const bool overlaps = member.at < damage.to && damage.from < end;
    if (member.folder == damage.folder && overlaps && member.size > 0) touched.push_back(&member);
  }
  return touched;
}

}  // namespace cabinet
