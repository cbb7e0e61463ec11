// Reads the records of a damaged cabinet where they contradict themselves.
#include <algorithm>
#include <cstring>
#include <limits>
#include <optional>
#include <utility>

#include "cabinet/MemberFitter.h"
#include "cabinet/RecordMender.h"
#include "cabinet/Rescue.h"

namespace cabinet {
namespace {

using base::Failure;
using base::Outcome;
using base::Result;

constexpr std::size_t kLongestRecord = kFileRecordSize + kMaxNameBytes + 1;
/// Behind so many damaged records nobody looks for more: each takes a search.
constexpr int kMostDamagedRecords = 1000;

/// Where the tables of a cabinet stand.
struct Layout {
  std::size_t foldersAt = kHeaderSize;
  std::uint8_t folderReserve = 0;
  std::uint8_t blockReserve = 0;
  bool guarded = false;

  std::size_t FolderSize() const { return kFolderRecordSize + folderReserve; }
};

class TolerantReader {
 public:
  TolerantReader(Beginning& records, const ReadingRules& rules, RescuedStructure& rescued)
      : records_(records), rules_(rules), rescued_(rescued), structure_(rescued.structure) {}

  Outcome Read() {
    if (!records_.Have(kHeaderSize)) return Failure("it is no cabinet");
    ReadHeader();
    if (!FindTables()) return Failure("its list of files cannot be found");
    ReadFolders();
    ReadMembers();
    if (structure_.members.empty()) return Failure("its list of files cannot be found");
    const std::vector<std::uint8_t>& bytes = records_.bytes;
    const auto end = bytes.begin() + static_cast<std::ptrdiff_t>(structure_.recordsEnd);
    rescued_.trusted = structure_.guarded && RecordsCrc({bytes.begin(), end}) == Get32(&bytes[kCrcAt]);
    return Result::Done;
  }

 private:
  const std::uint8_t* At(std::size_t offset) const { return records_.bytes.data() + offset; }

  void Note(std::string words) { rescued_.flaws.push_back(std::move(words)); }

  void ReadHeader() {
    if (std::memcmp(At(0), "MSCF", 4) != 0) Note("its first bytes are not those of a cabinet");
    structure_.size = Get32(At(8));
    if (structure_.size > records_.Size()) Note("it is shorter than it was written");
    if (structure_.size < records_.Size()) Note("it is longer than it was written");
    if (Get16(At(24)) != kVersion) Note("its format version is not supported");
    filesAt_ = Get32(At(16));
    folderCount_ = Get16(At(26));
    memberCount_ = Get16(At(28));
    structure_.flags = Get16(At(30));
    structure_.setId = Get16(At(32));
    if ((structure_.flags & ~kFlagReserve) != 0) Note("it has flags that are not supported");
  }

  /// The ways in which the header can be read, the likeliest first.
  std::vector<Layout> Layouts() {
    std::vector<Layout> layouts;
    if (records_.Have(kCrcAt + 4) && std::memcmp(At(kCrcMarkAt), kCrcMark.data(), kCrcMark.size()) == 0) {
      layouts.push_back({kFoldersAtInGuarded, kFolderCrcSize, 0, true});
    }
    if ((structure_.flags & kFlagReserve) != 0 && records_.Have(kHeaderSize + kReserveSizesSize)) {
      const std::uint8_t* const sizes = At(kHeaderSize);
      layouts.push_back({kHeaderSize + kReserveSizesSize + Get16(sizes), sizes[2], sizes[3]});
    }
    layouts.push_back({});
    return layouts;
  }

  bool FindTables() {
    const std::vector<Layout> layouts = Layouts();
    const auto use = [this](const Layout& layout) {
      layout_ = layout;
      return true;
    };
    for (const Layout& layout : layouts) {
      if (layout.foldersAt + folderCount_ * layout.FolderSize() == filesAt_ && folderCount_ > 0) return use(layout);
    }
    for (const Layout& layout : layouts) {
      if (CountFits(layout)) return use(layout);
    }
    for (const Layout& layout : layouts) {
      if (EndFits(layout)) return use(layout);
    }
    return false;
  }

  /// Where the number of folders is damaged, the place of the file records tells it.
  bool CountFits(const Layout& layout) {
    if (filesAt_ <= layout.foldersAt || (filesAt_ - layout.foldersAt) % layout.FolderSize() != 0) return false;
    const std::size_t count = (filesAt_ - layout.foldersAt) / layout.FolderSize();
    if (count > std::numeric_limits<std::uint16_t>::max() || !IsPlausible(filesAt_, count)) return false;
    Note("its number of folders is damaged");
    folderCount_ = count;
    return true;
  }

