// The format: a header, the folders, the files, and the data of each folder in blocks. A folder is one stream, in which
// its files lie end to end. Numbers have their lowest byte first.
#include "fakes/Cabinet.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace fakes {
namespace {

constexpr std::string_view kSignature = "MSCF";
constexpr std::uint32_t kVersion = 0x0103;
constexpr std::size_t kBlockSize = 32768;

constexpr std::uint32_t kHasReserve = 4;
// Areas that a cabinet reserves for its writer, behind the header and behind each folder; the host's archiver keeps
// check figures there. Nobody else knows what they hold.
constexpr std::string_view kHeaderReserve = "reserved";
constexpr std::string_view kFolderReserve = "area";

constexpr std::uint32_t kDiskAttributes = 0x07;
constexpr std::uint32_t kArchive = 0x20;
constexpr std::uint32_t kNameIsUtf8 = 0x80;

// A disk counts in 100 ns, a cabinet in pairs of seconds and in the fields of a calendar: so many of the one below
// each.
constexpr std::uint64_t kTicksPerPair = 20'000'000;
constexpr std::uint64_t kPairs = 30, kMinutes = 60, kHours = 24, kDays = 28, kMonths = 12;
constexpr std::uint64_t kFirstYear = 32;  // 2012, counted from 1980

std::string Number(std::uint64_t number, int width) {
  std::string bytes;
  for (; width > 0; --width, number >>= 8) bytes += static_cast<char>(number & 0xFF);
  return bytes;
}

bool IsAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string Stamp(std::uint64_t modified) {
  std::uint64_t rest = modified / kTicksPerPair;
  const auto take = [&](std::uint64_t count) {
    const std::uint64_t field = rest % count;
    rest /= count;
    return field;
  };
  const std::uint64_t pair = take(kPairs), minute = take(kMinutes), hour = take(kHours);
  const std::uint64_t day = take(kDays), month = take(kMonths);
  return Number((kFirstYear + rest) << 9 | (month + 1) << 5 | (day + 1), 2) +
         Number(hour << 11 | minute << 5 | pair, 2);
}

std::uint64_t Modified(std::uint32_t date, std::uint32_t time) {
  const std::uint64_t months = ((date >> 9) - kFirstYear) * kMonths + (date >> 5 & 0xF) - 1;
  const std::uint64_t hours = (months * kDays + (date & 0x1F) - 1) * kHours + (time >> 11);
  return ((hours * kMinutes + (time >> 5 & 0x3F)) * kPairs + (time & 0x1F)) * kTicksPerPair;
}

std::uint32_t NumberIn(std::string_view bytes) {
  std::uint32_t number = 0;
  for (std::size_t i = bytes.size(); i > 0; --i) number = number << 8 | static_cast<unsigned char>(bytes[i - 1]);
  return number;
}

// Words of four bytes combined by exclusive or; what is left over counts with its first byte highest. Eight bytes a
// step: some tests' cabinets have megabytes.
std::uint32_t Checksum(std::string_view bytes, std::uint32_t seed) {
  std::uint64_t lanes = 0;
  const std::size_t whole = bytes.size() / 8 * 8;
  for (std::size_t at = 0; at < whole; at += 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data() + at, 8);
    lanes ^= word;
  }
  const std::string both = Number(lanes, 8);
  std::uint32_t sum = seed ^ NumberIn(both.substr(0, 4)) ^ NumberIn(both.substr(4));
  bytes.remove_prefix(whole);
  for (; bytes.size() >= 4; bytes.remove_prefix(4)) sum ^= NumberIn(bytes.substr(0, 4));
  std::uint32_t rest = 0;
  for (const char c : bytes) rest = rest << 8 | static_cast<unsigned char>(c);
  return sum ^ rest;
}

// The sizes count, too, on top of the data.
std::uint32_t BlockChecksum(std::string_view sizes, std::string_view data) {
  return Checksum(sizes, Checksum(data, 0));
}

std::string Blocks(std::string_view stream) {
  std::string blocks;
  blocks.reserve(stream.size() + (stream.size() / kBlockSize + 1) * 8);
  for (; !stream.empty(); stream.remove_prefix(std::min(kBlockSize, stream.size()))) {
    const std::string_view data = stream.substr(0, kBlockSize);
    const std::string sizes = Number(data.size(), 2) + Number(data.size(), 2);
    blocks.append(Number(BlockChecksum(sizes, data), 4)).append(sizes).append(data);
  }
  return blocks;
}

