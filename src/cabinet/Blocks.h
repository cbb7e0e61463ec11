// The data blocks of a cabinet, walked once in the order of the file without being unpacked: each has a checksum over
// its packed bytes, so a cabinet is checked as fast as it is read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Outcome.h"
#include "cabinet/Source.h"
#include "cabinet/Structure.h"

namespace cabinet {

/// What a block's header says of it.
struct BlockHeader {
  std::uint32_t checksum = 0;  ///< 0: there is none
  std::size_t packedSize = 0;
  std::size_t unpackedSize = 0;

  /// Whether a block of these sizes can be.
  bool IsPossible() const { return packedSize <= kMaxAcceptedBlock && unpackedSize > 0 && unpackedSize <= kBlockSize; }
};

/// `block`: kBlockHeaderSize bytes.
BlockHeader ReadBlockHeader(const std::uint8_t* block);

/// Whether a block's checksum is that of its bytes; `reserve` of them stand between its header and its packed data.
/// Writers differ in whether those count.
bool ChecksumFits(const std::uint8_t* block, const BlockHeader& header, std::size_t reserve);

/// The header of the block that stands whole at `at`, with `reserve` bytes behind it, and has the checksum of its
/// bytes. Nothing where there is none; a block without a checksum is none.
std::optional<BlockHeader> SoundBlockAt(Window& window, std::uint64_t at, std::size_t reserve);

/// A block whose bytes are as they were written.
struct Block {
  std::size_t folder = 0;
  std::uint64_t at = 0;      ///< offset of its header in the cabinet
  std::uint64_t offset = 0;  ///< where its data stand in the folder's unpacked stream
  BlockHeader header;
  const std::uint8_t* bytes = nullptr;  ///< header, reserved bytes and packed data, while the observer is told
  std::size_t size = 0;
};

/// Something that is wrong, and the part of a folder's unpacked stream that is lost by it.
struct Damage {
  std::string words;  ///< about "it", the cabinet
  std::size_t folder = 0;
  std::uint64_t from = 0;
  std::uint64_t to = 0;  ///< behind its last byte
};

class WalkObserver {
 public:
  virtual ~WalkObserver() = default;

  /// A block in order, or one without a checksum in a cabinet that is not guarded. False ends the walk.
  virtual bool Sound(const Block&) { return true; }
  /// True goes on behind the damage, where there is a way. A damage may reach back over blocks that were called sound,
  /// when it turns out that nobody can tell where in the stream they belong.
  virtual bool Damaged(const Damage&) { return false; }
};

/// Walks all blocks of the cabinet that `structure` was read from, with memory that does not depend on its size. Done
/// when each is in order and every folder holds what its members need; otherwise the failure whose cause is the first
/// damage, or Stopped where the observer ended the walk before there was one.
base::Outcome WalkBlocks(Source& source, const Structure& structure, WalkObserver& observer);
/// The same up to the first damage.
base::Outcome WalkBlocks(Source& source, const Structure& structure);

/// The members that a damage touches, in the cabinet's order; those without a byte are never touched.
std::vector<const Member*> TouchedMembers(const Structure& structure, const Damage& damage);

}  // namespace cabinet
