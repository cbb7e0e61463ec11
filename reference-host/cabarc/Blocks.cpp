// Packs file data into the data blocks of a cabinet.
#include "cabarc/Blocks.h"

#include <libdeflate.h>

#include <algorithm>
#include <cstring>

namespace cabarc {

namespace {

constexpr int kLevel = 6;
constexpr std::size_t kZipMarkSize = 2;       // "CK"
constexpr std::size_t kStoredHeaderSize = 5;  // of a deflate block that holds its data as they are
constexpr std::size_t kSlack = 8;             // that the compressor wants behind its output
constexpr std::uint8_t kPaddingBit = 0x80;    // of the stored header's first byte; every reader skips these bits

// Writes the header of a block whose data follow it. False when the checksum is 0.
bool Seal(std::uint8_t* block, std::size_t packedSize, std::size_t size) {
  Put16(block + 4, static_cast<std::uint32_t>(packedSize));
  Put16(block + 6, static_cast<std::uint32_t>(size));
  const std::uint32_t sum = Checksum(block + 4, 4, Checksum(block + kBlockHeaderSize, packedSize, 0));
  Put32(block, sum);
  return sum != 0;
}

std::size_t Store(const std::uint8_t* data, std::size_t size, std::uint8_t* deflated) {
  deflated[0] = 1;  // the last deflate block, stored
  Put16(deflated + 1, static_cast<std::uint32_t>(size));
  Put16(deflated + 3, ~static_cast<std::uint32_t>(size));
  std::memcpy(deflated + kStoredHeaderSize, data, size);
  return kStoredHeaderSize + size;
}

void Add(PackJob& job, std::size_t packedSize) {
  job.packedSize += kBlockHeaderSize + packedSize;
  ++job.blocks;
}

// False for data so contrived that every cut leaves one half with a checksum of 0.
bool PackPlain(const std::uint8_t* data, std::size_t size, PackJob& job) {
  const auto put = [&](std::uint8_t* block, std::size_t from, std::size_t to) {
    std::memcpy(block + kBlockHeaderSize, data + from, to - from);
    return Seal(block, to - from, to - from);
  };
  std::uint8_t* const block = job.packed.data() + job.packedSize;
  if (put(block, 0, size)) {
    Add(job, size);
    return true;
  }
  for (std::size_t cut = 1; cut < size; ++cut) {
    if (put(block, 0, cut) && put(block + kBlockHeaderSize + cut, cut, size)) {
      Add(job, cut);
      Add(job, size - cut);
      return true;
    }
  }
  return false;
}

}  // namespace

void BlockPacker::FreeCompressor::operator()(libdeflate_compressor* compressor) const {
  libdeflate_free_compressor(compressor);
}

BlockPacker::BlockPacker() : compressor_(libdeflate_alloc_compressor(kLevel)) {}

BlockPacker::~BlockPacker() = default;

void BlockPacker::Run(PackJob& job) {
  job.packedSize = 0;
  job.blocks = 0;
  job.failed = false;
  for (std::size_t at = 0; at < job.dataSize && !job.failed; at += kBlockSize) {
    const std::uint8_t* const data = job.data.data() + at;
    const std::size_t size = std::min(kBlockSize, job.dataSize - at);
    job.failed = !(job.method == Method::None ? PackPlain(data, size, job) : PackZip(data, size, job));
  }
}

bool BlockPacker::PackZip(const std::uint8_t* data, std::size_t size, PackJob& job) {
  if (!compressor_) return false;
  std::uint8_t* const block = job.packed.data() + job.packedSize;
  std::uint8_t* const mark = block + kBlockHeaderSize;
  std::uint8_t* const deflated = mark + kZipMarkSize;
  std::memcpy(mark, "CK", kZipMarkSize);
  const std::size_t stored = kStoredHeaderSize + size;
  std::size_t length = libdeflate_deflate_compress(compressor_.get(), data, size, deflated, stored + kSlack);
  if (length == 0 || length >= stored || !Seal(block, kZipMarkSize + length, size)) {
    length = Store(data, size, deflated);
    if (!Seal(block, kZipMarkSize + length, size)) {
      deflated[0] |= kPaddingBit;
      Seal(block, kZipMarkSize + length, size);
    }
  }
  Add(job, kZipMarkSize + length);
  return true;
}

}  // namespace cabarc
