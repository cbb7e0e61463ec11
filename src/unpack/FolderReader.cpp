// Unpacks the data of a cabinet's folders.
#include "unpack/FolderReader.h"

#include <libdeflate.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "unpack/Blocks.h"
#include "unpack/OrderedPool.h"

namespace unpack {

using namespace cabinet;
using base::Failure;
using base::Outcome;
using base::Result;

namespace {

Outcome OutcomeOf(BlockState state) {
  switch (state) {
    case BlockState::Unchecked:
      return Failure(kNoChecksum);
    case BlockState::BadChecksum:
      return Failure("its data are damaged: a checksum is wrong");
    default:
      return Failure("its data are damaged: they cannot be unpacked");
  }
}

}  // namespace

Outcome CheckMethod(Method method) {
  if (method == Method::None || method == Method::MsZip) return Result::Done;
  const std::string name = method == Method::Quantum ? "the Quantum" : method == Method::Lzx ? "the LZX" : "an unknown";
  return Failure("it is packed by " + name + " method, which is not supported");
}

// Reads blocks ahead, has them unpacked by the pool and passes the results on in order.
class FolderReader::Unpacking {
 public:
  explicit Unpacking(unsigned threads) : pool_(threads) {}

  Outcome Read(Source& source, const Structure& structure, std::size_t index, bool allowUnchecked, const Sink& sink) {
    Window window(source);
    const Folder& folder = structure.folders[index];
    method_ = static_cast<Method>(folder.method & kMethodMask);
    blockReserve_ = structure.blockReserve;
    allowUnchecked_ = allowUnchecked && !structure.guarded;
    usesHistory_ = false;
    passed_ = 0;
    at_ = folder.dataAt;
    end_ = structure.EndOfFolder(index);
    crc_ = 0;
    Outcome outcome = ReadBlocks(window, folder.blocks, sink);
    while (pool_.Oldest()) pool_.Release();  // what a failure has left
    const bool foreign = structure.guarded && (crc_ != folder.crc || at_ != end_);
    if (!outcome.IsDone() || !foreign) return outcome;
    return Failure("its data are damaged: they are not those it was written with");
  }

 private:
  Outcome ReadBlocks(Window& window, unsigned blocks, const Sink& sink) {
    Outcome damage;  // what stands before it is passed on first
    for (;;) {
      UnpackJob* const job = blocks > 0 && damage.IsDone() ? pool_.Free() : nullptr;
      if (job) {
        const unsigned count = std::min(blocks, static_cast<unsigned>(kBlocksPerJob));
        damage = Fill(window, *job, count);
        pool_.Submit();
        blocks -= count;
      } else if (UnpackJob* const oldest = pool_.Oldest()) {
        if (Outcome passed = PassOn(*oldest, sink); !passed.IsDone()) return passed;
        pool_.Release();
      } else {
        return damage;
      }
    }
  }

  // A job of fewer blocks where there are no more that can be read.
  Outcome Fill(Window& window, UnpackJob& job, unsigned count) {
    job.method = method_;
    job.blockReserve = blockReserve_;
    job.allowUnchecked = allowUnchecked_;
    job.history = usesHistory_;
    job.blocks.clear();
    job.places.clear();
    Outcome outcome;
    for (unsigned i = 0; i < count && outcome.IsDone(); ++i) outcome = AppendBlock(window, job);
    crc_ = libdeflate_crc32(crc_, job.blocks.data(), job.blocks.size());
    return outcome;
  }

  Outcome AppendBlock(Window& window, UnpackJob& job) {
    const std::size_t before = kBlockHeaderSize + std::size_t{blockReserve_};
    const std::uint8_t* bytes = window.At(at_, before);
    if (!bytes) return Unreadable(window);
    const BlockHeader header = ReadBlockHeader(bytes);
    const std::size_t size = before + header.packedSize;
    if (!header.IsPossible() || at_ + size > end_) {
      return Failure("its data are damaged: a block's size is impossible");
    }
    bytes = window.At(at_, size);
    if (!bytes) return Unreadable(window);
    job.places.push_back({job.blocks.size(), size, header.unpackedSize});
    job.blocks.insert(job.blocks.end(), bytes, bytes + size);
    at_ += size;
    return Result::Done;
  }

  static Outcome Unreadable(const Window& window) {
    return Failure(window.CannotBeRead() ? "its data cannot be read" : "its end is missing");
  }

  Outcome PassOn(UnpackJob& job, const Sink& sink) {
    std::memcpy(job.unpacked.data(), tail_.data(), kBlockSize);
    std::size_t done = 0;
    Outcome failure;
    for (std::size_t i = 0; i < job.places.size() && failure.IsDone(); ++i) {
      if (job.states[i] == BlockState::NeedsHistory) job.states[i] = UnpackWithHistory(job, i, job.Data() + done);
      if (job.states[i] == BlockState::Good) {
        done += job.places[i].unpackedSize;
        passed_ += job.places[i].unpackedSize;
      } else {
        failure = OutcomeOf(job.states[i]);
      }
    }
    std::memcpy(tail_.data(), job.Data() + done - kBlockSize, kBlockSize);
    // What precedes a damaged block is good and may complete a file.
    if (done > 0 && !sink(job.Data(), done)) return Result::Stopped;
    return failure;
  }

  BlockState UnpackWithHistory(const UnpackJob& job, std::size_t i, std::uint8_t* out) {
    usesHistory_ = true;
    const std::size_t history = static_cast<std::size_t>(std::min<std::uint64_t>(passed_, kBlockSize));
    return history_.Unpack(job, job.places[i], out, history) ? BlockState::Good : BlockState::Damaged;
  }

  OrderedPool<UnpackJob, BlockUnpacker> pool_;
  HistoryUnpacker history_;
  std::vector<std::uint8_t> tail_ = std::vector<std::uint8_t>(kBlockSize);  // the last 32 KB passed on

  // Of the folder that is being read.
  Method method_ = Method::None;
  std::uint8_t blockReserve_ = 0;
  bool allowUnchecked_ = false;
  bool usesHistory_ = false;
  std::uint64_t passed_ = 0;
  std::uint64_t at_ = 0;   // of the next block in the cabinet
  std::uint64_t end_ = 0;  // of the folder there
  std::uint32_t crc_ = 0;  // of the blocks before
};

FolderReader::FolderReader(unsigned threads) : unpacking_(std::make_unique<Unpacking>(threads)) {}

FolderReader::~FolderReader() = default;

Outcome FolderReader::Read(Source& source, const Structure& structure, std::size_t index, bool allowUnchecked,
                           const Sink& sink) {
  const Folder& folder = structure.folders[index];
  if (Outcome supported = CheckMethod(static_cast<Method>(folder.method & kMethodMask)); !supported.IsDone()) {
    return supported;
  }
  return folder.blocks == 0 ? Outcome(Result::Done) : unpacking_->Read(source, structure, index, allowUnchecked, sink);
}

}  // namespace unpack
