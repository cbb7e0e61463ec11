// Where sets lie: folders whose files are read, on a disk or in the image of a floppy.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/Outcome.h"
#include "cabinet/Source.h"

namespace setcheck {

struct Entry {
  std::string name;  ///< UTF-8
  bool isFolder = false;
  std::uint64_t size = 0;   ///< bytes, of a file
  std::uint32_t start = 0;  ///< where it begins on a floppy
};

/// The entries of a folder, as they were when it was listed; links to folders are none.
class Folder {
 public:
  virtual ~Folder() = default;

  /// The file of this name, letter case apart; null when there is none. Of two the one that is spelt like it.
  const Entry* Find(const std::string& name) const;

  /// The data of one of its files.
  virtual base::Obtained<cabinet::Source> Open(const Entry& file) = 0;

  std::string path;  ///< for people, and for the system where it is one of a disk
  std::vector<Entry> entries;
};

/// Lists the folder `path` of a disk, in the order of names.
base::Obtained<Folder> OpenFolder(const std::string& path);

/// Opens a file, as often as it is called.
using Opener = std::function<base::Obtained<cabinet::Source>()>;

/// Reads the FAT12 disk in the image that `open` opens: the files of its root folder. Fails where it is no such disk.
/// The image is open only while it, or a file in it, is read. `path` is what people call it.
base::Obtained<Folder> OpenFloppy(Opener open, const std::string& path);

/// Bytes of the image of a floppy.
inline constexpr std::uint64_t kFloppySize = 1'474'560;

/// The file `path` of a disk, opened for reading.
base::Obtained<cabinet::Source> OpenFile(const std::string& path);

/// `folder` and a name below it as one path of this system.
std::string Below(const std::string& folder, const std::string& name);

}  // namespace setcheck
