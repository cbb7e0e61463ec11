// Compaction of the host's small Access databases.
#include "access/CompactDatabases.h"

#include <vector>

#include "app/Application.h"
#include "app/External.h"
#include "app/Log.h"
#include "app/TextFormat.h"
#include "app/WindowsPath.h"

namespace operator_access {
namespace {

constexpr auto kLocale = ";LANGID=0x0409;CP=1252;COUNTRY=0";

}  // namespace

void CompactDatabases(app::Application& application, const std::string& folder) {
  const app::CurrentFolderScope scope(application, folder, application.state.StartupDirectory);
  if (!scope.Entered()) return;
  std::vector<host::FolderEntry> entries;
  if (application.host.files.List(folder, "*.mdb", entries) != app::kDone) return;
  for (const host::FolderEntry& entry : entries) {
    if (entry.isFolder) continue;
    CompactDatabase(application, folder, entry.name, kLocale);
    application.host.messageLoop.Yield();
  }
}

void CompactDatabase(app::Application& application, const std::string& folder, const std::string& fileName,
                     const std::string& locale) {
  host::FileSystem& files = application.host.files;
  const std::string base = app::WithTrailingBackslash(app::Trim(folder));
  const std::string source = base + fileName;
  const std::string temporary = base + app::FormatShortStamp(application.host.clock.Now()) + fileName;
  if (application.host.compactor.Compact(source, temporary, locale) != app::kDone) return;
  const auto warn = [&](const std::string& what) {
    app::WriteLog(application, 1, app::LogLevel::Warning, what + temporary);
  };
  // A copy that broke off may have spoilt the database; the compacted one is then all there is.
  if (files.CopyTo(temporary, source) != app::kDone) return warn("Database not replaced; its contents are in: ");
  if (files.ClearAttributes(temporary) != app::kDone || files.RemoveFile(temporary) != app::kDone) {
    warn("Compacted copy not removed: ");
  }
}

}  // namespace operator_access
