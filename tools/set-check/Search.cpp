// Finds sets.
#include "set-check/Search.h"

#include <utility>

#include "cabarc/Platform.h"
#include "set-check/SetCheck.h"

namespace setcheck {
namespace {

/// Folders below folders, at most: a path cannot be much deeper.
constexpr int kDeepest = 100;

class Searching {
 public:
  Searching(NoHost& noHost, bool below, Finder& finder) : noHost_(noHost), below_(below), finder_(finder) {}

  void Paths(const std::vector<std::string>& paths) {
    std::vector<Disk> disks;
    for (const std::string& path : paths) {
      if (cabarc::platform::InfoOf(path).kind == cabarc::platform::Kind::File) {
        Image(
            path, [path] { return OpenFile(path); }, disks);
      } else {
        Look(path, 0, disks);
      }
    }
    TellPiles(std::move(disks), paths.size() == 1 ? paths.front() : "the floppies that were named");
  }

 private:
  /// `disks` takes the folder where it is a floppy of the pile that it lies in.
  void Look(const std::string& path, int depth, std::vector<Disk>& disks) {
    auto folder = OpenFolder(path);
    if (!folder) return finder_.Unreadable(path, folder.Why().cause);
    std::vector<std::string> inside;
    std::vector<Disk> here;
    for (const Entry& entry : folder->entries) {
      if (entry.isFolder) inside.push_back(Below(path, entry.name));
    }
    const Found found = WhatIs(noHost_, *folder);
    if (found == Found::Set) finder_.FoundSet(*folder);
    if (below_ || found == Found::Nothing) Images(*folder, here);
    if (found == Found::Disk) {
      disks.push_back(ReadDisk(noHost_, folder.Take()));
    } else {
      folder = base::Obtained<Folder>(base::Result::Stopped);  // not needed while the folders below it are looked at
    }
    const bool pile = !below_ && depth == 0 && found == Found::Nothing;  // the disks of one pile, side by side
    if (depth == kDeepest && !inside.empty()) finder_.Unreadable(path, "it is too deep");
    if ((below_ || pile) && depth < kDeepest) {
      for (const std::string& one : inside) Look(one, depth + 1, here);
    }
    TellPiles(std::move(here), path);
  }

  void Images(Folder& folder, std::vector<Disk>& disks) {
    for (const Entry& entry : folder.entries) {
      if (entry.isFolder || entry.size != kFloppySize) continue;
      const std::string path = Below(folder.path, entry.name);
      Image(
          path, [path] { return OpenFile(path); }, disks);
    }
  }

  void Image(const std::string& path, Opener open, std::vector<Disk>& disks) {
    auto floppy = OpenFloppy(std::move(open), path);
    if (!floppy) return finder_.Unreadable(path, floppy.Why().cause);
    if (WhatIs(noHost_, *floppy) == Found::Disk) {
      disks.push_back(ReadDisk(noHost_, floppy.Take()));
    } else if (floppy->Find(backupset::kDescriptorFile)) {
      finder_.FoundSet(*floppy);
    } else {
      finder_.Unreadable(path, "it is no floppy of a set");
    }
  }

  void TellPiles(std::vector<Disk> disks, const std::string& path) {
    for (const Pile& pile : SortDisks(std::move(disks), path)) finder_.FoundPile(pile);
  }

  NoHost& noHost_;
  const bool below_;
  Finder& finder_;
};

}  // namespace

void Search(NoHost& noHost, const std::vector<std::string>& paths, bool below, Finder& finder) {
  Searching(noHost, below, finder).Paths(paths);
}

}  // namespace setcheck