  /// And the other way round.
  bool EndFits(const Layout& layout) {
    const std::size_t end = layout.foldersAt + folderCount_ * layout.FolderSize();
    if (folderCount_ == 0 || !IsPlausible(end, folderCount_)) return false;
    Note("the place of its file records is damaged");
    filesAt_ = end;
    return true;
  }

  void ReadFolders() {
    structure_.guarded = layout_.guarded;
    structure_.folderReserve = layout_.folderReserve;
    structure_.blockReserve = layout_.blockReserve;
    for (std::size_t i = 0; i < folderCount_; ++i) {
      const std::size_t at = layout_.foldersAt + i * layout_.FolderSize();
      if (!records_.Have(at + layout_.FolderSize())) break;
      structure_.folders.push_back({Get32(At(at)), Get16(At(at + 4)), Get16(At(at + 6))});
      if (layout_.guarded) structure_.folders.back().crc = Get32(At(at + kFolderRecordSize));
      const std::uint32_t dataAt = structure_.folders.back().dataAt;
      if (dataAt > filesAt_ && dataAt < dataAt_ && SoundBlockAt(window_, dataAt, layout_.blockReserve))
        dataAt_ = dataAt;
    }
  }

  /// Length of the name of the record at `at`, its NUL not counted; nothing where none ends in time.
  std::optional<std::size_t> NameLength(std::size_t at) {
    for (std::size_t length = 0; length <= kMaxNameBytes; ++length) {
      if (!records_.Have(at + kFileRecordSize + length + 1)) return std::nullopt;
      if (*At(at + kFileRecordSize + length) == 0) return length;
    }
    return std::nullopt;
  }

  /// Whether what stands at `at` can be a file record of a cabinet of so many folders.
  bool IsPlausible(std::size_t at, std::size_t folders) {
    if (!HasCleanName(at) || at + kFileRecordSize + *NameLength(at) >= dataAt_) return false;
    const std::uint8_t* const record = At(at);
    return Get32(record) <= kMaxFileSize && Get32(record + 4) <= kMaxFolderSize && Get16(record + 8) < folders &&
           record[15] == 0;
  }

  /// Whether the record at `next` begins where the member of the one at `at` ends, in whatever folder, or begins one.
  bool Follows(std::size_t next, std::size_t at) {
    if (!IsPlausible(next, kAnyFolder)) return false;
    const std::uint64_t end = std::uint64_t{Get32(At(at))} + Get32(At(at + 4));
    return Get32(At(next + 4)) == end || (Get32(At(next + 4)) == 0 && IsPlausible(next, folderCount_));
  }

  void ReadMembers() {
    at_ = filesAt_;
    while (structure_.members.size() < kMaxFiles && !IsEnd(at_)) {
      if (!ReadMember()) break;
    }
    structure_.recordsEnd = at_;
    if (structure_.members.size() != memberCount_) {
      Note("of " + std::to_string(memberCount_) + " file records " + std::to_string(structure_.members.size()) +
           " were found");
    }
  }

  /// The records end where the data begin; where nobody knows where that is, with their number.
  bool IsEnd(std::size_t at) const {
    return dataAt_ == kUnknown ? structure_.members.size() >= memberCount_ : at >= dataAt_;
  }

  /// False behind the last record that can be found.
  bool ReadMember() {
    const std::size_t at = at_;
    const std::optional<std::size_t> length = NameLength(at);
    const std::size_t next = at + kFileRecordSize + length.value_or(0) + 1;
    if (length && MayEndAt(next, at)) {
      Add(at, *length, next);
      return true;
    }
    if (++damagedRecords_ > kMostDamagedRecords) return false;
    const std::optional<std::size_t> sure = NextSureRecord(at);
    if (length && HasCleanName(at) && (!sure || *sure > next + kFileRecordSize + 1)) {
      Add(at, *length, next);  // between it and the sure one there is another, a damaged one
    } else if (sure && *sure <= at + kLongestRecord) {
      Add(at, *sure - 1 - at - kFileRecordSize, *sure);
      Note("the name of " + structure_.members.back().name + " is damaged");
    } else if (sure) {
      Note("a file record is damaged; its file is lost");
      at_ = *sure;
    }
    return sure.has_value();
  }

  /// Whether the record at `at` may end where `next` begins.
  bool MayEndAt(std::size_t next, std::size_t at) {
    if (next == dataAt_) return true;
    if (dataAt_ == kUnknown && structure_.members.size() + 1 == memberCount_) return true;
    return IsPlausible(next, folderCount_) || Follows(next, at) || IsLike(next, at);
  }

