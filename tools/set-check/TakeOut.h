// What an engineer does with a set without a host: takes its files out, or holds them against those that are alive.
#pragma once

#include <string>
#include <vector>

#include "set-check/Disks.h"
#include "set-check/Folder.h"
#include "set-check/SetCheck.h"
#include "set-check/Workstation.h"

namespace setcheck {

/// What came of it: lines for people, and whether all of it is well.
struct Result {
  std::vector<std::string> lines;
  bool well = true;
  bool refused = false;  ///< nothing was begun
};

/// Unpacks each archive of a set into a folder of its name below `target`, which must be empty or not there. Of what is
/// damaged, all that is left comes out: a file of which a part is lost as NAME.partial, with zeros for what is lost.
/// Names that lead out of the folder are changed.
Result UnpackSet(Folder& set, const std::string& target);
/// The same from floppies. The archives themselves come out, too, into "FDDivide".
Result UnpackPile(const Pile& pile, std::int16_t count, const std::string& target);

/// Holds each file that a restore would put below the application's root against the one of that name below `live`,
/// byte for byte.
Result Compare(const Archives& archives, const Workstation& workstation, const std::string& live);

}  // namespace setcheck
