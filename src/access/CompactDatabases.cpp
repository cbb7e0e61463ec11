// Compaction of the host's small Access databases.
#include "access/CompactDatabases.h"

#include <optional>
#include <vector>

#include "base/Path.h"
#include "base/Text.h"
#include "work/Programs.h"

namespace qx::access {
namespace {

constexpr char kLocale[] = ";LANGID=0x0409;CP=1252;COUNTRY=0";

/// How a database looks in its folder; nothing when that cannot be had.
std::optional<host::FolderEntry> EntryOf(host::FileSystem& files, const std::string& folder, const std::string& name) {
  std::vector<host::FolderEntry> entries;
  static_cast<void>(files.List(folder, name, entries));
  return entries.size() == 1 ? std::optional(entries.front()) : std::nullopt;
}

bool IsSame(const std::optional<host::FolderEntry>& before, const std::optional<host::FolderEntry>& after) {
  return before && after && before->size == after->size && before->modified == after->modified;
}

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
  const std::optional<host::FolderEntry> before = EntryOf(tools.files, in, fileName);
  base::Outcome replaced = compactor.Compact(source, temporary, kLocale);
  if (!replaced.IsDone()) return;
  replaced = tools.files.Flush(temporary);
  if (replaced.IsDone() && !IsSame(before, EntryOf(tools.files, in, fileName))) {
    replaced = base::Failure("it was written to meanwhile");
  }
  if (replaced.IsDone()) replaced = tools.files.MoveOver(temporary, source);
  if (replaced.IsDone()) return;
  const base::Outcome removed = tools.files.RemoveFile(temporary);
  const std::string words = "Database not replaced: " + source + ": " + replaced.cause;
  tools.log.WriteLog(app::LogLevel::Warning, removed.IsDone() ? words : words + "; not removed: " + temporary);
}

}  // namespace qx::access
