// What a restore looks at before it replaces anything: whether the archives are whole, and whether there is room.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "backupset/CabinetCheck.h"
#include "backupset/Categories.h"
#include "host/FileSystem.h"
#include "restore/RestoreActions.h"

namespace restore {

/// The archive of one category that is to be restored.
struct ArchiveAhead {
  backupset::Category category{};
  std::string path;
  std::uint64_t size = 0;        ///< bytes
  backupset::FileSizes members;  ///< unpacked
};

/// Finds the archive of each category in `folder`, which ends in "\", plans what will be done with them for the job's
/// progress, and walks each to its end. Fails for the first that is missing, then for one that is damaged. `copied`: an
/// archive would be copied from there, and what fails first when it is missing is a step (message 60421).
base::Outcome WalkArchives(const work::Tools& tools, const std::string& folder, bool copied,
                           const std::vector<backupset::Category>& categories, std::vector<ArchiveAhead>& archives);

/// Where the members of an archive go whose paths begin with `head`; a head that is no folder is one member's whole
/// path, or a pattern of names.
struct Target {
  std::string head;
  std::string place;
};

/// The targets of a loaded section, as RestoreActions has them. An item that cannot be expanded is told there, and has
/// none.
std::vector<Target> TargetsOf(const app::PathTable& paths, const jobs::JobDefinitions& definitions,
                              const std::string& applicationRoot, const std::string& section);

/// Where a member goes by this target; empty when it does not.
std::string PlaceOf(const std::string& member, const Target& target);

/// Whether the drives have room for what these archives hold: below the work folder one after the other, and where the
/// items of the loaded restore sections put it, less what is replaced there. `copied`: each archive is copied into the
/// work folder, too. What no item names is not put back, and needs no room there.
base::Outcome CheckRoom(const Putting& putting, host::Drives& drives, const std::vector<ArchiveAhead>& archives,
                        bool copied);

}  // namespace restore
