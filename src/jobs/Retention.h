// How many unpacked maintenance folders are kept per client.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/Libraries.h"
#include "work/Tools.h"

namespace jobs {

/// Keeps, of each client's folders "Maintenance_..." in `folder`, as many of the newest as the registry
/// value "ClientLogBackupNumber" says (20 when it cannot be read) and deletes the others. A client is
/// told by a folder's name without its last 13 characters. Fails, with nothing deleted, when a name
/// is shorter than that; a folder that cannot be deleted is logged and passed over.
base::Outcome PruneClientLogBackups(const work::Tools& tools, host::QX32& registry, const std::string& folder);

/// Sorts the first `count` texts in descending order without regard to case. Equal texts may change places.
void SortDescending(std::vector<std::string>& list, std::size_t count);

}  // namespace jobs
