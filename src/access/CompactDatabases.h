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

/// Compacts one database by way of a temporary file beside it. One that cannot be compacted stays as it was, without a
/// word. Where the compacted file cannot take its place or cannot be deleted, it stays beside it, and a warning in the
/// log names it; the operator is told nothing either way.
void CompactDatabase(const work::Tools& tools, host::DatabaseCompactor& compactor, host::Clock& clock,
                     const std::string& folder, const std::string& fileName);

}  // namespace qx::access
