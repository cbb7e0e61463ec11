// Makes floppies of a backup set, natively, by the program's own cutter and
// descriptor format: one folder a disk.
//
//   floppy-set SET_FOLDER TARGET_FOLDER
//
// SET_FOLDER holds FDDivide.cab, the set's archives joined by the archiver, and
// the set's BackupInfo.ini. Prints the number of disks.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "backupset/Pieces.h"
#include "fakes/FakeHost.h"

namespace {

namespace fs = std::filesystem;

std::string Read(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void Write(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// The set's descriptor, as it stands on one disk of the pile.
std::string Descriptor(const std::string& set, std::int32_t count, std::int32_t number) {
  const std::size_t from = set.find("CABFile=");
  const std::size_t to = set.find("\r\n", from) + 2;
  return set.substr(0, from) + "CABFile=FDDivide.cab;\r\nFDCount=" + std::to_string(count) +
         "\r\nFDNumber=" + std::to_string(number) + "\r\n" + set.substr(to);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: floppy-set SET_FOLDER TARGET_FOLDER\n";
    return 2;
  }
  const fs::path set = argv[1];
  const fs::path target = argv[2];
  const std::string joined = Read(set / "FDDivide.cab");
  fakes::FakeHost host;
  host.disk.AddDrive('C', "", 1 << 30);
  host.disk.Write("C:\\CABFILE\\FDDivide.cab", joined);
  const auto size = static_cast<std::uint32_t>(joined.size());
  const base::Outcome split = backupset::SplitArchive(host.files, host.messageLoop, "C:\\CABFILE\\", size);
  if (!split.IsDone()) {
    std::cerr << "floppy-set: the joined archive cannot be cut: " << split.cause << '\n';
    return 1;
  }
  const auto count = static_cast<std::int32_t>(backupset::FloppyDiskCount(size));
  for (std::int32_t number = 1; number <= count; ++number) {
    const fs::path disk = target / std::to_string(number);
    fs::create_directories(disk);
    Write(disk / backupset::PieceName(number), host.disk.Read("C:\\CABFILE\\" + backupset::PieceName(number)));
    Write(disk / "BackupInfo.ini", Descriptor(Read(set / "BackupInfo.ini"), count, number));
  }
  std::cout << count << '\n';
}
