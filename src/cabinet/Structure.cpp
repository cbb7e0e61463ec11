// Reads what stands before the data of a cabinet, believing nothing of it.
#include "cabinet/Structure.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <tuple>
#include <utility>

namespace cabinet {
namespace {

using base::Failure;
using base::Outcome;
using base::Result;

constexpr std::size_t kMaxGap = 0xFFFF;  // unknown bytes tolerated before the file records
constexpr const char* kDamagedRecords = "its list of files is damaged";

/// A signature stands behind the cabinet, and the header's reserved area, which has this size, says where: four bytes
/// of its own, then its offset and its size.
constexpr std::size_t kSignatureReserveSize = 20;

class Reader {
 public:
  Reader(Source& source, const ReadingRules& rules, Structure& structure)
      : source_(source), rules_(rules), structure_(structure) {}

  Outcome Read() {
    Outcome outcome = ReadHeader();
    if (outcome.IsDone()) outcome = ReadReserve();
    if (outcome.IsDone()) outcome = CheckSize();
    if (outcome.IsDone()) outcome = ReadFolders();
    if (outcome.IsDone()) outcome = ReadMembers();
    if (outcome.IsDone()) outcome = CheckCrc();
    if (outcome.IsDone()) outcome = CheckFolders();
    return outcome.IsDone() ? CheckMembers() : outcome;
  }

 private:
  const std::uint8_t* Next() const { return bytes_.data() + at_; }

  /// Sees to it that `count` bytes stand at Next().
  Outcome Have(std::size_t count) {
    while (bytes_.size() - at_ < count) {
      const std::int64_t got = AppendNext(source_, bytes_, count - (bytes_.size() - at_));
      if (got < 0) return Failure("it cannot be read");
      if (got == 0) return Failure("its end is missing");
    }
    return Result::Done;
  }

  Outcome ReadHeader() {
    if (Outcome had = Have(kHeaderSize); !had.IsDone()) return had;
    const std::uint8_t* const header = Next();
    if (std::memcmp(header, "MSCF", 4) != 0) return Failure("it is no cabinet");
    structure_.size = Get32(header + 8);
    if (structure_.size > source_.Size()) return Failure("it is shorter than it was written; its end is missing");
    if (Get16(header + 24) != kVersion) return Failure("its format version is not supported");
    filesAt_ = Get32(header + 16);
    folderCount_ = Get16(header + 26);
    memberCount_ = Get16(header + 28);
    structure_.flags = Get16(header + 30);
    structure_.setId = Get16(header + 32);
    at_ = kHeaderSize;
    if ((structure_.flags & (kFlagPrevious | kFlagNext)) != 0) {
      return Failure("it is part of a set, which is not supported");
    }
    if (structure_.flags > kFlagReserve) return Failure("it has flags that are not supported");
    return Result::Done;
  }

  Outcome ReadReserve() {
    if ((structure_.flags & kFlagReserve) == 0) return Result::Done;
    if (Outcome had = Have(kReserveSizesSize); !had.IsDone()) return had;
    headerReserve_ = Get16(Next());
    structure_.folderReserve = Next()[2];
    structure_.blockReserve = Next()[3];
    at_ += kReserveSizesSize;
    if (Outcome had = Have(headerReserve_); !had.IsDone()) return had;
    structure_.guarded =
        headerReserve_ == kCrcReserveSize && std::memcmp(Next(), kCrcMark.data(), kCrcMark.size()) == 0;
    if (structure_.guarded && structure_.folderReserve != kFolderCrcSize) return Failure(kDamagedRecords);
    at_ += headerReserve_;
    return Result::Done;
  }

  Outcome CheckSize() {
    const std::uint64_t behind = source_.Size() - structure_.size;
    if (behind == 0 || IsSigned(behind)) return Result::Done;
    return Failure("it is longer than it was written; other data follow it");
  }

  bool IsSigned(std::uint64_t behind) const {
    if (headerReserve_ != kSignatureReserveSize) return false;
    const std::uint8_t* const place = Next() - headerReserve_ + 4;
    return Get32(place) == structure_.size && Get32(place + 4) == behind;
  }

  Outcome ReadFolders() {
    const std::size_t size = kFolderRecordSize + structure_.folderReserve;
    for (std::size_t i = 0; i < folderCount_; ++i) {
      if (Outcome had = Have(size); !had.IsDone()) return had;
      structure_.folders.push_back({Get32(Next()), Get16(Next() + 4), Get16(Next() + 6)});
      if (structure_.guarded) structure_.folders.back().crc = Get32(Next() + kFolderRecordSize);
      at_ += size;
    }
    return Result::Done;
  }

  Outcome ReadMembers() {
    if (filesAt_ < at_ || filesAt_ - at_ > kMaxGap) return Failure("its file records are not where they should be");
    if (Outcome had = Have(filesAt_ - at_); !had.IsDone()) return had;
    at_ = filesAt_;
    structure_.members.reserve(memberCount_);
    for (std::size_t i = 0; i < memberCount_; ++i) {
      if (Outcome read = ReadMember(); !read.IsDone()) return read;
    }
    bytes_.resize(at_);
    structure_.recordsEnd = at_;
    return Result::Done;
  }

