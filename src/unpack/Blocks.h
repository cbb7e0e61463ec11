// Checks the data blocks of a cabinet and unpacks them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "cabinet/Blocks.h"

struct libdeflate_decompressor;
struct z_stream_s;

namespace unpack {

/// Blocks that are read and handed to a thread together.
inline constexpr std::size_t kBlocksPerJob = 4;

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
  cabinet::Method method = cabinet::Method::MsZip;
  std::uint8_t blockReserve = 0;
  bool allowUnchecked = false;
  bool history = false;  ///< earlier blocks of the folder needed history: do not try without
  std::vector<std::uint8_t> blocks;
  std::vector<BlockPlace> places;

  /// Data of the blocks end to end, up to `unpackedSize`; before them room for the 32 KB that precede them.
  std::vector<std::uint8_t> unpacked = std::vector<std::uint8_t>((1 + kBlocksPerJob) * cabinet::kBlockSize);
  std::vector<BlockState> states;

  std::uint8_t* Data() { return unpacked.data() + cabinet::kBlockSize; }
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

}  // namespace unpack
