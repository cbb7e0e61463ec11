// Writes the records that open a cabinet, and computes the checksum of its blocks.
#include "cabarc/CabFormat.h"

#include <libdeflate.h>

#include <bit>
#include <cstring>

#include "cabarc/MemberNames.h"

namespace cabinet {

namespace {

class RecordBytes {
 public:
  void Add8(std::uint32_t value) { bytes.push_back(static_cast<std::uint8_t>(value)); }
  void Add16(std::uint32_t value) {
    Add8(value);
    Add8(value >> 8);
  }
  void Add32(std::uint32_t value) {
    Add16(value);
    Add16(value >> 16);
  }
  void AddText(std::string_view text) { bytes.insert(bytes.end(), text.begin(), text.end()); }

  std::vector<std::uint8_t> bytes;
};

void AddHeader(RecordBytes& out, const CabinetRecords& records) {
  const std::size_t foldersAt = kHeaderSize + kReserveSizesSize + kCrcReserveSize;
  out.AddText("MSCF");
  out.Add32(0);
  out.Add32(records.size);
  out.Add32(0);
  out.Add32(static_cast<std::uint32_t>(foldersAt + (kFolderRecordSize + kFolderCrcSize) * records.folders.size()));
  out.Add32(0);
  out.Add16(kVersion);
  out.Add16(static_cast<std::uint16_t>(records.folders.size()));
  out.Add16(static_cast<std::uint16_t>(records.members.size()));
  out.Add16(kFlagReserve);
  out.Add32(0);  // set and number in the set: none
  out.Add16(kCrcReserveSize);
  out.Add8(kFolderCrcSize);
  out.Add8(0);  // nothing reserved in blocks
  out.AddText(kCrcMark);
  out.Add32(0);
}

}  // namespace

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

std::vector<std::uint8_t> WriteRecords(const CabinetRecords& records) {
  RecordBytes out;
  AddHeader(out, records);
  for (const FolderRecord& folder : records.folders) {
    out.Add32(folder.dataAt);
    out.Add16(folder.blocks);
    out.Add16(folder.method);
    out.Add32(folder.crc);
  }
  for (const MemberRecord& member : records.members) {
    out.Add32(member.size);
    out.Add32(member.at);
    out.Add16(member.folder);
    out.Add16(member.stamp.date);
    out.Add16(member.stamp.time);
    out.Add16(member.attributes | (IsAscii(member.name) ? 0u : kNameIsUtf8));
    out.AddText(member.name);
    out.Add8(0);
  }
  Put32(out.bytes.data() + kCrcAt, RecordsCrc(out.bytes));
  return std::move(out.bytes);
}

std::uint32_t RecordsCrc(std::vector<std::uint8_t> records) {
  if (records.size() >= kCrcAt + 4) Put32(records.data() + kCrcAt, 0);
  return libdeflate_crc32(0, records.data(), records.size());
}

}  // namespace cabinet