  Outcome ReadMember() {
    if (Outcome had = Have(kFileRecordSize); !had.IsDone()) return had;
    const std::uint8_t* const record = Next();
    const unsigned attributes = Get16(record + 14);
    Member member{{},
                  Get32(record),
                  Get32(record + 4),
                  Get16(record + 8),
                  {Get16(record + 10), Get16(record + 12)},
                  static_cast<std::uint8_t>(attributes & kAllAttributes)};
    at_ += kFileRecordSize;
    if (Outcome read = ReadName((attributes & kNameIsUtf8) != 0, member); !read.IsDone()) return read;
    structure_.members.push_back(std::move(member));
    return Result::Done;
  }

  Outcome ReadName(bool utf8, Member& member) {
    std::size_t length = 0;
    for (;; ++length) {
      if (Outcome had = Have(length + 1); !had.IsDone()) return had;
      if (Next()[length] == 0) break;
      if (length == kMaxNameBytes) return Failure("one of its names is too long");
    }
    member.name.assign(Next(), Next() + length);
    at_ += length + 1;
    member.nameIsMalformed = utf8 && !IsUtf8(member.name);
    if ((!utf8 && !IsAscii(member.name)) || member.nameIsMalformed) member.name = rules_.codePage(member.name);
    std::replace(member.name.begin(), member.name.end(), '/', '\\');
    return Result::Done;
  }

  /// One damaged byte must not be enough to make a guarded cabinet pass for a foreign one: where the mark is missing
  /// from its place, but the CRC behind it is that of the records with the mark, it was there.
  bool MarkWasDamaged() const {
    if (structure_.guarded || headerReserve_ != kCrcReserveSize) return false;
    std::vector<std::uint8_t> whole = bytes_;
    std::copy(kCrcMark.begin(), kCrcMark.end(), whole.begin() + kCrcMarkAt);
    return RecordsCrc(whole) == Get32(&bytes_[kCrcAt]);
  }

  Outcome CheckCrc() const {
    const bool damaged = structure_.guarded ? RecordsCrc(bytes_) != Get32(&bytes_[kCrcAt]) : MarkWasDamaged();
    return damaged ? Failure(kDamagedRecords) : Outcome(Result::Done);
  }

  Outcome CheckFolders() const {
    std::uint64_t end = structure_.recordsEnd;
    for (const Folder& folder : structure_.folders) {
      if (folder.blocks == 0) continue;
      const std::uint64_t least = std::uint64_t{folder.blocks} * (kBlockHeaderSize + structure_.blockReserve);
      if (folder.dataAt < end || folder.dataAt + least > structure_.size) {
        return Failure("its data are not where they should be");
      }
      end = folder.dataAt + least;
    }
    return Result::Done;
  }

  Outcome CheckMembers() const {
    std::vector<const Member*> inOrder;
    for (const Member& member : structure_.members) {
      if (member.folder >= structure_.folders.size()) return Failure(member.name + ": it is in no folder");
      const std::uint64_t room = std::uint64_t{structure_.folders[member.folder].blocks} * kBlockSize;
      if (std::uint64_t{member.at} + member.size > room) return Failure(member.name + ": it has no data");
      inOrder.push_back(&member);
    }
    std::sort(inOrder.begin(), inOrder.end(), [](const Member* a, const Member* b) {
      return std::tie(a->folder, a->at, a->size) < std::tie(b->folder, b->at, b->size);
    });
    for (std::size_t i = 1; i < inOrder.size(); ++i) {
      const Member& before = *inOrder[i - 1];
      const Member& member = *inOrder[i];
      if (before.folder == member.folder && std::uint64_t{before.at} + before.size > member.at) {
        return Failure(before.name + " and " + member.name + " overlap");
      }
    }
    return Result::Done;
  }

  Source& source_;
  const ReadingRules& rules_;
  Structure& structure_;
  std::vector<std::uint8_t> bytes_;  // of the source, from its start
  std::size_t at_ = 0;               // how much of them was taken
  std::size_t filesAt_ = 0;
  std::size_t folderCount_ = 0;
  std::size_t memberCount_ = 0;
  std::size_t headerReserve_ = 0;
};

}  // namespace

std::uint64_t Structure::EndOfFolder(std::size_t index) const {
  for (std::size_t next = index + 1; next < folders.size(); ++next) {
    if (folders[next].blocks > 0) return folders[next].dataAt;
  }
  return size;
}

std::vector<std::uint64_t> Structure::Extents() const {
  std::vector<std::uint64_t> extents(folders.size());
  for (const Member& member : members) {
    extents[member.folder] = std::max(extents[member.folder], std::uint64_t{member.at} + member.size);
  }
  return extents;
}

base::Outcome ReadStructure(Source& source, Structure& structure, const ReadingRules& rules) {
  structure = {};
  return Reader(source, rules, structure).Read();
}

std::uint32_t RecordsCrc(std::vector<std::uint8_t> records) {
  if (records.size() >= kCrcAt + 4) Put32(records.data() + kCrcAt, 0);
  return Crc32(0, records.data(), records.size());
}

}  // namespace cabinet
