// The checksum of a cabinet's data blocks.
#pragma once

#include <cstddef>
#include <cstdint>

namespace cabinet {

/// Little-endian 32-bit words combined by exclusive or, on top of `seed`; the one to three bytes left over count in
/// reversed order.
std::uint32_t Checksum(const std::uint8_t* data, std::size_t size, std::uint32_t seed);

}  // namespace cabinet
