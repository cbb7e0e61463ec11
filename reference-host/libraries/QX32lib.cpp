// QX32lib.dll: reads the system configuration database.

#include "libraries/Calls.h"

namespace {

using namespace reference;

constexpr std::size_t kValueSize = 256;

}  // namespace

extern "C" {

long __stdcall QXSysDBConnect(const char* connection) noexcept {
  return Connect(connection);
}

long __stdcall QXSysDBReadszValue(const char* group, const char* name, char* buffer) noexcept {
  if (!Connection() || !group || !name || !buffer) return kFailed;
  const auto value = Connection()->Setting(windows::FromCodePage(group), windows::FromCodePage(name));
  if (!value) return kFailed;
  FillBuffer(buffer, kValueSize, *value);
  return kDone;
}

long __stdcall QXSysDBClose() noexcept {
  return Disconnect();
}

}  // extern "C"
