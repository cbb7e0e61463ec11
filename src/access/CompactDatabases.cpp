// Compaction of the host's small Access databases.
#include "access/CompactDatabases.h"

#include <vector>

#include "base/Path.h"
#include "base/Text.h"
#include "work/Programs.h"

namespace qx::access {
namespace {

constexpr char kLocale[] = ";LANGID=0x0409;CP=1252;COUNTRY=0";

}  // namespace

void CompactDatabases(const work::Tools& tools, host::DatabaseCompactor& compactor, host::Clock& clock,
                      const std::string& folder, const std::string& back) {
  const work::CurrentFolderScope scope(tools.files, folder, back);
  if (!scope.Entered().IsDone()) return;
  std::vector<host::FolderEntry> entries;
  if (!tools.files.List(folder, "*.mdb", entries).IsDone()) return;
  for (const host::FolderEntry& entry : entries) {
    if (entry.isFolder) continue;
    CompactDatabase(tools, compactor, clock, folder, entry.name);
    tools.messageLoop.Yield();
  }
}

void CompactDatabase(const work::Tools& tools, host::DatabaseCompactor& compactor, host::Clock& clock,
                     const std::string& folder, const std::string& fileName) {
  const std::string in = base::WithTrailingBackslash(base::Trim(folder));
  const std::string source = in + fileName;
  const std::string temporary = in + base::FormatShortStamp(clock.Now()) + fileName;
  if (!compactor.Compact(source, temporary, kLocale).IsDone()) return;
  const auto warn = [&](const std::string& what) { tools.log.WriteLog(app::LogLevel::Warning, what + temporary); };
  // A copy that broke off may have spoilt the database; the compacted one is then all there is.
  if (!tools.files.CopyTo(temporary, source).IsDone()) return warn("Database not replaced; its contents are in: ");
  if (!tools.files.RemoveFile(temporary).IsDone()) {
    warn("Compacted copy not removed: ");
  }
}

}  // namespace qx::access
