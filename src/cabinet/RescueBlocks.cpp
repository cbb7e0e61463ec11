// Finds the sound blocks of a damaged cabinet.
#include <algorithm>
#include <bit>
#include <cstring>
#include <optional>
#include <utility>

#include "cabinet/Rescue.h"

namespace cabinet {
namespace {

/// How many times the cabinet's size may be looked at in search of blocks, for all damages together: cabinets within
/// cabinets look like runs of blocks too, and hostile ones like any number of them.
constexpr std::uint64_t kMostLooks = 8;

/// What a medium fails to read at once.
constexpr std::uint64_t kSectorSize = 512;

class FolderRescue {
 public:
  FolderRescue(Source& source, RescuedStructure& rescued)
      : window_(source),
        size_(source.Size()),
        effort_(kMostLooks * source.Size()),
        rescued_(rescued),
        structure_(rescued.structure) {}

  std::vector<RescuedFolder> Run() {
    std::vector<RescuedFolder> folders(structure_.folders.size());
    const std::vector<std::uint64_t> extents = structure_.Extents();
    before_ = structure_.recordsEnd;
    for (std::size_t i = 0; i < folders.size(); ++i) {
      out_ = &folders[i];
      folder_ = i;
      extent_ = extents[i];
      if (extent_ > 0) Rescue(structure_.folders[i]);
    }
    return folders;
  }

 private:
  std::size_t HeaderSize() const { return kBlockHeaderSize + structure_.blockReserve; }

  std::optional<BlockHeader> HeaderAt(std::uint64_t at) {
    const std::uint8_t* const bytes = at < size_ ? window_.At(at, HeaderSize()) : nullptr;
    return bytes ? std::optional(ReadBlockHeader(bytes)) : std::nullopt;
  }

  /// Whether a block stands there whole, as it was written. One without a checksum need only look like one.
  bool IsSound(std::uint64_t at) {
    if (SoundBlockAt(window_, at, structure_.blockReserve)) return true;
    const std::optional<BlockHeader> header = HeaderAt(at);
    if (structure_.guarded || !header || header->checksum != 0 || !header->IsPossible()) return false;
    const std::uint8_t* const bytes = window_.At(at, HeaderSize() + header->packedSize);
    return bytes && LooksPacked(bytes, *header);
  }

  /// Whether the block at at_ is sound but for the sizes in its header, and these are the right ones.
  bool FitsWithSizes(std::uint64_t packed, std::uint64_t unpacked) {
    if (packed > kMaxAcceptedBlock || unpacked > kBlockSize) return false;
    const std::size_t size = HeaderSize() + static_cast<std::size_t>(packed);
    const std::uint8_t* const bytes = window_.At(at_, size);
    if (!bytes || Get32(bytes) == 0) return false;
    std::vector<std::uint8_t> block(bytes, bytes + size);
    Put16(&block[4], static_cast<std::uint32_t>(packed));
    Put16(&block[6], static_cast<std::uint32_t>(unpacked));
    return ChecksumFits(block.data(), ReadBlockHeader(block.data()), structure_.blockReserve);
  }

  bool HasZipMark(const std::uint8_t* block, const BlockHeader& header) const {
    return header.packedSize >= kZipMark.size() &&
           std::memcmp(block + HeaderSize(), kZipMark.data(), kZipMark.size()) == 0;
  }

  bool LooksPacked(const std::uint8_t* block, const BlockHeader& header) const {
    return out_->method == Method::MsZip ? HasZipMark(block, header) : header.packedSize == header.unpackedSize;
  }

  /// Where the folder's data begin: where its record says, or else where those before it end.
  std::uint64_t Start(const Folder& record) {
    if (record.dataAt >= before_ && IsSound(record.dataAt)) return record.dataAt;
    return IsSound(before_) ? before_ : std::max<std::uint64_t>(record.dataAt, before_);
  }

