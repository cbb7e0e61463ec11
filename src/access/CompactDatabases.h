// Compaction of the host's small Access databases, done at every sign-in.
#pragma once

#include <string>

namespace app {
class Application;
}

namespace operator_access {

/// Compacts every "*.mdb" file directly in `folder`, one after the other, serving events in
/// between, and makes `StartupDirectory` current again. One that cannot be compacted, such as a
/// database in use, is passed over in silence.
void CompactDatabases(app::Application& application, const std::string& folder);

/// Compacts one database by way of a temporary file beside it. On any failure nothing is said,
/// the database stays as it was, and the temporary file may remain.
void CompactDatabase(app::Application& application, const std::string& folder, const std::string& fileName,
                     const std::string& locale);

}  // namespace operator_access
