// Reads what stands before the data of a cabinet, believing nothing of it.
#include <algorithm>
#include <cstring>
#include <string>
#include <tuple>

#include "cabarc/CabFormat.h"
#include "cabarc/FileAccess.h"
#include "cabarc/MemberNames.h"

namespace cabinet {

namespace {

constexpr std::size_t kMaxGap = 65535;  // unknown bytes tolerated before the file records
constexpr const char* kDamagedRecords = "its list of files is damaged";

class Reader {
 public:
  Reader(BufferedInput& input, CabinetRecords& records) : input_(input), records_(records) {}

  Status Read(std::uint64_t fileSize) {
    Status status = ReadHeader(fileSize);
    if (!status.Failed()) status = ReadReserve();
    if (!status.Failed()) status = ReadFolders();
    if (!status.Failed()) status = ReadMembers();
    if (!status.Failed()) status = CheckCrc();
    if (!status.Failed()) status = CheckFolders();
    return status.Failed() ? status : CheckMembers();
  }

 private:
  // The next `size` bytes, valid until the next call. Null when there are none; failure_ then says why.
  const std::uint8_t* Take(std::size_t size) {
    failure_ = input_.Append(size, bytes_);
    if (failure_.Failed()) return nullptr;
    return bytes_.data() + bytes_.size() - size;
  }

  Status ReadHeader(std::uint64_t fileSize) {
    const std::uint8_t* const header = Take(kHeaderSize);
    if (!header) return failure_;
    if (std::memcmp(header, "MSCF", 4) != 0) return BrokenCabinet("it is no cabinet");
    records_.size = Get32(header + 8);
    if (records_.size > fileSize) return BrokenCabinet("it is shorter than it was written; its end is missing");
    if (records_.size < fileSize) return BrokenCabinet("it is longer than it was written; other data follow it");
    if (Get16(header + 24) != kVersion) return BrokenCabinet("its format version is not supported");
    filesAt_ = Get32(header + 16);
    folderCount_ = Get16(header + 26);
    memberCount_ = Get16(header + 28);
    flags_ = Get16(header + 30);
    if (flags_ & (kFlagPrevious | kFlagNext)) return BrokenCabinet("it is part of a set, which is not supported");
    if (flags_ > kFlagReserve) return BrokenCabinet("it has flags that are not supported");
    return {};
  }

  Status ReadReserve() {
    if (!(flags_ & kFlagReserve)) return {};
    const std::uint8_t* const sizes = Take(kReserveSizesSize);
    if (!sizes) return failure_;
    const std::size_t headerReserve = Get16(sizes);
    records_.folderReserve = sizes[2];
    records_.blockReserve = sizes[3];
    const std::uint8_t* const reserve = Take(headerReserve);
    if (!reserve) return failure_;
    records_.guarded = headerReserve == kCrcReserveSize && std::memcmp(reserve, kCrcMark.data(), kCrcMark.size()) == 0;
    if (records_.guarded && records_.folderReserve != kFolderCrcSize) return BrokenCabinet(kDamagedRecords);
    return {};
  }

  Status ReadFolders() {
    for (std::size_t i = 0; i < folderCount_; ++i) {
      const std::uint8_t* const at = Take(kFolderRecordSize + records_.folderReserve);
      if (!at) return failure_;
      records_.folders.push_back({Get32(at), Get16(at + 4), Get16(at + 6)});
      if (records_.guarded) records_.folders.back().crc = Get32(at + kFolderRecordSize);
    }
    return {};
  }

  Status ReadMembers() {
    if (filesAt_ < bytes_.size() || filesAt_ - bytes_.size() > kMaxGap) {
      return BrokenCabinet("its file records are not where they should be");
    }
    if (!Take(filesAt_ - bytes_.size())) return failure_;
    for (std::size_t i = 0; i < memberCount_; ++i) {
      if (Status status = ReadMember(); status.Failed()) return status;
    }
    return {};
  }

  Status ReadMember() {
    const std::uint8_t* const at = Take(kFileRecordSize);
    if (!at) return failure_;
    MemberRecord member;
    member.size = Get32(at);
    member.at = Get32(at + 4);
    member.folder = Get16(at + 8);
    member.stamp = {Get16(at + 10), Get16(at + 12)};
    const unsigned attributes = Get16(at + 14);
    member.attributes = static_cast<std::uint8_t>(attributes & platform::kAllAttributes);
    for (;;) {
      const std::uint8_t* const character = Take(1);
      if (!character) return failure_;
      if (*character == 0) break;
      if (member.name.size() == kMaxNameBytes) return BrokenCabinet("one of its names is too long");
      member.name += static_cast<char>(*character);
    }
    if (!(attributes & kNameIsUtf8)) {
      member.name = platform::FromCodePage(member.name);
    } else if (!IsUtf8(member.name)) {
      return BrokenCabinet("one of its names is not the UTF-8 that it is marked as");
    }
    std::replace(member.name.begin(), member.name.end(), '/', '\\');
    records_.members.push_back(std::move(member));
    return {};
  }

  Status CheckCrc() {
    if (!records_.guarded) return {};
    const std::uint32_t written = Get32(bytes_.data() + kCrcAt);
    return RecordsCrc(bytes_) == written ? Status{} : BrokenCabinet(kDamagedRecords);
  }

  Status CheckFolders() const {
    std::uint64_t end = bytes_.size();
    for (const FolderRecord& folder : records_.folders) {
      if (folder.blocks == 0) continue;
      const std::uint64_t least = std::uint64_t{folder.blocks} * (kBlockHeaderSize + records_.blockReserve);
      if (folder.dataAt < end || folder.dataAt + least > records_.size) {
        return BrokenCabinet("its data are not where they should be");
      }
      end = folder.dataAt + least;
    }
    return {};
  }

  Status CheckMembers() const {
    std::vector<const MemberRecord*> inOrder;
    for (const MemberRecord& member : records_.members) {
      if (member.folder >= records_.folders.size()) return BrokenCabinet(member.name + ": it is in no folder");
      const std::uint64_t room = std::uint64_t{records_.folders[member.folder].blocks} * kBlockSize;
      if (std::uint64_t{member.at} + member.size > room) return BrokenCabinet(member.name + ": it has no data");
      inOrder.push_back(&member);
    }
    std::sort(inOrder.begin(), inOrder.end(), [](const MemberRecord* a, const MemberRecord* b) {
      return std::tie(a->folder, a->at, a->size) < std::tie(b->folder, b->at, b->size);
    });
    for (std::size_t i = 1; i < inOrder.size(); ++i) {
      const MemberRecord& before = *inOrder[i - 1];
      const MemberRecord& member = *inOrder[i];
      if (before.folder == member.folder && before.at + before.size > member.at) {
        return BrokenCabinet(before.name + " and " + member.name + " overlap");
      }
    }
    return {};
  }

  BufferedInput& input_;
  CabinetRecords& records_;
  std::vector<std::uint8_t> bytes_;
  Status failure_;
  std::uint32_t filesAt_ = 0;
  std::size_t folderCount_ = 0;
  std::size_t memberCount_ = 0;
  unsigned flags_ = 0;
};

}  // namespace

Status ReadRecords(BufferedInput& input, std::uint64_t fileSize, CabinetRecords& records) {
  return Reader(input, records).Read(fileSize);
}

}  // namespace cabinet
