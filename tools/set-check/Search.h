// Finds sets: what a path names, and what lies below it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "set-check/Disks.h"
#include "set-check/Folder.h"
#include "set-check/NoHost.h"

namespace setcheck {

/// Takes what is found, one by one, so that nothing of it has to stay in memory.
class Finder {
 public:
  virtual ~Finder() = default;
  virtual void FoundSet(Folder& folder) = 0;
  virtual void FoundPile(const Pile& pile) = 0;
  /// A place that could not be looked into.
  virtual void Unreadable(const std::string& path, const std::string& why) = 0;
};

/// Looks at each path: a folder, or the image of a floppy. `below`: into folders below it, too, but not through links.
/// Floppies that lie side by side, or are all named, make piles.
void Search(NoHost& noHost, const std::vector<std::string>& paths, bool below, Finder& finder);

}  // namespace setcheck
