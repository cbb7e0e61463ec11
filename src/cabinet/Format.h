// The cabinet format: sizes, limits and flags, numbers in byte order, and what guards the data.
//
// A cabinet is a header, the folder records, the file records, then the data blocks of each folder in turn. A folder
// is one stream of up to 65,535 blocks of 32 KB; files lie in it end to end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace cabinet {

/// Bytes of a data block before packing; only the last block of a folder is shorter.
inline constexpr std::size_t kBlockSize = 32768;
inline constexpr std::size_t kMaxBlocksPerFolder = 0xFFFF;

/// What a cabinet can hold. A file lies in one folder, so it is no larger than one: 32 KB less than 2 GB.
inline constexpr std::uint64_t kMaxFolderSize = std::uint64_t{kMaxBlocksPerFolder} * kBlockSize;
inline constexpr std::uint64_t kMaxFileSize = kMaxFolderSize;
inline constexpr std::size_t kMaxFiles = 0xFFFF;
inline constexpr std::uint64_t kMaxCabinetSize = 0xFFFFFFFF;
inline constexpr std::size_t kMaxNameBytes = 255;

inline constexpr std::size_t kHeaderSize = 36;
inline constexpr std::size_t kReserveSizesSize = 4;
inline constexpr std::size_t kFolderRecordSize = 8;
inline constexpr std::size_t kFileRecordSize = 16;
inline constexpr std::size_t kBlockHeaderSize = 8;

/// What the format allows for a packed block, and what is accepted: some writers exceed the format a little.
inline constexpr std::size_t kMaxPackedBlock = kBlockSize + 12;
inline constexpr std::size_t kMaxAcceptedBlock = kBlockSize + 6144;

inline constexpr std::uint16_t kFlagPrevious = 0x0001;
inline constexpr std::uint16_t kFlagNext = 0x0002;
inline constexpr std::uint16_t kFlagReserve = 0x0004;
inline constexpr std::uint16_t kVersion = 0x0103;

/// Attributes of a file, as Windows has them; the last says that its name is UTF-8.
inline constexpr std::uint8_t kReadOnly = 0x01;
inline constexpr std::uint8_t kHidden = 0x02;
inline constexpr std::uint8_t kSystem = 0x04;
inline constexpr std::uint8_t kArchive = 0x20;
inline constexpr std::uint8_t kAllAttributes = kReadOnly | kHidden | kSystem | kArchive;
inline constexpr std::uint16_t kNameIsUtf8 = 0x0080;

/// How a folder is packed, in the low bits of its method.
enum class Method : std::uint16_t { None = 0, MsZip = 1, Quantum = 2, Lzx = 3 };
inline constexpr std::uint16_t kMethodMask = 0x000F;
/// What an MSZIP block begins with.
inline constexpr std::string_view kZipMark = "CK";

/// The format guards only the data blocks, each for itself and weakly. In the areas that it reserves for applications
/// the cabinets of our archiver hold this mark and a CRC-32 of all records (the CRC's own bytes taken as 0), so that a
/// damaged name, size or date is found too; and with each folder record a CRC-32 of the folder's blocks, so that a
/// block of another cabinet is found even where it fits. Other readers pass over them.
inline constexpr std::string_view kCrcMark = "QXTC";
inline constexpr std::size_t kCrcMarkAt = kHeaderSize + kReserveSizesSize;
inline constexpr std::size_t kCrcAt = kCrcMarkAt + 4;
inline constexpr std::size_t kCrcReserveSize = 8;
inline constexpr std::uint8_t kFolderCrcSize = 4;

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

/// CRC-32, as archivers and networks use it, of more data behind those that gave `crc`; 0 to begin with.
std::uint32_t Crc32(std::uint32_t crc, const std::uint8_t* data, std::size_t size);

/// Up to four bytes in a row that are wrong: `mask` is what they differ by (exclusive or), the lowest byte at `at`.
struct WrongBytes {
  std::size_t at = 0;
  std::uint32_t mask = 0;
};

/// Among `size` bytes with another `behind` of them behind, the last place where so few wrong bytes make the CRC of all
/// differ by `difference` (exclusive or), and `accept` agrees: to a CRC alone, such bytes could stand anywhere.
std::optional<WrongBytes> FindWrongBytes(std::size_t size, std::uint64_t behind, std::uint32_t difference,
                                         const std::function<bool(const WrongBytes&)>& accept);

}  // namespace cabinet
