// What stands before the data of a cabinet: its header, its folders, its members. Nothing of it is believed before it
// is checked.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/Outcome.h"
#include "cabinet/Format.h"
#include "cabinet/Names.h"
#include "cabinet/Source.h"

namespace cabinet {

/// A local time in steps of two seconds, as cabinets hold it. It need not be a date that there is.
struct DosStamp {
  std::uint16_t date = 0;
  std::uint16_t time = 0;
};

struct Folder {
  std::uint32_t dataAt = 0;  ///< offset of the first block in the cabinet
  std::uint16_t blocks = 0;
  std::uint16_t method = 0;  ///< a Method in kMethodMask, or an unknown one
  std::uint32_t crc = 0;     ///< of all blocks, headers included; of a guarded cabinet only
};

struct Member {
  std::string name;        ///< UTF-8, parts separated by "\"; it may be unsafe, and need not be the only one
  std::uint32_t size = 0;  ///< bytes, unpacked
  std::uint32_t at = 0;    ///< offset in the folder's unpacked stream
  std::uint16_t folder = 0;
  DosStamp stamp;
  std::uint8_t attributes = 0;   ///< of kAllAttributes
  bool nameIsMalformed = false;  ///< it is marked as UTF-8 and is none; `name` is what the code page makes of it
};

struct Structure {
  std::uint32_t size = 0;  ///< bytes of the cabinet, as it says itself
  std::uint16_t flags = 0;
  std::uint16_t setId = 0;
  bool guarded = false;            ///< our archiver wrote it: every block has a checksum, every folder a CRC
  std::uint8_t folderReserve = 0;  ///< bytes behind each folder record
  std::uint8_t blockReserve = 0;   ///< bytes between each block's header and its data
  std::uint64_t recordsEnd = 0;    ///< where the last file record ends
  std::vector<Folder> folders;
  std::vector<Member> members;

  /// Where the data of a folder must end at the latest. Folders lie in the file in their order; those without blocks
  /// may say anything.
  std::uint64_t EndOfFolder(std::size_t index) const;
  /// How many bytes of a folder its members need: where the last of them ends.
  std::vector<std::uint64_t> Extents() const;
};

struct ReadingRules {
  CodePage codePage = FromCodePage1252;  ///< of names that are not UTF-8
};

/// Reads the structure of the cabinet that `source` is. When it succeeds all sizes and offsets are consistent: every
/// folder's data lie in the file in the order of the folders, and the members of a folder lie within what its blocks
/// can hold, without overlap; and a guarded cabinet's records are those that were written. Methods may be unsupported.
/// Refuses parts of a set, and a file that is longer than the cabinet, unless a signature follows it. The cause of a
/// failure is words about "it", the cabinet.
base::Outcome ReadStructure(Source& source, Structure& structure, const ReadingRules& rules = {});

/// CRC-32 of a cabinet's records as a guarded cabinet holds it: with its own four bytes taken as 0.
std::uint32_t RecordsCrc(std::vector<std::uint8_t> records);

}  // namespace cabinet