  /// A method that there is not is told from what a sound block looks like.
  Method MethodOf(const Folder& record) {
    const auto method = static_cast<Method>(record.method & kMethodMask);
    const std::optional<BlockHeader> header = IsSound(at_) ? HeaderAt(at_) : std::nullopt;
    if (!header) return method;
    const bool zip = HasZipMark(window_.At(at_, HeaderSize() + header->packedSize), *header);
    if (zip && (method != Method::None || header->packedSize != header->unpackedSize)) return Method::MsZip;
    const bool known = method == Method::Quantum || method == Method::Lzx;
    const bool plain = header->packedSize == header->unpackedSize && (!known || record.method >> 8 == 0);
    return plain && !zip ? Method::None : method;
  }

  void Rescue(const Folder& record) {
    out_->method = static_cast<Method>(record.method & kMethodMask);
    at_ = Start(record);
    out_->method = MethodOf(record);
    if (out_->method != static_cast<Method>(record.method & kMethodMask)) Note("the method of a folder is damaged");
    offset_ = 0;
    count_ = 0;
    unsure_.reset();
    while (offset_ < extent_) {
      if (IsSound(at_)) {
        TakeBlock(*HeaderAt(at_));
      } else if (!ClaimsTooMuch(record) && !PassDamagedBlock()) {
        Lose(offset_, extent_, WhyNoMore());
        break;
      }
    }
    if (unsure_ && offset_ != extent_) LoseBehind(*unsure_);
    if (structure_.guarded && rescued_.trusted && out_->damages.size() == 1 && count_ == record.blocks)
      MendBytes(record);
    before_ = std::max(before_, at_);
    if (IsBorder(at_) && out_->damages.empty() && count_ != record.blocks) {
      Note("the number of a folder's blocks is damaged");
    }
  }

  void TakeBlock(const BlockHeader& header) {
    out_->blocks.push_back({at_, offset_, header, {}});
    Pass(header.packedSize, header.unpackedSize);
  }

  void TakeMended(std::uint64_t packed) {
    Note("the sizes of a block are damaged, and were put right");
    TakeBlock({HeaderAt(at_)->checksum, static_cast<std::size_t>(packed), FullBlock()});
  }

  void Note(const char* words) { rescued_.flaws.emplace_back(words); }

  void Pass(std::size_t packed, std::size_t unpacked) {
    at_ += HeaderSize() + packed;
    offset_ += unpacked;
    ++count_;
  }

  /// All the folder's blocks were there and sound, and still the last member wants more: its size is damaged.
  bool ClaimsTooMuch(const Folder& record) {
    if (count_ != record.blocks || !out_->damages.empty()) return false;
    for (Member& member : structure_.members) {
      if (member.folder != folder_ || std::uint64_t{member.at} + member.size != extent_ || member.at >= offset_)
        continue;
      member.size = static_cast<std::uint32_t>(offset_ - member.at);
      rescued_.flaws.push_back(member.name + ": its size is damaged; it ends where the data end");
      extent_ = offset_;
      return true;
    }
    return false;
  }

  /// False where nobody can tell what follows.
  bool PassDamagedBlock() { return PassByHeader() || PassPlainBlock() || PassToRun(); }

  bool IsBorder(std::uint64_t at) const {
    if (at == size_ || at == structure_.size) return true;
    return folder_ + 1 < structure_.folders.size() && at == structure_.folders[folder_ + 1].dataAt;
  }

  /// The damaged block's header may be right, or one of the sizes in it.
  bool PassByHeader() {
    const std::optional<BlockHeader> header = HeaderAt(at_);
    if (!header || header->packedSize > kMaxAcceptedBlock) return false;
    const std::uint64_t next = at_ + HeaderSize() + header->packedSize;
    if (!IsBorder(next) && !IsSound(next)) return false;
    if (FitsWithSizes(header->packedSize, FullBlock())) {
      TakeMended(header->packedSize);
      return true;
    }
    const bool possible = header->unpackedSize > 0 && header->unpackedSize <= kBlockSize;
    LoseBlock(header->packedSize, possible ? header->unpackedSize : FullBlock());
    return true;
  }

