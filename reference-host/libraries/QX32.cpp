// QX32.dll: the path table and the host's part of the registry.
#include <windows.h>

#include <string_view>

#include "libraries/Calls.h"

namespace {

using namespace reference;

// Sizes of the callers' buffers, which the calls do not carry.
constexpr std::size_t kPathEntrySize = 512;
constexpr std::size_t kSystemEntrySize = 256;
constexpr std::size_t kRegistryTextSize = 256;
constexpr std::size_t kHostNameSize = 16;
constexpr std::size_t kSoftwareVersionSize = 128;

/// Callers reserve less for the system database's connection than for the other entries.
std::size_t EntrySize(std::string_view name) {
  return name == "SysMasterDB" ? kSystemEntrySize : kPathEntrySize;
}

}  // namespace

extern "C" {

long __stdcall QXGetString(const char* name, char* buffer) noexcept {
  if (!name || !buffer) return kFailed;
  const auto value = ReadPathEntry(windows::FromCodePage(name));
  if (!value) return kFailed;
  FillBuffer(buffer, EntrySize(name), *value);
  return kDone;
}

long __stdcall QXRegGetKeySZ(const char* name, char* buffer) noexcept {
  if (!name || !buffer) return kFailed;
  const auto value = ReadRegistryText(windows::FromCodePage(name));
  if (!value) return kFailed;
  FillBuffer(buffer, kRegistryTextSize, *value);
  return kDone;
}

long __stdcall QXRegGetKeyDWORD(const char* name, unsigned long* number) noexcept {
  if (!name || !number) return kFailed;
  const auto value = ReadRegistryNumber(windows::FromCodePage(name));
  if (!value) return kFailed;
  *number = *value;
  return kDone;
}

long __stdcall QXRegSetKeySZ(const char* name, const char* value) noexcept {
  if (!name || !value) return kFailed;
  return WriteRegistryText(windows::FromCodePage(name), windows::FromCodePage(value)) ? kDone : kFailed;
}

long __stdcall QXRegSetKeyDWORD(const char* name, unsigned long value) noexcept {
  if (!name) return kFailed;
  return WriteRegistryNumber(windows::FromCodePage(name), value) ? kDone : kFailed;
}

long __stdcall QXGetHostname(char* buffer) noexcept {
  wchar_t name[MAX_COMPUTERNAME_LENGTH + 1] = {};
  DWORD size = MAX_COMPUTERNAME_LENGTH + 1;
  if (!buffer || !GetComputerNameW(name, &size)) return kFailed;
  FillBuffer(buffer, kHostNameSize, windows::Utf8(name));
  return kDone;
}

long __stdcall QXGetSoftwareVersion(char* buffer) noexcept {
  if (!buffer) return kFailed;
  const auto version = ReadRegistryText("SoftwareVersion");
  if (!version) return kFailed;
  FillBuffer(buffer, kSoftwareVersionSize, *version);
  return kDone;
}

}  // extern "C"
