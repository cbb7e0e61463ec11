// Checks the data blocks of a cabinet and unpacks them.
#include "unpack/Blocks.h"

#include <libdeflate.h>
#include <zlib.h>

#include <cstring>

namespace unpack {

using namespace cabinet;

namespace {

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
  if (packed.size < kZipMark.size() || std::memcmp(packed.data, kZipMark.data(), kZipMark.size()) != 0)
    return BlockState::Damaged;
  if (job.history || !decompressor_) return BlockState::NeedsHistory;
  // A reference to before the block's start is refused here, so what is accepted is right.
  const auto result = libdeflate_deflate_decompress(decompressor_.get(), packed.data + kZipMark.size(),
                                                    packed.size - kZipMark.size(), out, place.unpackedSize, nullptr);
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
  stream_->next_in = const_cast<Bytef*>(packed.data + kZipMark.size());  // zlib does not write to it
  stream_->avail_in = static_cast<uInt>(packed.size - kZipMark.size());
  stream_->next_out = out;
  stream_->avail_out = static_cast<uInt>(place.unpackedSize);
  return inflate(stream_.get(), Z_FINISH) == Z_STREAM_END && stream_->avail_out == 0;
}

}  // namespace unpack
