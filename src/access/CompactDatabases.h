// Compaction of the host's small Access databases, done at every sign-in.
#pragma once

#include <string>

#include "host/Databases.h"
#include "work/Programs.h"

namespace qx::access {

/// Compacts every "*.mdb" file directly in `folder`, one after the other, serving events in between. `back` is current
/// afterwards. One that cannot be compacted, such as a database in use, is passed over in silence.
void CompactDatabases(const work::Tools& tools, host::DatabaseCompactor& compactor, host::Clock& clock,
                      const std::string& folder, const std::string& back);

/// Compacts one database by way of a temporary file beside it. On any failure nothing is said,
/// the database stays as it was, and the temporary file may remain.
void CompactDatabase(const work::Tools& tools, host::DatabaseCompactor& compactor, host::Clock& clock,
                     const std::string& folder, const std::string& fileName);

}  // namespace qx::access
