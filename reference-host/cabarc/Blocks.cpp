// Packs file data into the data blocks of a cabinet, and checks and unpacks them.
#include "cabarc/Blocks.h"

#include <libdeflate.h>
#include <zlib.h>

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

constexpr int kRawDeflate = -15;  // zlib's way to say: a window of 32 KB, no header

struct Packed {
  const std::uint8_t* data;
  std::size_t size;
};

Packed PackedData(const UnpackJob& job, const BlockPlace& place) {
  const std::size_t header = kBlockHeaderSize + job.blockReserve;
  return {job.blocks.data() + place.at + header, place.size - header};
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

void BlockUnpacker::FreeDecompressor::operator()(libdeflate_decompressor* decompressor) const {
  libdeflate_free_decompressor(decompressor);
}

BlockUnpacker::BlockUnpacker() : decompressor_(libdeflate_alloc_decompressor()) {}

BlockUnpacker::~BlockUnpacker() = default;

void BlockUnpacker::Run(UnpackJob& job) {
  job.states.clear();
  std::uint8_t* out = job.Data();
  for (const BlockPlace& place : job.places) {
    job.states.push_back(Unpack(job, place, out));
    out += place.unpackedSize;
  }
}

BlockState BlockUnpacker::Unpack(const UnpackJob& job, const BlockPlace& place, std::uint8_t* out) {
  const std::uint8_t* const block = job.blocks.data() + place.at;
  const BlockHeader header = ReadBlockHeader(block);
  const bool checked = header.checksum != 0;
  if (!checked && !job.allowUnchecked) return BlockState::Unchecked;
  if (checked && !ChecksumFits(block, header, job.blockReserve)) return BlockState::BadChecksum;
  const Packed packed = PackedData(job, place);
  if (job.method == Method::None) {
    if (packed.size != place.unpackedSize) return BlockState::Damaged;
    std::memcpy(out, packed.data, packed.size);
    return BlockState::Good;
  }
  if (packed.size < kZipMarkSize || std::memcmp(packed.data, "CK", kZipMarkSize) != 0) return BlockState::Damaged;
  if (job.history || !decompressor_) return BlockState::NeedsHistory;
  // A reference to before the block's start is refused here, so what is accepted is right.
  const auto result = libdeflate_deflate_decompress(decompressor_.get(), packed.data + kZipMarkSize,
                                                    packed.size - kZipMarkSize, out, place.unpackedSize, nullptr);
  return result == LIBDEFLATE_SUCCESS ? BlockState::Good : BlockState::NeedsHistory;
}

HistoryUnpacker::HistoryUnpacker() : stream_(std::make_unique<z_stream>()) {
  ready_ = inflateInit2(stream_.get(), kRawDeflate) == Z_OK;
}

HistoryUnpacker::~HistoryUnpacker() {
  if (ready_) inflateEnd(stream_.get());
}

bool HistoryUnpacker::Unpack(const UnpackJob& job, const BlockPlace& place, std::uint8_t* out, std::size_t history) {
  if (!ready_ || inflateReset(stream_.get()) != Z_OK) return false;
  if (inflateSetDictionary(stream_.get(), out - history, static_cast<uInt>(history)) != Z_OK) return false;
  const Packed packed = PackedData(job, place);
  stream_->next_in = const_cast<Bytef*>(packed.data + kZipMarkSize);  // zlib does not write to it
  stream_->avail_in = static_cast<uInt>(packed.size - kZipMarkSize);
  stream_->next_out = out;
  stream_->avail_out = static_cast<uInt>(place.unpackedSize);
  return inflate(stream_.get(), Z_FINISH) == Z_STREAM_END && stream_->avail_out == 0;
}

}  // namespace cabarc
