// Floppies: which of them make up a set, and the joined archive that their pieces are.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "backupset/Descriptor.h"
#include "cabinet/Source.h"
#include "cabinet/Structure.h"
#include "set-check/Folder.h"
#include "set-check/NoHost.h"

namespace setcheck {

/// One floppy, or a folder with what stood on one or more.
struct Disk {
  std::unique_ptr<Folder> folder;
  backupset::SetMark mark;
  std::optional<std::int16_t> number;  ///< as its descriptor says
};

Disk ReadDisk(NoHost& noHost, std::unique_ptr<Folder> folder);

/// Disks that may be of one set.
struct Pile {
  std::string path;         ///< where they lie, for people
  std::vector<Disk> disks;  ///< in the order of their numbers
};

/// Takes disks apart by the sets that they say they are of.
std::vector<Pile> SortDisks(std::vector<Disk> disks, const std::string& path);

/// The pieces of a pile's joined archive.
struct Pieces {
  struct Piece {
    Folder* disk = nullptr;  ///< null: it is missing
    const Entry* file = nullptr;
    std::uint64_t size = 0;
  };
  std::vector<Piece> pieces;
  std::vector<std::string> missing;  ///< in words
  std::vector<std::string> odd;      ///< likewise; what need not hinder a restore
};

Pieces FindPieces(const Pile& pile, std::int16_t count);

/// The joined archive; what is missing of it cannot be read.
std::unique_ptr<cabinet::Source> Join(const Pieces& pieces);

/// The data of one member of a cabinet, unpacked as they are read. Both arguments must outlive it.
std::unique_ptr<cabinet::Source> OpenMember(cabinet::Source& cabinet, const cabinet::Structure& structure,
                                            const cabinet::Member& member);

}  // namespace setcheck
