// Extracts what can be saved of a damaged cabinet.
#include "cabarc/Salvage.h"

#include <libdeflate.h>

#include <algorithm>
#include <cstring>
#include <tuple>
#include <unordered_set>
#include <utility>

#include "cabarc/Selection.h"
#include "cabinet/Rescue.h"
#include "unpack/Blocks.h"

namespace cabarc {

namespace {

constexpr const char* kPartialSuffix = ".partial";
constexpr std::size_t kLongestPart = 200;  // bytes of a name, which may be lengthened

// The start of a name too long for a file, which only damage makes. It ends where a character does.
std::string Shortened(std::string part) {
  part.resize(kLongestPart);
  while (!IsUtf8(part)) part.pop_back();
  return part;
}

// `name` without anything for which a name is unsafe.
std::string MadeSafe(std::string name) {
  for (char& character : name) {
    const bool bad = static_cast<unsigned char>(character) < 0x20 ||
                     std::string_view("<>:\"|?*/\x7F").find(character) != std::string_view::npos;
    if (bad) character = '_';
  }
  std::string safe;
  for (std::size_t at = 0; at <= name.size();) {
    const std::size_t end = std::min(name.find('\\', at), name.size());
    std::string part = name.substr(at, end - at);
    if (part.size() > kLongestPart) part = Shortened(part);
    if (part.ends_with('.') || part.ends_with(' ')) part.back() = '_';
    if (WhyUnsafe(part) && !part.empty()) part.insert(0, 1, '_');
    if (!part.empty()) safe += (safe.empty() ? "" : "\\") + part;
    at = end + 1;
  }
  return WhyUnsafe(safe) ? "nameless" : safe;
}

// Names under which the members can stand beside each other, whatever damage made of their own.
// True where nothing had to be changed.
bool MakeNamesSafe(std::vector<Wanted>& wanted) {
  bool unchanged = true;
  std::unordered_set<std::string> names;
  for (Wanted& one : wanted) {
    const std::string safe = MadeSafe(one.name);
    std::string name = safe;
    for (int i = 2; !names.insert(platform::FoldName(name)).second; ++i) name = safe + "~" + std::to_string(i);
    unchanged = unchanged && name == one.name;
    one.name = std::move(name);
  }
  for (Wanted& one : wanted) {
    for (std::size_t end = one.name.find('\\'); end != std::string::npos; end = one.name.find('\\', end + 1)) {
      for (; names.contains(platform::FoldName(one.name.substr(0, end))); unchanged = false) {
        one.name.insert(end++, 1, '_');
      }
    }
  }
  return unchanged;
}

// Writes the members of one folder from the parts of its stream that are left.
class SalvageSink {
 public:
  SalvageSink(std::vector<Wanted>::const_iterator first, std::vector<Wanted>::const_iterator last, TargetFolder& target,
              const SalvageOptions& options, Fate whole, SalvageReport& report)
      : next_(first), last_(last), target_(target), options_(options), whole_(whole), report_(report) {}

  // The data at `offset`, which is not before what was taken last.
  Status Take(std::uint64_t offset, const std::uint8_t* data, std::size_t size) {
    const std::uint64_t end = offset + size;
    while (next_ != last_ && next_->member->at < end) {
      const std::uint64_t memberAt = next_->member->at;
      const std::uint64_t memberEnd = memberAt + next_->member->size;
      const std::uint64_t from = std::max(offset, memberAt);
      const std::uint64_t to = std::min(end, memberEnd);
      if (from < to) {
        Status status = Write(from - memberAt, data + (from - offset), static_cast<std::size_t>(to - from));
        if (status.Failed()) return status;
      }
      if (memberEnd > end) break;
      if (Status status = Finish(); status.Failed()) return status;
    }
    return {};
  }

  // To be called after the last data.
  Status End() {
    Status status;
    while (next_ != last_ && !status.Failed()) status = Finish();
    return status;
  }

 private:
  Status Write(std::uint64_t at, const std::uint8_t* data, std::size_t size) {
    if (!options_.look && !file_.IsOpen()) {
      if (Status status = Create(); status.Failed()) return status;
    }
    if (at != written_ + hole_) {
      hole_ = at - written_;
      if (Status status = options_.look ? Status() : file_.Seek(at); status.Failed()) return status;
    }
    written_ += size;
    return options_.look ? Status() : file_.Write(data, size);
  }

