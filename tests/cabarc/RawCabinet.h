// Makes cabinets that the archiver itself would not make: foreign, unusual and hostile ones.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cabarc/CabFormat.h"
#include "cabarc/Checksum.h"

struct RawMember {
  std::string name;
  std::uint32_t size = 0;
  std::uint32_t at = 0;
  std::uint16_t folder = 0;
  std::uint16_t attributes = 0x20;
};

struct RawBlock {
  std::string packed;
  std::uint16_t unpackedSize = 0;
  bool checked = true;
};

/// One folder; everything else may be changed in the bytes afterwards.
struct RawCabinet {
  std::vector<RawMember> members;
  std::vector<RawBlock> blocks;
  std::uint16_t method = 0;
  bool reserves = false;       ///< 5 bytes in the header, 3 in the folder, 6 in each block
  bool reserveCounts = false;  ///< in the blocks' checksums, as some writers have it

  std::vector<std::uint8_t> Build() const {
    std::vector<std::uint8_t> bytes(36);
    const auto add = [&](std::uint32_t value, int size) {
      for (; size > 0; --size, value >>= 8) bytes.push_back(static_cast<std::uint8_t>(value));
    };
    const auto reserve = [&](std::size_t size) { bytes.insert(bytes.end(), reserves ? size : 0, 0xEE); };
    if (reserves) add(0x06030005, 4);
    reserve(5);
    const std::size_t folderAt = bytes.size();
    add(0, 4);
    add(static_cast<std::uint32_t>(blocks.size()), 2);
    add(method, 2);
    reserve(3);
    const std::size_t filesAt = bytes.size();
    for (const RawMember& member : members) {
      add(member.size, 4);
      add(member.at, 4);
      add(member.folder, 2);
      add(0x5A21, 2);
      add(0x6000, 2);
      add(member.attributes, 2);
      bytes.insert(bytes.end(), member.name.begin(), member.name.end());
      bytes.push_back(0);
    }
    cabinet::Put32(bytes.data() + folderAt, static_cast<std::uint32_t>(bytes.size()));
    for (const RawBlock& block : blocks) {
      const std::size_t at = bytes.size();
      add(0, 4);
      add(static_cast<std::uint32_t>(block.packed.size()), 2);
      add(block.unpackedSize, 2);
      reserve(6);
      const std::size_t dataAt = bytes.size();
      bytes.insert(bytes.end(), block.packed.begin(), block.packed.end());
      const std::uint32_t sum = cabinet::Checksum(bytes.data() + dataAt, block.packed.size(), 0);
      if (block.checked)
        cabinet::Put32(bytes.data() + at, cabinet::Checksum(bytes.data() + at + 4, reserveCounts ? 10 : 4, sum));
    }
    const char signature[] = "MSCF";
    std::copy(signature, signature + 4, bytes.begin());
    cabinet::Put32(bytes.data() + 8, static_cast<std::uint32_t>(bytes.size()));
    cabinet::Put32(bytes.data() + 16, static_cast<std::uint32_t>(filesAt));
    cabinet::Put16(bytes.data() + 24, 0x0103);
    cabinet::Put16(bytes.data() + 26, 1);
    cabinet::Put16(bytes.data() + 28, static_cast<std::uint32_t>(members.size()));
    cabinet::Put16(bytes.data() + 30, reserves ? 4 : 0);
    return bytes;
  }
};

/// A cabinet of one file, not packed.
inline RawCabinet PlainCabinet(const std::string& name, const std::string& text) {
  const auto size = static_cast<std::uint16_t>(text.size());
  return {{{name, size}}, {{text, size}}};
}
