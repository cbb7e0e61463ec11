// Packs file data into the data blocks of a cabinet.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "cabarc/CabFormat.h"
#include "cabinet/Blocks.h"

struct libdeflate_compressor;

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

}  // namespace cabarc
