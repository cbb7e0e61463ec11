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
        if (!TakeImage(path, disks)) finder_.Unreadable(path, "it is no floppy of a set");
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
      if (!entry.isFolder && entry.size == kFloppySize) TakeImage(Below(path, entry.name), here);
    }
    const Found found = WhatIs(noHost_, *folder);
    if (found == Found::Set) finder_.FoundSet(*folder);
    auto listed = folder.Take();
    if (found == Found::Disk) disks.push_back(ReadDisk(noHost_, std::move(listed)));
    listed.reset();                                           // not needed while the folders below it are looked at
    const bool pile = depth == 0 && found == Found::Nothing;  // its disks may lie side by side
    if (below_ || pile) LookInside(path, inside, depth + 1, here);
    TellPiles(std::move(here), path);
  }

  void LookInside(const std::string& path, const std::vector<std::string>& inside, int depth,
                  std::vector<Disk>& disks) {
    if (depth > kDeepest && !inside.empty()) return finder_.Unreadable(path, "it is too deep");
    for (const std::string& one : inside) Look(one, depth, disks);
  }

  /// Whether the file is the image of a floppy of a set, or cannot be looked into, which is told.
  bool TakeImage(const std::string& path, std::vector<Disk>& disks) {
    auto floppy = OpenFloppy([path] { return OpenFile(path); }, path);
    if (!floppy) {
      finder_.Unreadable(path, floppy.Why().cause);
      return true;
    }
    const Found found = WhatIs(noHost_, *floppy);
    if (found == Found::Set) finder_.FoundSet(*floppy);
    if (found == Found::Disk) disks.push_back(ReadDisk(noHost_, floppy.Take()));
    return found != Found::Nothing;
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
