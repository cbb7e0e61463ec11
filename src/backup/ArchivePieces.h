// The pieces of a floppy set: what they are called, and the cutting.
#pragma once

#include <cstdint>
#include <string>

#include "app/ResultCodes.h"
#include "backup/FloppyFormat.h"
#include "host/Host.h"

namespace backup {

/// Bytes that are copied at once: a seventh of a piece, and small enough for a processor's cache.
inline constexpr std::uint32_t kBlockSize = kPieceSize / 7;

/// "FDDivide001" for 1.
std::string PieceName(std::int32_t number);

/// Cuts archive folder + "FDDivide.cab", of `size` bytes, into pieces beside it. Reads the
/// archive once, keeps one block in memory, and serves the user interface between the pieces. Returns 0, or -1 when
/// there is nothing to cut, the archive is shorter than `size`, or a piece cannot be written.
app::ResultCode SplitArchive(const host::Host& host, const std::string& archiveFolder, std::uint32_t size);

/// Copies `count` bytes from where `source` stands into the new file `piece`. Returns 0, or -1
/// when `count` is below 1 or not all of it could be read and written.
app::ResultCode WritePiece(host::FileSystem& files, host::BinaryReader& source, const std::string& piece,
                           std::uint32_t count);

}  // namespace backup
