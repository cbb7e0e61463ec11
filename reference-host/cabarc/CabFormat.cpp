// Writes the records that open a cabinet.
#include "cabarc/CabFormat.h"

#include <string_view>
#include <utility>

namespace cabarc {

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

void AddHeader(RecordBytes& out, const Structure& structure) {
  const std::size_t foldersAt = kHeaderSize + kReserveSizesSize + kCrcReserveSize;
  out.AddText("MSCF");
  out.Add32(0);
  out.Add32(structure.size);
  out.Add32(0);
  out.Add32(static_cast<std::uint32_t>(foldersAt + (kFolderRecordSize + kFolderCrcSize) * structure.folders.size()));
  out.Add32(0);
  out.Add16(kVersion);
  out.Add16(static_cast<std::uint16_t>(structure.folders.size()));
  out.Add16(static_cast<std::uint16_t>(structure.members.size()));
  out.Add16(kFlagReserve);
  out.Add32(0);  // set and number in the set: none
  out.Add16(kCrcReserveSize);
  out.Add8(kFolderCrcSize);
  out.Add8(0);  // nothing reserved in blocks
  out.AddText(kCrcMark);
  out.Add32(0);
}

}  // namespace

std::vector<std::uint8_t> WriteRecords(const Structure& structure) {
  RecordBytes out;
  AddHeader(out, structure);
  for (const Folder& folder : structure.folders) {
    out.Add32(folder.dataAt);
    out.Add16(folder.blocks);
    out.Add16(folder.method);
    out.Add32(folder.crc);
  }
  for (const Member& member : structure.members) {
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

}  // namespace cabarc