  Status Create() {
    Status status = target_.CreateFoldersOf(next_->name);
    return status.Failed() ? status : file_.Create(target_.PathOf(next_->name), next_->member->attributes);
  }

  Status Finish() {
    const std::uint32_t size = next_->member->size;
    Status status;
    if (written_ == size) {
      if (!options_.look) status = CommitWhole();
      ++report_.whole;
      Tell(whole_);
    } else if (written_ > 0) {
      if (options_.partial && !options_.look) status = CommitPartial();
      ++report_.partial;
      Tell(Fate::Partial);
    } else {
      ++report_.lost;
      Tell(Fate::Lost);
    }
    file_.Discard();
    ++next_;
    written_ = hole_ = 0;
    return status;
  }

  Status CommitWhole() {
    Status status;
    if (!file_.IsOpen()) status = Create();
    return status.Failed() ? status : Commit();
  }

  Status Commit() {
    Status status = file_.SetAttributes(next_->member->attributes, next_->member->stamp);
    return status.Failed() ? status : file_.Commit();
  }

  Status CommitPartial() {
    file_.Rename(target_.PathOf(next_->name + kPartialSuffix));
    return Commit();
  }

  void Tell(Fate fate) {
    if (options_.look && fate == Fate::Whole) return;
    report_.members.push_back({fate, next_->name, next_->member->size, written_});
  }

  std::vector<Wanted>::const_iterator next_;  // the member being written, or to come
  const std::vector<Wanted>::const_iterator last_;
  TargetFolder& target_;
  const SalvageOptions& options_;
  const Fate whole_;  // of a member of which nothing is missing
  SalvageReport& report_;
  NewFile file_;
  std::uint64_t written_ = 0;
  std::uint64_t hole_ = 0;  // bytes that are lost before what was written last
};

class Salvager {
 public:
  Salvager(Source& source, const SalvageOptions& options, SalvageReport& report)
      : source_(source), options_(options), report_(report), target_(options.extract.target), window_(source) {}

  Status Run() {
    Status status = Open();
    if (!status.Failed()) status = Select();
    if (!status.Failed() && !options_.look) status = PrepareTarget();
    for (auto first = wanted_.cbegin(); first != wanted_.cend() && !status.Failed();) {
      const auto last = std::find_if(
          first, wanted_.cend(), [first](const Wanted& one) { return one.member->folder != first->member->folder; });
      status = SalvageFolder(first, last);
      first = last;
    }
    return status;
  }

 private:
  Status Open() {
    const base::Outcome read = RescueStructure(source_, rescued_, {platform::FromCodePage});
    if (!read.IsDone()) return BrokenCabinet(read.cause);
    folders_ = RescueBlocks(source_, rescued_);
    for (const std::string& flaw : rescued_.flaws) Warn(flaw);
    for (const RescuedFolder& folder : folders_) {
      if (!folder.damages.empty()) Warn(folder.damages.front().words);
    }
    return {};
  }

  void Warn(const std::string& words) {
    report_.damaged = true;
    report_.warnings.push_back(words);
  }

  Status Select() {
    if (Status status = SelectMembers(rescued_.structure, options_.extract, wanted_); status.Failed()) return status;
    for (const Wanted& one : wanted_) {
      if (one.member->nameIsMalformed) Warn(MalformedName(*one.member).text);
    }
    if (!MakeNamesSafe(wanted_))
      Warn("some of its names are unsafe or not the only ones of their kind; they were changed");
    std::sort(wanted_.begin(), wanted_.end(), [](const Wanted& a, const Wanted& b) {
      return std::tie(a.member->folder, a.member->at, a.member->size) <
             std::tie(b.member->folder, b.member->at, b.member->size);
    });
    return {};
  }

  Status PrepareTarget() {
    Status status = CheckTarget(wanted_, target_, options_.extract.overwrite);
    return status.Failed() ? status : target_.Create();
  }

