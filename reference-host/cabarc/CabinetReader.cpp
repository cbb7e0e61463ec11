// Opens a cabinet, and hands out the data of its folders.
#include "cabarc/CabinetReader.h"

#include <libdeflate.h>

#include <algorithm>

namespace cabarc {

namespace {

// What went wrong with a cabinet: where it could not be read, the system has said why.
Status StatusOf(const base::Outcome& outcome, const FileSource& source) {
  if (outcome.result != base::Result::Failed) return {};
  return source.Failure().Failed() ? source.Failure() : BrokenCabinet(outcome.cause);
}

}  // namespace

Status CheckSupported(Method method) {
  const base::Outcome checked = unpack::CheckMethod(method);
  return checked.IsDone() ? Status{} : BrokenCabinet(checked.cause);
}

Status CabinetReader::Open(const std::string& path) {
  if (Status status = source_.Open(path); status.Failed()) return status;
  return StatusOf(ReadStructure(source_, structure_, {platform::FromCodePage}), source_);
}

Status CabinetReader::CheckGuards() {
  if (!structure_.guarded) return {};
  std::vector<std::uint8_t> bytes(std::size_t{1} << 18);
  for (std::size_t i = 0; i < structure_.folders.size(); ++i) {
    const Folder& folder = structure_.folders[i];
    if (folder.blocks == 0) continue;
    std::uint32_t crc = 0;
    const std::uint64_t end = structure_.EndOfFolder(i);
    for (std::uint64_t at = folder.dataAt; at < end;) {
      const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(end - at, bytes.size()));
      const std::int64_t got = source_.ReadAt(at, bytes.data(), wanted);
      if (got < 0) return source_.Failure();
      if (got == 0) return BrokenCabinet("its end is missing");
      crc = libdeflate_crc32(crc, bytes.data(), static_cast<std::size_t>(got));
      at += static_cast<std::uint64_t>(got);
    }
    if (crc != folder.crc) return BrokenCabinet("its data are damaged: they are not those it was written with");
  }
  return {};
}

Status CabinetReader::CheckMethod(std::size_t index) const {
  return CheckSupported(static_cast<Method>(structure_.folders[index].method & kMethodMask));
}

Status CabinetReader::ReadFolder(std::size_t index, const ReadOptions& options, const unpack::Sink& sink) {
  if (!folders_) folders_ = std::make_unique<unpack::FolderReader>(options.threads);
  Status status = StatusOf(folders_->Read(source_, structure_, index, options.allowUnchecked, sink), source_);
  if (status.text == unpack::kNoChecksum) status.text += " (see --allow-unchecked)";
  return status;
}

}  // namespace cabarc
