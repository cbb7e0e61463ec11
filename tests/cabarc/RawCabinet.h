// Makes cabinets that the archiver itself would not make: foreign, unusual and hostile ones.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cabinet/Format.h"

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

/// One folder or two; everything else may be changed in the bytes afterwards.
class RawCabinet {
 public:
  std::vector<RawMember> members;
  std::vector<RawBlock> blocks;
  std::uint16_t method = 0;
  std::size_t firstFolder = 0;  ///< how many of the blocks lie in it; the others in a second one; 0: all of them
  bool reserves = false;        ///< 5 bytes in the header, 3 in the folder, 6 in each block
  bool reserveCounts = false;   ///< in the blocks' checksums, as some writers have it

  std::string Build() const {
    std::string records;
    for (const RawMember& member : members) {
      records += Number(member.size, 4) + Number(member.at, 4) + Number(member.folder, 2) + Number(0x60005A21, 4) +
                 Number(member.attributes, 2) + member.name + '\0';
    }
    const std::size_t inFirst = firstFolder == 0 ? blocks.size() : firstFolder;
    const std::string first = Data(0, inFirst);
    const std::string second = Data(inFirst, blocks.size());
    const std::string reserved = reserves ? Number(0x06030005, 4) + Reserve(5) : "";
    const std::size_t folders = second.empty() ? 1 : 2;
    const std::size_t recordsAt = 36 + reserved.size() + folders * (8 + Reserve(3).size());
    const std::size_t dataAt = recordsAt + records.size();
    std::string folderRecords = Folder(dataAt, inFirst);
    if (folders == 2) folderRecords += Folder(dataAt + first.size(), blocks.size() - inFirst);
    return "MSCF" + Number(0, 4) + Number(dataAt + first.size() + second.size(), 8) + Number(recordsAt, 8) +
           Number(0x0103, 2) + Number(folders, 2) + Number(members.size(), 2) + Number(reserves ? 4 : 0, 6) + reserved +
           folderRecords + records + first + second;
  }

 private:
  std::string Reserve(std::size_t size) const { return std::string(reserves ? size : 0, '\xEE'); }

  std::string Folder(std::size_t at, std::size_t count) const {
    return Number(at, 4) + Number(count, 2) + Number(method, 2) + Reserve(3);
  }

  std::string Data(std::size_t from, std::size_t to) const {
    std::string data;
    for (; from < to; ++from) {
      const RawBlock& block = blocks[from];
      const std::string sizes = Number(block.packed.size(), 2) + Number(block.unpackedSize, 2) + Reserve(6);
      const std::uint32_t sum = Checksum(sizes.substr(0, reserveCounts ? 10 : 4), Checksum(block.packed));
      data += Number(block.checked ? sum : 0, 4) + sizes + block.packed;
    }
    return data;
  }
};

/// A cabinet of one file, not packed.
inline RawCabinet PlainCabinet(const std::string& name, const std::string& text, std::uint16_t attributes = 0x20) {
  RawCabinet raw;
  raw.members = {{name, text.size(), 0, 0, attributes}};
  raw.blocks = {{text, text.size()}};
  return raw;
}
