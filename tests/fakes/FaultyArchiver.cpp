#include "fakes/FaultyArchiver.h"

#include "fakes/CommandLineTools.h"

namespace fakes {
namespace {

constexpr std::size_t kStubSize = 60;

std::string OneFileLess(const std::string& cabinet) {
  CabinetMembers members = ReadCabinetMembers(cabinet).value();
  members.erase(members.begin());
  return MakeCabinetOf(members);
}

// The data stand at the end. No two of the changes are alike: the format's checksum would not see a pair of them.
std::string OtherContent(std::string cabinet) {
  for (std::size_t at = cabinet.size() - cabinet.size() / 8 - 1; at < cabinet.size(); ++at)
    cabinet[at] = static_cast<char>(cabinet[at] ^ static_cast<char>(at | 0x80));
  return cabinet;
}

void Spoil(Disk& disk, const std::string& archive, ArchiveFlaw flaw) {
  const std::string whole = disk.Read(archive);
  switch (flaw) {
    case ArchiveFlaw::Missing:
      disk.Remove(archive);
      return;
    case ArchiveFlaw::Stub:
      disk.Write(archive, std::string(kStubSize, 'x'));
      return;
    case ArchiveFlaw::Half:
      disk.Write(archive, whole.substr(0, whole.size() / 2));
      return;
    case ArchiveFlaw::OneFileLess:
      disk.Write(archive, OneFileLess(whole));
      return;
    case ArchiveFlaw::OtherContent:
      disk.Write(archive, OtherContent(whole));
      return;
  }
}

}  // namespace

ProgramAction FaultyArchiver(ArchiveFlaw flaw, const std::string& archive, std::uint32_t exitCode) {
  return [=](Disk& disk, const Words& words) {
    const std::uint32_t code = RunCabarc(disk, words);
    if (words.size() < 5 || words[3] != "n") return code;
    if (disk.IsFile(words[4]) && (archive.empty() || words[4] == archive)) Spoil(disk, words[4], flaw);
    return exitCode;
  };
}

}  // namespace fakes