  /// Whether a record stands at `next` of whose numbers some are damaged.
  bool IsLike(std::size_t next, std::size_t at) {
    if (!HasCleanName(at) || !HasCleanName(next)) return false;
    const std::size_t behind = next + kFileRecordSize + *NameLength(next) + 1;
    if (behind != dataAt_ && !IsPlausible(behind, kAnyFolder)) return false;
    const bool kind = Get16(At(next + 8)) == Get16(At(at + 8)) && Get16(At(next + 14)) == Get16(At(at + 14));
    return kind || Get32(At(next + 4)) == Get32(At(at)) + Get32(At(at + 4));
  }

  /// The nearest place behind the record at `at` where another one begins for certain.
  std::optional<std::size_t> NextSureRecord(std::size_t at) {
    for (std::size_t p = at + kFileRecordSize + 2; p <= at + 2 * kLongestRecord; ++p) {
      if (Follows(p, at) || IsSureRecord(p)) return p;
    }
    return std::nullopt;
  }

  bool HasCleanName(std::size_t at) {
    const std::optional<std::size_t> length = NameLength(at);
    if (!length || *length == 0) return false;
    const std::uint8_t* const name = At(at + kFileRecordSize);
    return std::none_of(name, name + *length, [](std::uint8_t byte) { return byte < 0x20; });
  }

  /// Whether a record stands there that another one follows, or the data.
  bool IsSureRecord(std::size_t at) {
    if (!IsPlausible(at, folderCount_)) return false;
    const std::size_t next = at + kFileRecordSize + *NameLength(at) + 1;
    return next == dataAt_ || Follows(next, at);
  }

  void Add(std::size_t at, std::size_t length, std::size_t next) {
    const std::uint8_t* const record = At(at);
    const unsigned attributes = Get16(record + 14);
    Member member{{record + kFileRecordSize, record + kFileRecordSize + length},
                  Get32(record),
                  Get32(record + 4),
                  Get16(record + 8),
                  {Get16(record + 10), Get16(record + 12)},
                  static_cast<std::uint8_t>(attributes & kAllAttributes)};
    const bool utf8 = (attributes & kNameIsUtf8) != 0;
    member.nameIsMalformed = utf8 && !IsUtf8(member.name);
    if ((!utf8 && !IsAscii(member.name)) || member.nameIsMalformed) member.name = rules_.codePage(member.name);
    std::replace(member.name.begin(), member.name.end(), '/', '\\');
    structure_.members.push_back(std::move(member));
    at_ = next;
  }

  static constexpr std::size_t kAnyFolder = 0x10000;
  static constexpr std::uint64_t kUnknown = std::numeric_limits<std::uint64_t>::max();

  Beginning& records_;
  Window window_{records_};
  const ReadingRules& rules_;
  RescuedStructure& rescued_;
  Structure& structure_;
  Layout layout_;
  std::size_t filesAt_ = 0;
  std::size_t folderCount_ = 0;
  std::size_t memberCount_ = 0;
  std::uint64_t dataAt_ = kUnknown;  // where the first folder's data begin
  std::size_t at_ = 0;               // of the next record
  int damagedRecords_ = 0;
};

/// Whether members and data follow each other without gaps, as all known writers have it.
bool IsTight(const Structure& structure) {
  const auto first = std::find_if(structure.folders.begin(), structure.folders.end(),
                                  [](const Folder& folder) { return folder.blocks > 0; });
  if (first != structure.folders.end() && first->dataAt != structure.recordsEnd) return false;
  std::vector<std::uint64_t> ends(structure.folders.size());
  for (const Member& member : structure.members) {
    if (member.at != ends[member.folder]) return false;
    ends[member.folder] += member.size;
  }
  return true;
}

}  // namespace

base::Outcome RescueStructure(Source& source, RescuedStructure& rescued, const ReadingRules& rules) {
  rescued = {};
  Outcome read = ReadStructure(source, rescued.structure, rules);
  if (read.IsDone() && (rescued.structure.guarded || IsTight(rescued.structure))) return read;
  const Structure loose = std::move(rescued.structure);  // of another archiver, where the read was done
  Beginning records(source);
  if (MendRecords(records)) {
    rescued.flaws.emplace_back("one byte of its list of files was wrong, and was put right");
    if (ReadStructure(records, rescued.structure, rules).IsDone() && IsTight(rescued.structure)) return Result::Done;
  }
  rescued.structure = {};
  const Outcome tolerated = TolerantReader(records, rules, rescued).Read();
  if (tolerated.IsDone() && !rescued.trusted) FitMembers(rescued);
  if (read.IsDone() && (!tolerated.IsDone() || rescued.flaws.empty())) {
    rescued = {loose, true, {}};
    return read;
  }
  if (rescued.flaws.empty()) rescued.flaws.push_back(read.cause);
  return tolerated;
}

}  // namespace cabinet
