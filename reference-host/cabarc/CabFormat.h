// The cabinet format: sizes, limits, flags, numbers in byte order, and the records that open a cabinet.
//
// A cabinet is a header, the folder records, the file records, then the data blocks of each folder in turn. A folder
// is one stream of up to 65,535 blocks of 32 KB; files lie in it end to end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cabarc/Platform.h"
#include "cabarc/Status.h"

namespace cabinet {

class BufferedInput;

enum class Method : std::uint16_t { None = 0, MsZip = 1 };

inline constexpr std::uint16_t kMethodMask = 0x000F;

inline constexpr std::size_t kHeaderSize = 36;
inline constexpr std::size_t kReserveSizesSize = 4;
inline constexpr std::size_t kFolderRecordSize = 8;
inline constexpr std::size_t kFileRecordSize = 16;
inline constexpr std::size_t kBlockHeaderSize = 8;
inline constexpr std::size_t kCrcAt = 44;

/// Bytes of a data block before packing; only the last block of a folder is shorter.
inline constexpr std::size_t kBlockSize = 32768;
/// What the format allows for a packed block.
inline constexpr std::size_t kMaxPackedBlock = kBlockSize + 12;
/// What is accepted when reading: some writers exceed the format's own limit a little.
inline constexpr std::size_t kMaxAcceptedBlock = kBlockSize + 6144;
inline constexpr std::size_t kMaxBlocksPerFolder = 65535;
inline constexpr std::uint64_t kMaxFolderSize = std::uint64_t{kMaxBlocksPerFolder} * kBlockSize;
inline constexpr std::uint64_t kMaxCabinetSize = 0xFFFFFFFF;
inline constexpr std::size_t kMaxFiles = 65535;
inline constexpr std::size_t kMaxNameBytes = 255;

inline constexpr std::uint16_t kFlagPrevious = 0x0001;
inline constexpr std::uint16_t kFlagNext = 0x0002;
inline constexpr std::uint16_t kFlagReserve = 0x0004;
inline constexpr std::uint16_t kVersion = 0x0103;
/// In a file's attributes: its name is UTF-8.
inline constexpr std::uint16_t kNameIsUtf8 = 0x0080;

/// The format guards only the data blocks, each for itself and weakly. In the areas that it reserves for applications
/// our cabinets hold this mark and a CRC-32 of all records (the CRC's own bytes taken as 0), so that a damaged name,
/// size or date is found too; and with each folder record a CRC-32 of the folder's blocks, so that a block of another
/// cabinet is found even where it fits. Other readers pass over them.
inline constexpr std::string_view kCrcMark = "QXTC";
inline constexpr std::size_t kCrcReserveSize = 8;
inline constexpr std::uint8_t kFolderCrcSize = 4;

struct FolderRecord {
  std::uint32_t dataAt = 0;  ///< offset of the first block in the cabinet
  std::uint16_t blocks = 0;
  std::uint16_t method = 0;  ///< a Method in kMethodMask, or an unsupported one
  std::uint32_t crc = 0;     ///< of all blocks, headers included; of a guarded cabinet only
};

struct MemberRecord {
  std::string name;  ///< UTF-8, parts separated by "\"
  std::uint32_t size = 0;
  std::uint32_t at = 0;  ///< offset in the folder's unpacked stream
  std::uint16_t folder = 0;
  platform::DosStamp stamp;
  std::uint8_t attributes = 0;
};

/// All that stands before the data.
struct CabinetRecords {
  std::uint32_t size = 0;
  bool guarded = false;  ///< whether this archiver wrote it: every block has a checksum, every folder a CRC
  std::uint8_t folderReserve = 0;
  std::uint8_t blockReserve = 0;  ///< bytes between each block's header and its data
  std::vector<FolderRecord> folders;
  std::vector<MemberRecord> members;
};

inline std::uint16_t Get16(const std::uint8_t* at) {
  return static_cast<std::uint16_t>(at[0] | at[1] << 8);
}
inline std::uint32_t Get32(const std::uint8_t* at) {
  return Get16(at) | static_cast<std::uint32_t>(Get16(at + 2)) << 16;
}
inline void Put16(std::uint8_t* at, std::uint32_t value) {
  at[0] = static_cast<std::uint8_t>(value);
  at[1] = static_cast<std::uint8_t>(value >> 8);
}
inline void Put32(std::uint8_t* at, std::uint32_t value) {
  Put16(at, value);
  Put16(at + 2, value >> 16);
}

/// The checksum of a data block: little-endian 32-bit words combined by exclusive or, on top of `seed`; the one to
/// three bytes left over count in reversed order.
std::uint32_t Checksum(const std::uint8_t* data, std::size_t size, std::uint32_t seed);

/// The bytes of all records, CRC included.
std::vector<std::uint8_t> WriteRecords(const CabinetRecords& records);
/// CRC-32 of a cabinet's records, with the four bytes of the CRC itself taken as 0.
std::uint32_t RecordsCrc(std::vector<std::uint8_t> records);

/// Fills `records` from `input`, which stands at the start of a file of `fileSize` bytes. On success all sizes and
/// offsets are consistent: every folder's data lie in the file in the order of the folders, and the members of a
/// folder lie within what its blocks can hold, without overlap. Names are decoded but may be unsafe, and methods may
/// be unsupported. Refuses parts of a set, and cabinets that do not begin and end with the file.
Status ReadRecords(BufferedInput& input, std::uint64_t fileSize, CabinetRecords& records);

}  // namespace cabinet
