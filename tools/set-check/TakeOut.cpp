// What an engineer does with a set without a host.
#include "set-check/TakeOut.h"

#include <algorithm>
#include <cstring>
#include <thread>
#include <tuple>

#include "backupset/Pieces.h"
#include "cabarc/Platform.h"
#include "cabarc/Salvage.h"
#include "unpack/FolderReader.h"

namespace setcheck {
namespace {

namespace platform = cabarc::platform;

/// Of an archive, or of what is left of one that came out of a joined one.
std::string NameOfArchive(const std::string& file) {
  const std::size_t end = file.rfind(".cab");
  return end == std::string::npos ? std::string() : file.substr(0, end);
}

bool IsEmptyOrMissing(const std::string& folder) {
  std::vector<platform::FolderEntry> entries;
  const platform::Kind kind = platform::KindOf(folder);
  return kind == platform::Kind::Missing ||
         (kind == platform::Kind::Folder && platform::ListFolder(folder, entries) && entries.empty());
}

Result Refusal(const std::string& words) {
  return {{words}, false, true};
}

void UnpackArchive(cabinet::Source& source, const std::string& name, const std::string& target, Result& result) {
  cabarc::SalvageOptions options;
  options.extract.keepPaths = true;
  options.extract.target = target;
  options.partial = true;
  cabarc::SalvageReport report;
  const cabarc::Status status = cabarc::Salvage(source, options, report);
  const bool well = !status.Failed() && !report.damaged && report.partial + report.lost == 0;
  result.lines.push_back(name + ": " + std::to_string(report.whole) + " files whole, " +
                         std::to_string(report.partial) + " partial, " + std::to_string(report.lost) + " lost" +
                         (status.Failed() ? "; " + status.text : ""));
  for (const std::string& warning : report.warnings) result.lines.push_back("  " + warning);
  for (const cabarc::SalvagedMember& member : report.members) {
    if (member.fate != cabarc::Fate::Whole) result.lines.push_back("  " + cabarc::Told(member));
  }
  result.well = result.well && well;
}

void UnpackArchives(Folder& folder, const std::string& target, Result& result) {
  for (const Entry& entry : folder.entries) {
    const std::string name = entry.isFolder ? std::string() : NameOfArchive(entry.name);
    if (name.empty()) continue;
    const auto source = folder.Open(entry);
    if (source) {
      UnpackArchive(*source, entry.name, Below(target, name), result);
    } else {
      result.lines.push_back(entry.name + ": " + source.Why().cause);
      result.well = false;
    }
  }
}

/// Cuts the data of a cabinet's folders into its members, and holds each against a file.
class Comparison {
 public:
  Comparison(const cabinet::Structure& structure, const Workstation& workstation, backupset::Category category,
             const std::string& live, Result& result)
      : workstation_(workstation), category_(category), live_(live), result_(result) {
    for (const cabinet::Member& member : structure.members) members_.push_back(&member);
    std::ranges::sort(members_, {},
                      [](const cabinet::Member* one) { return std::tuple(one->folder, one->at, one->size); });
    next_ = members_.begin();
  }

  /// The next data of the folder of that index, which begin at `at` of its stream.
  void Take(std::size_t folder, std::uint64_t at, const std::uint8_t* data, std::size_t size) {
    for (; next_ != members_.end() && (*next_)->folder == folder; ++next_) {
      const std::uint64_t from = std::max<std::uint64_t>(at, (*next_)->at);
      const std::uint64_t end = std::uint64_t{(*next_)->at} + (*next_)->size;
      const std::uint64_t to = std::min<std::uint64_t>(at + size, end);
      if (from == (*next_)->at && from <= to) Begin(**next_);
      if (from < to) Hold(from - (*next_)->at, data + (from - at), static_cast<std::size_t>(to - from));
      if (end > at + size) return;
      End(**next_);
    }
  }

  std::size_t same = 0;
  std::size_t other = 0;    ///< differ, or are not there
  std::size_t outside = 0;  ///< a restore puts them elsewhere, or nowhere

