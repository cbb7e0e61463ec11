// Checks and unpacks the data blocks of a cabinet.
#include "cabarc/BlockUnpacker.h"

#include <libdeflate.h>
#include <zlib.h>

#include <cstring>

#include "cabarc/Checksum.h"

namespace cabinet {

namespace {

constexpr std::size_t kZipMarkSize = 2;
constexpr int kRawDeflate = -15;  // zlib's way to say: a window of 32 KB, no header

struct Packed {
  const std::uint8_t* data;
  std::size_t size;
};

Packed PackedData(const UnpackJob& job, const BlockPlace& place) {
  const std::size_t header = kBlockHeaderSize + job.blockReserve;
  return {job.blocks.data() + place.at + header, place.size - header};
}

// Writers differ in whether a block's reserved bytes count. Without such bytes both are the same.
bool ChecksumFits(const UnpackJob& job, const BlockPlace& place) {
  const std::uint8_t* const block = job.blocks.data() + place.at;
  const Packed packed = PackedData(job, place);
  const std::uint32_t sum = Checksum(packed.data, packed.size, 0);
  return Checksum(block + 4, 4, sum) == Get32(block) || Checksum(block + 4, 4u + job.blockReserve, sum) == Get32(block);
}

}  // namespace

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
  const bool checked = Get32(job.blocks.data() + place.at) != 0;
  if (!checked && !job.allowUnchecked) return BlockState::Unchecked;
  if (checked && !ChecksumFits(job, place)) return BlockState::BadChecksum;
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

}  // namespace cabinet
