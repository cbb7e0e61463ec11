#include "backup/ArchivePieces.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

#include "app/TextFormat.h"

namespace backup {
namespace {

// A read may give less than it was asked for; a block is whole or the archive is short.
bool ReadBlock(host::BinaryReader& source, std::vector<std::byte>& block) {
  for (std::size_t have = 0; have < block.size();) {
    const std::int64_t got = source.Read(block.data() + have, block.size() - have);
    if (got <= 0) return false;
    have += static_cast<std::size_t>(got);
  }
  return true;
}

}  // namespace

std::string PieceName(std::int32_t number) {
  return kJoinedArchiveName + app::FormatPieceNumber(number);
}

app::ResultCode WritePiece(host::FileSystem& files, host::BinaryReader& source, const std::string& piece,
                           std::uint32_t count) {
  if (count < 1) return app::kFailed;
  const std::unique_ptr<host::BinaryWriter> target = files.CreateBinary(piece);
  if (!target) return app::kFailed;
  std::vector<std::byte> block;
  for (std::uint32_t left = count; left > 0; left -= static_cast<std::uint32_t>(block.size())) {
    block.resize(std::min(left, kBlockSize));
    if (!ReadBlock(source, block) || target->Write(block.data(), block.size()) != 0) return app::kFailed;
  }
  return target->Close() == 0 ? app::kDone : app::kFailed;
}

app::ResultCode SplitArchive(const host::Host& host, const std::string& archiveFolder, std::uint32_t size) {
  if (size < 1) return app::kFailed;
  const auto source = host.files.OpenBinary(archiveFolder + kJoinedArchiveName + ".cab");
  if (!source) return app::kFailed;
  std::int32_t number = 0;
  for (std::uint32_t left = size; left > 0;) {
    const std::uint32_t count = std::min(left, kPieceSize);
    if (WritePiece(host.files, *source, archiveFolder + PieceName(++number), count) != app::kDone) return app::kFailed;
    left -= count;
    host.messageLoop.Yield();
  }
  return app::kDone;
}

}  // namespace backup