  /// What is not packed comes in blocks of one size.
  bool PassPlainBlock() {
    if (out_->method != Method::None || !IsSound(at_ + HeaderSize() + kBlockSize)) return false;
    LoseBlock(kBlockSize, kBlockSize);
    return true;
  }

  std::size_t FullBlock() const {
    return static_cast<std::size_t>(std::min<std::uint64_t>(kBlockSize, extent_ - offset_));
  }

  void LoseBlock(std::size_t packed, std::size_t unpacked) {
    if (!unsure_) unsure_ = offset_ + 1;
    lost_ = {at_, offset_, {0, packed, unpacked}, {}};
    Lose(offset_, offset_ + unpacked, "a block is damaged");
    Pass(packed, unpacked);
  }

  /// To the next run of blocks that leads to the end of the folder: counted from there, its place is certain.
  bool PassToRun() {
    if (out_->method != Method::MsZip) return false;  // what is not packed may hold anything that looks like a block
    for (std::uint64_t at = at_ + 1; at + HeaderSize() < size_ && Spend(1); ++at) {
      const std::uint8_t* const bytes = window_.At(at, HeaderSize() + kZipMark.size());
      if (!bytes && !window_.CannotBeRead()) return false;
      if (!bytes) {
        at |= kSectorSize - 1;
        continue;
      }
      const BlockHeader header = ReadBlockHeader(bytes);
      if (!header.IsPossible() || !HasZipMark(bytes, header)) continue;
      if (!Spend(header.packedSize) || !IsSound(at)) continue;
      const std::optional<std::uint64_t> length = RunLength(at);
      if (!length || *length + offset_ >= extent_ || (extent_ - *length - offset_) % kBlockSize != 0) continue;
      if (FitsWithSizes(at - at_ - HeaderSize(), extent_ - *length - offset_)) {
        TakeMended(at - at_ - HeaderSize());
        return true;
      }
      Lose(offset_, extent_ - *length, "blocks are damaged");
      at_ = at;
      offset_ = extent_ - *length;
      unsure_.reset();
      return true;
    }
    return false;
  }

  bool Spend(std::uint64_t bytes) {
    effort_ -= std::min(effort_, bytes);
    return effort_ > 0;
  }

  /// How many unpacked bytes the blocks from `at` to a border hold, as their headers say; nothing when they lead to
  /// none.
  std::optional<std::uint64_t> RunLength(std::uint64_t at) {
    std::uint64_t length = 0;
    while (!IsBorder(at)) {
      const std::optional<BlockHeader> header = HeaderAt(at);
      if (!header || !header->IsPossible() || !Spend(kBlockHeaderSize + header->packedSize)) return std::nullopt;
      at += HeaderSize() + header->packedSize;
      length += header->unpackedSize;
    }
    return length;
  }

  std::string WhyNoMore() {
    const std::optional<BlockHeader> header = HeaderAt(at_);
    if (!header) return window_.CannotBeRead() ? "they cannot be read" : "their end is missing";
    return at_ + HeaderSize() + header->packedSize > size_ ? "their end is missing" : "a block is damaged";
  }

  void Lose(std::uint64_t from, std::uint64_t to, const std::string& words) {
    out_->damages.push_back({"its data are damaged: " + words, folder_, from, to});
  }

