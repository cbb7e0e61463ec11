// Opens a cabinet, and hands out the data of its folders.
#include "cabarc/CabinetReader.h"

#include <libdeflate.h>

#include <algorithm>
#include <cstring>

#include "cabarc/Blocks.h"
#include "cabarc/OrderedPool.h"

namespace cabarc {

namespace {

Status TextOf(BlockState state) {
  switch (state) {
    case BlockState::Unchecked:
      return BrokenCabinet("its data have no checksum (see --allow-unchecked)");
    case BlockState::BadChecksum:
      return BrokenCabinet("its data are damaged: a checksum is wrong");
    default:
      return BrokenCabinet("its data are damaged: they cannot be unpacked");
  }
}

}  // namespace

Status CheckSupported(Method method) {
  if (method == Method::None || method == Method::MsZip) return {};
  const std::string name = method == Method::Quantum ? "the Quantum" : method == Method::Lzx ? "the LZX" : "an unknown";
  return BrokenCabinet("it is packed by " + name + " method, which is not supported");
}

// Reads blocks ahead, has them unpacked by the pool and passes the results on in order.
class CabinetReader::Unpacking {
 public:
  Unpacking(BufferedInput& input, const Structure& structure, const ReadOptions& options)
      : input_(input),
        blockReserve_(structure.blockReserve),
        allowUnchecked_(options.allowUnchecked && !structure.guarded),
        pool_(options.threads) {}

  // `end`: where the folder's data must end at the latest.
  Status Read(const Folder& folder, std::uint64_t end, const Sink& sink) {
    usesHistory_ = false;
    passed_ = 0;
    room_ = end - folder.dataAt;
    unsigned blocks = folder.blocks;
    for (;;) {
      UnpackJob* const job = blocks > 0 ? pool_.Free() : nullptr;
      if (job) {
        const unsigned count = std::min(blocks, static_cast<unsigned>(kBlocksPerJob));
        job->method = static_cast<Method>(folder.method & kMethodMask);
        if (Status status = Fill(*job, count); status.Failed()) return status;
        pool_.Submit();
        blocks -= count;
      } else if (UnpackJob* const oldest = pool_.Oldest()) {
        if (Status status = PassOn(*oldest, sink); status.Failed()) return status;
        pool_.Release();
      } else {
        return {};
      }
    }
  }

 private:
  Status Fill(UnpackJob& job, unsigned count) {
    job.blockReserve = blockReserve_;
    job.allowUnchecked = allowUnchecked_;
    job.history = usesHistory_;
    job.blocks.clear();
    job.places.clear();
    for (unsigned i = 0; i < count; ++i) {
      if (Status status = AppendBlock(job); status.Failed()) return status;
    }
    return {};
  }

  Status AppendBlock(UnpackJob& job) {
    const std::size_t at = job.blocks.size();
    const std::size_t header = kBlockHeaderSize + std::size_t{blockReserve_};
    if (Status status = input_.Append(header, job.blocks); status.Failed()) return status;
    const BlockHeader block = ReadBlockHeader(job.blocks.data() + at);
    if (!block.IsPossible() || header + block.packedSize > room_) {
      return BrokenCabinet("its data are damaged: a block's size is impossible");
    }
    room_ -= header + block.packedSize;
    job.places.push_back({at, header + block.packedSize, block.unpackedSize});
    return input_.Append(block.packedSize, job.blocks);
  }

  Status PassOn(UnpackJob& job, const Sink& sink) {
    std::memcpy(job.unpacked.data(), tail_.data(), kBlockSize);
    std::size_t done = 0;
    Status failure;
    for (std::size_t i = 0; i < job.places.size() && !failure.Failed(); ++i) {
      if (job.states[i] == BlockState::NeedsHistory) job.states[i] = UnpackWithHistory(job, i, job.Data() + done);
      if (job.states[i] == BlockState::Good) {
        done += job.places[i].unpackedSize;
        passed_ += job.places[i].unpackedSize;
      } else {
        failure = TextOf(job.states[i]);
      }
    }
    std::memcpy(tail_.data(), job.Data() + done - kBlockSize, kBlockSize);
    // What precedes a damaged block is good and may complete a file.
    Status status = sink(job.Data(), done);
    return status.Failed() ? status : failure;
  }

  BlockState UnpackWithHistory(const UnpackJob& job, std::size_t i, std::uint8_t* out) {
    usesHistory_ = true;
    const std::size_t history = static_cast<std::size_t>(std::min<std::uint64_t>(passed_, kBlockSize));
    return history_.Unpack(job, job.places[i], out, history) ? BlockState::Good : BlockState::Damaged;
  }

  BufferedInput& input_;
  const std::uint8_t blockReserve_;
  const bool allowUnchecked_;
  OrderedPool<UnpackJob, BlockUnpacker> pool_;
  HistoryUnpacker history_;
  bool usesHistory_ = false;
  std::vector<std::uint8_t> tail_ = std::vector<std::uint8_t>(kBlockSize);  // the last 32 KB passed on
  std::uint64_t passed_ = 0;
  std::uint64_t room_ = 0;  // bytes of the cabinet that the folder may still use
};

CabinetReader::CabinetReader() = default;

CabinetReader::~CabinetReader() = default;

Status CabinetReader::Open(const std::string& path) {
  if (!file_.OpenForReading(path)) return FileError("it cannot be opened: " + platform::LastError());
  const std::optional<platform::FileInfo> info = file_.Info();
  if (!info || info->kind != platform::Kind::File) return FileError("it is not a file");
  input_.emplace(file_, info->size);
  FileSource source(file_, info->size);
  const base::Outcome read = ReadStructure(source, structure_, {platform::FromCodePage});
  if (read.IsDone()) return {};
  return source.Failure().Failed() ? source.Failure() : BrokenCabinet(read.cause);
}

Status CabinetReader::CheckGuards() {
  if (!structure_.guarded) return {};
  std::vector<std::uint8_t> bytes(std::size_t{1} << 18);
  for (std::size_t i = 0; i < structure_.folders.size(); ++i) {
    const Folder& folder = structure_.folders[i];
    if (folder.blocks == 0) continue;
    if (Status status = input_->Seek(folder.dataAt); status.Failed()) return status;
    std::uint32_t crc = 0;
    for (std::uint64_t left = structure_.EndOfFolder(i) - folder.dataAt; left > 0;) {
      const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, bytes.size()));
      // Past the buffer: everything is read again from where ReadFolder seeks to.
      const std::optional<std::size_t> count = file_.Read(bytes.data(), wanted);
      if (!count) return FileError("it cannot be read: " + platform::LastError());
      if (*count < wanted) return BrokenCabinet("its end is missing");
      crc = libdeflate_crc32(crc, bytes.data(), wanted);
      left -= wanted;
    }
    if (crc != folder.crc) return BrokenCabinet("its data are damaged: they are not those it was written with");
  }
  return {};
}

Status CabinetReader::CheckMethod(std::size_t index) const {
  return CheckSupported(static_cast<Method>(structure_.folders[index].method & kMethodMask));
}

Status CabinetReader::ReadFolder(std::size_t index, const ReadOptions& options, const Sink& sink) {
  const Folder& folder = structure_.folders[index];
  if (Status status = CheckMethod(index); status.Failed()) return status;
  if (folder.blocks == 0) return {};
  if (!unpacking_) unpacking_ = std::make_unique<Unpacking>(*input_, structure_, options);
  Status status = input_->Seek(folder.dataAt);
  return status.Failed() ? status : unpacking_->Read(folder, structure_.EndOfFolder(index), sink);
}

}  // namespace cabarc
