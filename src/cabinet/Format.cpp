// What guards the data of a cabinet.
#include "cabinet/Format.h"

#include <array>
#include <bit>
#include <cstring>

namespace cabinet {
namespace {

static_assert(std::endian::native == std::endian::little, "the words below are read in the machine's order");

constexpr std::uint32_t kCrcPolynomial = 0xEDB88320;

/// What each value of a byte does to a CRC that it leaves behind it.
constexpr std::array<std::uint32_t, 256> MakeCrcTable() {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t byte = 0; byte < 256; ++byte) {
    std::uint32_t crc = byte;
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? kCrcPolynomial : 0);
    table[byte] = crc;
  }
  return table;
}

constexpr std::array<std::uint32_t, 256> kCrcTable = MakeCrcTable();

/// The place in kCrcTable of the entry with each highest byte; no two have the same.
constexpr std::array<std::uint8_t, 256> MakeReverseTable() {
  std::array<std::uint8_t, 256> table{};
  for (std::uint32_t byte = 0; byte < 256; ++byte) table[kCrcTable[byte] >> 24] = static_cast<std::uint8_t>(byte);
  return table;
}

constexpr std::array<std::uint8_t, 256> kReverseTable = MakeReverseTable();

/// What the difference of two CRCs was before one more byte, the same for both. Wrong bytes differ from what they
/// should be as the CRCs before them would have to.
std::uint32_t BeforeByte(std::uint32_t difference) {
  const std::uint8_t byte = kReverseTable[difference >> 24];
  return (difference ^ kCrcTable[byte]) << 8 | byte;
}

}  // namespace

std::uint32_t Checksum(const std::uint8_t* data, std::size_t size, std::uint32_t seed) {
  // Two lanes, so that the loads overlap; more of them do not stay in the registers of a 32-bit processor.
  std::uint64_t one = 0;
  std::uint64_t other = 0;
  for (; size >= 32; size -= 32, data += 32) {
    std::uint64_t words[4];
    std::memcpy(words, data, sizeof words);
    one ^= words[0] ^ words[1];
    other ^= words[2] ^ words[3];
  }
  const std::uint64_t folded = one ^ other;
  std::uint32_t sum = seed ^ static_cast<std::uint32_t>(folded) ^ static_cast<std::uint32_t>(folded >> 32);
  for (; size >= 4; size -= 4, data += 4) sum ^= Get32(data);
  std::uint32_t rest = 0;
  for (; size > 0; --size, ++data) rest = rest << 8 | *data;
  return sum ^ rest;
}

std::uint32_t Crc32(std::uint32_t crc, const std::uint8_t* data, std::size_t size) {
  crc = ~crc;
  for (; size > 0; --size, ++data) crc = crc >> 8 ^ kCrcTable[(crc ^ *data) & 0xFF];
  return ~crc;
}

std::optional<WrongBytes> FindWrongBytes(std::size_t size, std::uint64_t behind, std::uint32_t difference,
                                         const std::function<bool(const WrongBytes&)>& accept) {
  for (; behind > 0; --behind) difference = BeforeByte(difference);
  for (std::size_t at = size; at-- > 0;) {
    difference = BeforeByte(difference);
    const WrongBytes wrong{at, difference};
    if (accept(wrong)) return wrong;
  }
  return std::nullopt;
}

}  // namespace cabinet
