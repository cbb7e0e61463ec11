// Compacts one database file into another, which must not exist yet.
#include "data-access/Classes.h"

#include <windows.h>

#include <memory>

#include "windows/adapters/Text.h"

namespace dataaccess {

namespace {

enum : DISPID { kCompactDatabase = 1 };

constexpr Member kMembers[] = {{L"CompactDatabase", kCompactDatabase, DISPATCH_METHOD, 2, 5}};

bool Exists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

/// Whether any program has the file open, be it for reading.
bool IsInUse(const std::wstring& path) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return true;
  CloseHandle(file);
  return false;
}

/// Locks the database against every other connection. With this mode the lock of the empty transaction stays until the
/// connection closes.
bool Lock(reference::Database& database) {
  return database.Run("PRAGMA locking_mode = EXCLUSIVE") && database.Run("BEGIN EXCLUSIVE") && database.Run("COMMIT");
}

Outcome Compact(const std::string& source, const std::string& target) {
  const std::wstring sourceFile = windows::Utf16(source), targetFile = windows::Utf16(target);
  if (!Exists(sourceFile)) return kFileMissing;
  if (Exists(targetFile)) return kFileExists;
  if (IsInUse(sourceFile)) return kFileInUse;
  const auto database = reference::Database::Open("DRIVER=SQLite3;Timeout=250;Database=" + source);
  if (!database) return kNotADatabase;
  if (!database->Run("PRAGMA schema_version")) return kNotADatabase;
  if (!Lock(*database)) return kFileInUse;
  if (database->Run("VACUUM INTO ?", {target})) return {};
  // Half a database is worse than none.
  DeleteFileW(targetFile.c_str());
  return kNotADatabase;
}

}  // namespace

DatabaseEngine::DatabaseEngine() : AutomationObject(kMembers) {}

// The locale and what follows it are taken and not used: these databases have no sort order of their own.
Outcome DatabaseEngine::Call(DISPID, bool, const Arguments& arguments, VARIANT&) {
  std::string source, target;
  if (!arguments.Text(0, source) || !arguments.Text(1, target) || source.empty() || target.empty()) return kBadArgument;
  return Compact(source, target);
}

}  // namespace dataaccess
