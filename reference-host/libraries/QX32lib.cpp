// QX32lib.dll: reads the system configuration database.
#include <memory>

#include "common/Database.h"
#include "libraries/Buffers.h"
#include "windows/adapters/Text.h"

namespace {

using namespace reference;

constexpr std::size_t kValueSize = 256;

/// The one connection that the library's calls share: its interface hands out no handle.
std::unique_ptr<Database>& Connection() {
  static std::unique_ptr<Database> connection;
  return connection;
}

}  // namespace

extern "C" {

long __stdcall QXSysDBConnect(const char* connection) noexcept {
  if (!connection) return kFailed;
  Connection() = Database::Open(windows::FromCodePage(connection));
  return Connection() ? kDone : kFailed;
}

long __stdcall QXSysDBReadszValue(const char* group, const char* name, char* buffer) noexcept {
  if (!Connection() || !group || !name || !buffer) return kFailed;
  const auto rows = Connection()->Run("SELECT VALUE FROM T_CONFIG WHERE GROUP_NAME = ? AND NAME = ?",
                                      {windows::FromCodePage(group), windows::FromCodePage(name)});
  if (!rows || rows->cells.empty() || !rows->cells[0][0]) return kFailed;
  FillBuffer(buffer, kValueSize, *rows->cells[0][0]);
  return kDone;
}

long __stdcall QXSysDBClose() noexcept {
  if (!Connection()) return kFailed;
  Connection().reset();
  return kDone;
}

}  // extern "C"