 private:
  void Begin(const cabinet::Member& member) {
    place_ = workstation_.PlaceOf(category_, member.name);
    why_.clear();
    if (place_.empty()) return;
    auto opened = OpenFile(Below(live_, platform::ToNative(place_)));
    if (!opened) why_ = "is not there";
    if (opened && opened->Size() != member.size) why_ = "has another size";
    file_ = opened.Take();
  }

  void Hold(std::uint64_t at, const std::uint8_t* data, std::size_t size) {
    if (place_.empty() || !why_.empty()) return;
    bytes_.resize(size);
    for (std::size_t have = 0; have < size;) {
      const std::int64_t got = file_->ReadAt(at + have, bytes_.data() + have, size - have);
      if (got <= 0) {
        why_ = "cannot be read";
        return;
      }
      have += static_cast<std::size_t>(got);
    }
    if (std::memcmp(bytes_.data(), data, size) != 0) why_ = "differs";
  }

  void End(const cabinet::Member& member) {
    if (place_.empty()) {
      ++outside;
    } else if (why_.empty()) {
      ++same;
    } else {
      ++other;
      result_.lines.push_back("  " + place_ + " " + why_ + " (" + member.name + ")");
    }
    file_.reset();
  }

  const Workstation& workstation_;
  const backupset::Category category_;
  const std::string& live_;
  Result& result_;
  std::vector<const cabinet::Member*> members_;
  std::vector<const cabinet::Member*>::const_iterator next_;
  std::string place_;  // of the member at next_; empty: nowhere
  std::string why_;    // what differs
  std::unique_ptr<cabinet::Source> file_;
  std::vector<std::uint8_t> bytes_;
};

base::Outcome CompareArchive(cabinet::Source& source, unpack::FolderReader& reader, const Workstation& workstation,
                             const std::string& name, const std::string& live, Result& result) {
  cabinet::Structure structure;
  const base::Outcome read = cabinet::ReadStructure(source, structure, {platform::FromCodePage});
  if (!read.IsDone()) return read;
  Comparison comparison(structure, workstation, *CategoryOf(name), live, result);
  for (std::size_t i = 0; i < structure.folders.size(); ++i) {
    std::uint64_t at = 0;
    comparison.Take(i, 0, nullptr, 0);  // files without a byte
    const base::Outcome unpacked = reader.Read(source, structure, i, false, [&](const auto* data, std::size_t size) {
      comparison.Take(i, at, data, size);
      at += size;
      return true;
    });
    if (!unpacked.IsDone()) return unpacked;
  }
  result.lines.push_back(name + ": " + std::to_string(comparison.same) + " files are the same, " +
                         std::to_string(comparison.other) + " differ or are not there, " +
                         std::to_string(comparison.outside) + " go elsewhere");
  result.well = result.well && comparison.other == 0;
  return base::Result::Done;
}

}  // namespace

Result UnpackSet(Folder& set, const std::string& target) {
  if (!IsEmptyOrMissing(target)) return Refusal(target + " is no empty folder");
  Result result;
  UnpackArchives(set, target, result);
  return result;
}

Result UnpackPile(const Pile& pile, std::int16_t count, const std::string& target) {
  if (!IsEmptyOrMissing(target)) return Refusal(target + " is no empty folder");
  Result result;
  const std::string archives = Below(target, backupset::kJoinedArchiveName);
  UnpackArchive(*Join(FindPieces(pile, count)), backupset::kJoinedArchive, archives, result);
  const auto folder = OpenFolder(archives);
  if (folder) UnpackArchives(*folder, target, result);
  return result;
}

Result Compare(const Archives& archives, const Workstation& workstation, const std::string& live) {
  if (platform::InfoOf(live).kind != platform::Kind::Folder) return Refusal(live + " is no folder");
  Result result;
  unpack::FolderReader reader(std::max(1u, std::thread::hardware_concurrency()));
  for (const std::string& name : archives.names) {
    if (!CategoryOf(name)) continue;
    const auto source = archives.open(name);
    const base::Outcome compared =
        source ? CompareArchive(*source, reader, workstation, name, live, result) : source.Why();
    if (compared.IsDone()) continue;
    result.lines.push_back(name + ": " + compared.cause);
    result.well = false;
  }
  return result;
}

}  // namespace setcheck
