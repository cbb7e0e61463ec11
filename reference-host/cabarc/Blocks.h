// Packs file data into the data blocks of a cabinet, and checks and unpacks them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "cabarc/CabFormat.h"
#include "cabinet/Blocks.h"

struct libdeflate_compressor;
struct libdeflate_decompressor;
struct z_stream_s;

namespace cabarc {

/// Blocks that are read, handed to a thread and written together.
inline constexpr std::size_t kBlocksPerJob = 4;

/// A run of data of one folder, and the blocks made of it.
struct PackJob {
  Method method = Method::MsZip;
  std::uint16_t folder = 0;
  std::vector<std::uint8_t> data = std::vector<std::uint8_t>(kBlocksPerJob * kBlockSize);
  std::size_t dataSize = 0;

  /// Room for each block of data to become two blocks (see BlockPacker).
  std::vector<std::uint8_t> packed =
      std::vector<std::uint8_t>(kBlocksPerJob * (2 * kBlockHeaderSize + kMaxPackedBlock));
  std::size_t packedSize = 0;
  unsigned blocks = 0;
  bool failed = false;
};

/// Packs each 32 KB by itself, without reference to what came before: that costs 3 % of size and lets any number of
/// threads work, in any order, on the same bytes.
///
/// To a reader a checksum of 0 means "not checked", so no block is ever given one. Where it would come out as 0, an
/// MSZIP block is written in another form of the same data, and an unpacked one is cut in two.
class BlockPacker {
 public:
  BlockPacker();
  BlockPacker(BlockPacker&&) noexcept = default;
  ~BlockPacker();

  void Run(PackJob& job);

 private:
  struct FreeCompressor {
    void operator()(libdeflate_compressor* compressor) const;
  };

  bool PackZip(const std::uint8_t* data, std::size_t size, PackJob& job);

  std::unique_ptr<libdeflate_compressor, FreeCompressor> compressor_;
};

enum class BlockState {
  Good,
  NeedsHistory,  ///< checked, but not unpacked: it may refer to the data before it
  Unchecked,     ///< its checksum is 0 and that was not allowed
  BadChecksum,
  Damaged,
};

/// Where a block lies in UnpackJob::blocks, its size there (header included) and unpacked.
struct BlockPlace {
  std::size_t at = 0;
  std::size_t size = 0;
  std::size_t unpackedSize = 0;
};

/// A run of blocks of one folder, and their data.
struct UnpackJob {
  Method method = Method::MsZip;
  std::uint8_t blockReserve = 0;
  bool allowUnchecked = false;
  bool history = false;  ///< earlier blocks of the folder needed history: do not try without
  std::vector<std::uint8_t> blocks;
  std::vector<BlockPlace> places;

  /// Data of the blocks end to end, up to `unpackedSize`; before them room for the 32 KB that precede them.
  std::vector<std::uint8_t> unpacked = std::vector<std::uint8_t>((1 + kBlocksPerJob) * kBlockSize);
  std::vector<BlockState> states;

  std::uint8_t* Data() { return unpacked.data() + kBlockSize; }
};

/// What one thread unpacks with. Blocks that refer to the data before them, as some other archivers write them, are
/// left for HistoryUnpacker, which must see them in order.
class BlockUnpacker {
 public:
  BlockUnpacker();
  BlockUnpacker(BlockUnpacker&&) noexcept = default;
  ~BlockUnpacker();

  void Run(UnpackJob& job);

 private:
  struct FreeDecompressor {
    void operator()(libdeflate_decompressor* decompressor) const;
  };

  BlockState Unpack(const UnpackJob& job, const BlockPlace& place, std::uint8_t* out);

  std::unique_ptr<libdeflate_decompressor, FreeDecompressor> decompressor_;
};

/// Unpacks MSZIP blocks that refer to up to 32 KB before them.
class HistoryUnpacker {
 public:
  HistoryUnpacker();
  HistoryUnpacker(const HistoryUnpacker&) = delete;
  HistoryUnpacker& operator=(const HistoryUnpacker&) = delete;
  ~HistoryUnpacker();

  /// Unpacks the block at `place` to `out`. The `history` bytes before `out` (at most 32 KB) are its past.
  bool Unpack(const UnpackJob& job, const BlockPlace& place, std::uint8_t* out, std::size_t history);

 private:
  std::unique_ptr<z_stream_s> stream_;
  bool ready_ = false;
};

}  // namespace cabarc
