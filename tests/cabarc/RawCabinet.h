// Makes cabinets that the archiver itself would not make: foreign, unusual and hostile ones.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cabarc/CabFormat.h"

struct RawMember {
  std::string name;
  std::size_t size = 0, at = 0;
  std::uint16_t folder = 0, attributes = 0x20;
};

struct RawBlock {
  std::string packed;
  std::size_t unpackedSize = 0;
  bool checked = true;
};

/// The low `size` bytes of a number, in the order of the format.
inline std::string Number(std::uint64_t value, int size) {
  std::string bytes;
  for (; size > 0; --size, value >>= 8) bytes += static_cast<char>(value);
  return bytes;
}

inline std::uint32_t Checksum(const std::string& bytes, std::uint32_t seed = 0) {
  return cabinet::Checksum(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size(), seed);
}

/// One folder; everything else may be changed in the bytes afterwards.
struct RawCabinet {
  std::vector<RawMember> members;
  std::vector<RawBlock> blocks;
  std::uint16_t method = 0;
  bool reserves = false;       ///< 5 bytes in the header, 3 in the folder, 6 in each block
  bool reserveCounts = false;  ///< in the blocks' checksums, as some writers have it

  std::string Build() const {
    const auto reserve = [&](std::size_t size) { return std::string(reserves ? size : 0, '\xEE'); };
    std::string records;
    for (const RawMember& member : members) {
      records += Number(member.size, 4) + Number(member.at, 4) + Number(member.folder, 2) + Number(0x60005A21, 4) +
                 Number(member.attributes, 2) + member.name + '\0';
    }
    std::string data;
    for (const RawBlock& block : blocks) {
      const std::string sizes = Number(block.packed.size(), 2) + Number(block.unpackedSize, 2) + reserve(6);
      const std::uint32_t sum = Checksum(sizes.substr(0, reserveCounts ? 10 : 4), Checksum(block.packed));
      data += Number(block.checked ? sum : 0, 4) + sizes + block.packed;
    }
    const std::string reserved = reserves ? Number(0x06030005, 4) + reserve(5) : "";
    const std::size_t recordsAt = 36 + reserved.size() + 8 + reserve(3).size();
    const std::size_t dataAt = recordsAt + records.size();
    return "MSCF" + Number(0, 4) + Number(dataAt + data.size(), 8) + Number(recordsAt, 8) + Number(0x00010103, 4) +
           Number(members.size(), 2) + Number(reserves ? 4 : 0, 6) + reserved +  // the header
           Number(dataAt, 4) + Number(blocks.size(), 2) + Number(method, 2) + reserve(3) + records + data;
  }
};

/// A cabinet of one file, not packed.
inline RawCabinet PlainCabinet(const std::string& name, const std::string& text, std::uint16_t attributes = 0x20) {
  return {{{name, text.size(), 0, 0, attributes}}, {{text, text.size()}}};
}
