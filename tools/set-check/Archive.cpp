// One archive of a set, looked through.
#include "set-check/Archive.h"

#include <algorithm>
#include <thread>

#include "cabarc/Selection.h"

namespace setcheck {
namespace {

constexpr unsigned kMostThreads = 16;

/// What the archiver would refuse to unpack, for the names of its members. Empty: nothing.
std::string WrongNames(const cabinet::Structure& structure) {
  if (structure.members.empty()) return "it holds no files";
  cabarc::ExtractOptions all;
  all.keepPaths = true;
  std::vector<cabarc::Wanted> wanted;
  cabarc::Status status = cabarc::SelectMembers(structure, all, wanted);
  if (!status.Failed()) status = cabarc::CheckNames(wanted);
  return status.text;
}

/// The files that are whole, and by name those that are not.
void TellFates(cabinet::Source& source, ArchiveState& state) {
  cabarc::SalvageOptions options;
  options.extract.keepPaths = true;
  options.look = true;
  cabarc::SalvageReport report;
  if (cabarc::Salvage(source, options, report).Failed()) return;
  const auto doubtful = std::ranges::count(report.members, cabarc::Fate::Doubtful, &cabarc::SalvagedMember::fate);
  state.whole = report.whole - static_cast<std::size_t>(doubtful);
  state.lost = std::move(report.members);
}

}  // namespace

ArchiveCheck::ArchiveCheck(Progress progress)
    : progress_(std::move(progress)), reader_(std::clamp(std::thread::hardware_concurrency(), 1u, kMostThreads)) {}

ArchiveState ArchiveCheck::Run(cabinet::Source& source, const Look& look) {
  ArchiveState state;
  state.packed = source.Size();
  {
    cabinet::Structure structure;
    const base::Outcome read = cabinet::ReadStructure(source, structure, {cabarc::platform::FromCodePage});
    if (read.IsDone()) {
      state.files = structure.members.size();
      for (const cabinet::Member& member : structure.members) state.bytes += member.size;
      if (std::string wrong = WrongNames(structure); !wrong.empty()) state.damage.push_back(std::move(wrong));
      look(structure);
      Unpack(source, structure, state);
    } else {
      state.damage.push_back(read.cause);
    }
  }
  if (!state.damage.empty()) TellFates(source, state);
  return state;
}

void ArchiveCheck::Unpack(cabinet::Source& source, const cabinet::Structure& structure, ArchiveState& state) {
  const std::vector<std::uint64_t> extents = structure.Extents();
  for (std::size_t i = 0; i < structure.folders.size(); ++i) {
    std::uint64_t got = 0;
    const base::Outcome unpacked =
        reader_.Read(source, structure, i, false, [&](const std::uint8_t*, std::size_t size) {
          got += size;
          progress_(size);
          return true;
        });
    if (!unpacked.IsDone()) {
      state.damage.push_back(unpacked.cause);
    } else if (got < extents[i]) {
      state.damage.push_back("its data are damaged: a part of them is missing");
    }
  }
}

}  // namespace setcheck