  Status SalvageFolder(std::vector<Wanted>::const_iterator first, std::vector<Wanted>::const_iterator last) {
    const std::size_t index = first->member->folder;
    const RescuedFolder& folder = folders_[index];
    Fate whole = Fate::Whole;
    if (folder.damages.empty() && !CrcFits(index)) {
      whole = Fate::Doubtful;
      Warn("its data are damaged: they are not those it was written with");
    }
    const Member& lastMember = *std::prev(last)->member;
    const std::uint64_t end = std::uint64_t{lastMember.at} + lastMember.size;
    SalvageSink sink(first, last, target_, options_, whole, report_);
    known_ = 0;
    usesHistory_ = false;
    const Status supported = CheckSupported(folder.method);
    if (supported.Failed()) Warn(supported.text);
    std::uint64_t offset = 0;  // behind the block before
    for (const FoundBlock& block : folder.blocks) {
      if (supported.Failed() || block.offset >= end) break;
      if (block.offset != offset) known_ = 0;
      offset = block.offset + block.header.unpackedSize;
      if (!Unpack(folder, block)) continue;
      if (Status status = sink.Take(block.offset, job_.Data(), block.header.unpackedSize); status.Failed()) {
        return status;
      }
      Remember(block.header.unpackedSize);
    }
    return sink.End();
  }

  // Whether the blocks are those that the folder was written with, where that can be known.
  bool CrcFits(std::size_t index) {
    const Folder& record = rescued_.structure.folders[index];
    const RescuedFolder& folder = folders_[index];
    if (!rescued_.structure.guarded || !rescued_.trusted || folder.blocks.size() != record.blocks) return true;
    std::uint32_t crc = 0;
    for (const FoundBlock& block : folder.blocks) {
      if (!ReadBlock(block)) return true;  // and will be lost
      crc = libdeflate_crc32(crc, job_.blocks.data(), job_.blocks.size());
    }
    return crc == record.crc;
  }

  bool ReadBlock(const FoundBlock& block) {
    const std::size_t size = kBlockHeaderSize + rescued_.structure.blockReserve + block.header.packedSize;
    const std::uint8_t* const bytes = window_.At(block.at, size);
    if (!bytes) return false;
    job_.blocks.assign(bytes, bytes + size);
    Mend(block, job_.blocks.data());
    return true;
  }

  // To job_.Data(). Where it fails, those that refer to the block are lost with it.
  bool Unpack(const RescuedFolder& folder, const FoundBlock& block) {
    if (!ReadBlock(block)) return Forget();
    job_.method = folder.method;
    job_.blockReserve = rescued_.structure.blockReserve;
    job_.allowUnchecked = options_.extract.read.allowUnchecked && !rescued_.structure.guarded;
    job_.history = usesHistory_;
    job_.places = {{0, job_.blocks.size(), block.header.unpackedSize}};
    unpacker_.Run(job_);
    if (job_.states[0] == unpack::BlockState::NeedsHistory) {
      usesHistory_ = true;
      if (history_.Unpack(job_, job_.places[0], job_.Data(), known_)) return true;
    }
    return job_.states[0] == unpack::BlockState::Good || Forget();
  }

  bool Forget() {
    known_ = 0;
    report_.damaged = true;
    return false;
  }

  // The last 32 KB go before the next block's data, which may refer to them.
  void Remember(std::size_t size) {
    std::memmove(job_.unpacked.data(), job_.unpacked.data() + size, kBlockSize);
    known_ = std::min(kBlockSize, known_ + size);
  }

  Source& source_;
  const SalvageOptions& options_;
  SalvageReport& report_;
  TargetFolder target_;
  RescuedStructure rescued_;
  std::vector<RescuedFolder> folders_;
  std::vector<Wanted> wanted_;
  Window window_;
  unpack::UnpackJob job_;
  unpack::BlockUnpacker unpacker_;
  unpack::HistoryUnpacker history_;
  std::size_t known_ = 0;  // bytes before the next block that were unpacked without a gap
  bool usesHistory_ = false;
};

}  // namespace

std::string Told(const SalvagedMember& member) {
  switch (member.fate) {
    case Fate::Whole:
      return "whole    " + member.name;
    case Fate::Doubtful:
      return "doubtful " + member.name + ": a part of its data may be of another cabinet";
    case Fate::Partial:
      return "partial  " + member.name + ": " + std::to_string(member.saved) + " of " + std::to_string(member.size) +
             " bytes";
    case Fate::Lost:
      return "lost     " + member.name + ": its data are damaged";
  }
  return {};
}

Status Salvage(Source& source, const SalvageOptions& options, SalvageReport& report) {
  return Salvager(source, options, report).Run();
}

}  // namespace cabarc