/// Takes a cabinet apart from its head to its end. A step that meets something wrong says so.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : size_(bytes.size()), rest_(bytes) {}

  std::optional<CabinetMembers> Read() {
    const bool whole = ReadHeader() && ReadFolders() && ReadFiles() && ReadBlocks() && rest_.empty() && FillMembers();
    return whole ? std::optional(std::move(members_)) : std::nullopt;
  }

 private:
  struct Folder {
    std::size_t dataAt;
    std::size_t blocks;
    std::string stream;
    std::size_t claimed = 0;  ///< bytes that its files say that they have
  };
  struct File {
    std::size_t size;
    std::size_t folder;
  };

  std::size_t At() const { return size_ - rest_.size(); }
  // What is not there makes the whole thing unreadable.
  std::string_view Take(std::size_t count) {
    missing_ = missing_ || count > rest_.size();
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(taken.size());
    return taken;
  }
  std::uint32_t TakeNumber(std::size_t width) { return NumberIn(Take(width)); }

  bool ReadHeader() {
    const bool begins = Take(4) == kSignature && TakeNumber(4) == 0 && TakeNumber(4) == size_ && TakeNumber(4) == 0;
    filesAt_ = TakeNumber(4);
    if (!begins || TakeNumber(4) != 0 || TakeNumber(2) != kVersion) return false;
    folders_.resize(TakeNumber(2));
    files_.resize(TakeNumber(2));
    const std::uint32_t flags = TakeNumber(2);
    Take(4);  // the set's number, and this cabinet's in it
    if (flags == kHasReserve) {
      const std::size_t reserve = TakeNumber(2);
      folderReserve_ = TakeNumber(1);
      blockReserve_ = TakeNumber(1);
      Take(reserve);
    }
    return !missing_ && (flags == 0 || flags == kHasReserve);
  }

  bool ReadFolders() {
    for (Folder& folder : folders_) {
      folder.dataAt = TakeNumber(4);
      folder.blocks = TakeNumber(2);
      if (TakeNumber(2) != 0) return false;  // packed
      Take(folderReserve_);
    }
    return !missing_ && At() == filesAt_;
  }

  bool ReadFiles() {
    for (File& file : files_) {
      file.size = TakeNumber(4);
      const std::size_t at = TakeNumber(4);
      file.folder = TakeNumber(2);
      if (file.folder >= folders_.size() || at != folders_[file.folder].claimed) return false;
      folders_[file.folder].claimed += file.size;
      const std::uint32_t date = TakeNumber(2);
      const std::uint32_t time = TakeNumber(2);
      const std::uint32_t attributes = TakeNumber(2);
      const std::string_view path = Take(std::min(rest_.find('\0'), rest_.size()));
      if (Take(1).empty() || path.empty() || path.size() > kLongestMemberPath) return false;
      if (((attributes & kNameIsUtf8) != 0) == IsAscii(path)) return false;
      members_.push_back({std::string(path), {}, attributes & kDiskAttributes, Modified(date, time)});
    }
    return !missing_ && !files_.empty();
  }

  bool ReadBlocks() {
    for (Folder& folder : folders_) {
      if (folder.dataAt != At()) return false;
      for (std::size_t left = folder.blocks; left > 0; --left)
        if (!ReadBlock(folder.stream, left == 1)) return false;
      if (folder.stream.size() != folder.claimed) return false;
    }
    return !missing_;
  }

  // Only the last one of a folder may be short.
  bool ReadBlock(std::string& stream, bool isLast) {
    const std::uint32_t checksum = TakeNumber(4);
    const std::string_view sizes = Take(4);
    Take(blockReserve_);
    if (missing_) return false;
    const std::size_t size = NumberIn(sizes.substr(0, 2));
    const std::string_view data = Take(size);
    stream.append(data);
    const bool sized = size > 0 && size <= kBlockSize && (isLast || size == kBlockSize);
    return !missing_ && sized && NumberIn(sizes.substr(2)) == size && BlockChecksum(sizes, data) == checksum;
  }

  bool FillMembers() {
    std::vector<std::size_t> at(folders_.size());
    for (std::size_t i = 0; i < files_.size(); ++i) {
      const File& file = files_[i];
      members_[i].bytes = folders_[file.folder].stream.substr(at[file.folder], file.size);
      at[file.folder] += file.size;
    }
    return true;
  }

  const std::size_t size_;
  std::string_view rest_;
  bool missing_ = false;
  std::size_t filesAt_ = 0;
  std::size_t folderReserve_ = 0;
  std::size_t blockReserve_ = 0;
  std::vector<Folder> folders_;
  std::vector<File> files_;
  CabinetMembers members_;
};

}  // namespace

std::string MakeCabinet(const CabinetContents& contents) {
  CabinetMembers members;
  for (const auto& [path, bytes] : contents) members.push_back({path, bytes});
  return MakeCabinetOf(members);
}

std::string MakeCabinetOf(const CabinetMembers& members) {
  std::string files;
  std::string stream;
  for (const CabinetMember& member : members) {
    const std::uint32_t attributes =
        (member.attributes & kDiskAttributes) | kArchive | (IsAscii(member.path) ? 0u : kNameIsUtf8);
    files += Number(member.bytes.size(), 4) + Number(stream.size(), 4) + Number(0, 2) + Stamp(member.modified) +
             Number(attributes, 2) + member.path + '\0';
    stream += member.bytes;
  }
  const std::string blocks = Blocks(stream);
  const std::size_t filesAt = 36 + 4 + kHeaderReserve.size() + 8 + kFolderReserve.size();
  const std::size_t dataAt = filesAt + files.size();
  std::string cabinet(kSignature);
  cabinet += Number(0, 4) + Number(dataAt + blocks.size(), 4) + Number(0, 4) + Number(filesAt, 4) + Number(0, 4) +
             Number(kVersion, 2) + Number(1, 2) + Number(members.size(), 2) + Number(kHasReserve, 2) + Number(0, 4);
  cabinet += Number(kHeaderReserve.size(), 2) + Number(kFolderReserve.size(), 1) + Number(0, 1);
  cabinet.append(kHeaderReserve);
  cabinet += Number(dataAt, 4) + Number((stream.size() + kBlockSize - 1) / kBlockSize, 2) + Number(0, 2);
  cabinet.append(kFolderReserve).append(files).append(blocks);
  return cabinet;
}

std::optional<CabinetMembers> ReadCabinetMembers(const std::string& bytes) {
  return Reader(bytes).Read();
}

std::optional<CabinetContents> ReadCabinet(const std::string& bytes) {
  const auto members = ReadCabinetMembers(bytes);
  if (!members) return std::nullopt;
  CabinetContents contents;
  for (const CabinetMember& member : *members) contents[member.path] = member.bytes;
  return contents;
}

}  // namespace fakes
