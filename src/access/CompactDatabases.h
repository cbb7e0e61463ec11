// Compaction of the host's small Access databases, done at every sign-in.
#pragma once

#include <string>

#include "host/Databases.h"
#include "work/Programs.h"

namespace qx::access {

/// Compacts every "*.mdb" file directly in `folder`, one after the other, serving events in between. `back` is current
/// afterwards. One that cannot be compacted, such as a database in use, is passed over, and so is a folder that cannot
/// be read: the host works with them as they are.
void CompactDatabases(const work::Tools& tools, host::DatabaseCompactor& compactor, host::Clock& clock,
                      const std::string& folder, const std::string& back);

/// Compacts one database by way of a temporary file beside it, which takes its place in one step once it has reached
/// the disk: a power cut leaves the one or the other. A database that cannot be compacted stays as it was, without a
/// word, and so does one that was written to meanwhile or cannot be replaced, with a warning in the log; the temporary
/// file goes.
void CompactDatabase(const work::Tools& tools, host::DatabaseCompactor& compactor, host::Clock& clock,
                     const std::string& folder, const std::string& fileName);

}  // namespace qx::access