  /// Puts right the only block that is damaged, where a few wrong bytes explain both its checksum and the folder's CRC.
  void MendBytes(const Folder& record) {
    const std::uint64_t start = out_->blocks.empty() ? lost_.at : std::min(lost_.at, out_->blocks.front().at);
    const std::size_t size = HeaderSize() + lost_.header.packedSize;
    const std::optional<std::uint32_t> crc = CrcOf(start, at_);
    const std::uint8_t* const bytes = crc ? window_.At(lost_.at, size) : nullptr;
    if (!bytes) return;
    const std::vector<std::uint8_t> damaged(bytes, bytes + size);
    const std::uint32_t difference = Checksum(&damaged[4], size - 4, 0) ^ Get32(damaged.data());
    std::vector<std::uint8_t> block;
    const auto fits = [&](const WrongBytes& wrong) {
      if (!MayExplain(difference, size, wrong)) return false;
      block = damaged;
      lost_.wrong = wrong;
      Mend(lost_, block.data());
      return ChecksumFits(block.data(), ReadBlockHeader(block.data()), structure_.blockReserve);
    };
    if (!FindWrongBytes(size, at_ - lost_.at - size, *crc ^ record.crc, fits)) return;
    lost_.header = ReadBlockHeader(block.data());
    Note("a part of its data was wrong, and was put right");
    out_->damages.clear();
    const auto behind = [](const FoundBlock& one, const FoundBlock& other) { return one.at < other.at; };
    out_->blocks.insert(std::upper_bound(out_->blocks.begin(), out_->blocks.end(), lost_, behind), lost_);
  }

  /// Whether so wrong bytes lie within a block of that size, and make its checksum differ like that: a quick look,
  /// which almost no place passes. The checksum sees them turned by their place within a word, except in the last word.
  static bool MayExplain(std::uint32_t difference, std::size_t size, const WrongBytes& wrong) {
    const std::size_t count = static_cast<std::size_t>(std::bit_width(wrong.mask) + 7) / 8;
    if (wrong.at + count > size || (wrong.at < kBlockHeaderSize && wrong.at + count > 4)) return false;
    return wrong.at + count + 4 > size || std::rotl(wrong.mask, static_cast<int>(wrong.at % 4 * 8)) == difference;
  }

  std::optional<std::uint32_t> CrcOf(std::uint64_t from, std::uint64_t to) {
    std::uint32_t crc = 0;
    while (from < to) {
      const std::size_t size = static_cast<std::size_t>(std::min<std::uint64_t>(Window::kReach, to - from));
      const std::uint8_t* const bytes = window_.At(from, size);
      if (!bytes) return std::nullopt;
      crc = Crc32(crc, bytes, size);
      from += size;
    }
    return crc;
  }

  /// The sizes that damaged headers claimed do not add up to what the members need, so nobody knows where in the stream
  /// the blocks behind them belong.
  void LoseBehind(std::uint64_t offset) {
    std::erase_if(out_->blocks, [offset](const FoundBlock& block) { return block.offset >= offset; });
    Lose(offset - 1, extent_, "it is not known how much is missing");
  }

  Window window_;
  const std::uint64_t size_;
  std::uint64_t effort_;  // bytes that may still be looked at in search of blocks
  RescuedStructure& rescued_;
  Structure& structure_;
  RescuedFolder* out_ = nullptr;
  std::size_t folder_ = 0;
  std::uint64_t extent_ = 0;             // what the folder's members need
  std::uint64_t before_ = 0;             // where the data of the folder before end
  std::uint64_t at_ = 0;                 // of the next block
  std::uint64_t offset_ = 0;             // of its data in the folder's stream
  unsigned count_ = 0;                   // blocks passed
  FoundBlock lost_;                      // the block that was lost last, by its sizes
  std::optional<std::uint64_t> unsure_;  // behind the first block whose unpacked size is not certain
};

}  // namespace

void Mend(const FoundBlock& found, std::uint8_t* block) {
  Put16(block + 4, static_cast<std::uint32_t>(found.header.packedSize));
  Put16(block + 6, static_cast<std::uint32_t>(found.header.unpackedSize));
  for (std::size_t i = 0; i < 4 && found.wrong.mask >> 8 * i != 0; ++i) {
    std::uint8_t& byte = block[found.wrong.at + i];
    byte = static_cast<std::uint8_t>(byte ^ found.wrong.mask >> 8 * i);
  }
}

std::vector<RescuedFolder> RescueBlocks(Source& source, RescuedStructure& rescued) {
  return FolderRescue(source, rescued).Run();
}

}  // namespace cabinet
