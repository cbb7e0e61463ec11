// The checksum of a cabinet's data blocks, eight bytes at a time.
#include "cabarc/Checksum.h"

#include <bit>
#include <cstring>

#include "cabarc/CabFormat.h"

namespace cabinet {

static_assert(std::endian::native == std::endian::little, "the words below are read in the machine's order");

std::uint32_t Checksum(const std::uint8_t* data, std::size_t size, std::uint32_t seed) {
  std::uint64_t lanes[4] = {};  // independent of each other, so that the loads overlap
  for (; size >= sizeof lanes; size -= sizeof lanes, data += sizeof lanes) {
    std::uint64_t words[4];
    std::memcpy(words, data, sizeof words);
    for (std::size_t i = 0; i < 4; ++i) lanes[i] ^= words[i];
  }
  const std::uint64_t folded = lanes[0] ^ lanes[1] ^ lanes[2] ^ lanes[3];
  std::uint32_t sum = seed ^ static_cast<std::uint32_t>(folded) ^ static_cast<std::uint32_t>(folded >> 32);
  for (; size >= 4; size -= 4, data += 4) sum ^= Get32(data);
  std::uint32_t rest = 0;
  for (; size > 0; --size, ++data) rest = rest << 8 | *data;
  return sum ^ rest;
}

}  // namespace cabinet
