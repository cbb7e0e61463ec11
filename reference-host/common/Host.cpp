// Reads and writes the host's registry key, and reads its path table.
#include "common/Host.h"

#include <windows.h>

#include <vector>

#include "windows/adapters/Text.h"

namespace reference {

namespace {

/// A value name split into the key that holds it and the name within that key.
struct ValueLocation {
  std::wstring key;
  std::wstring name;
};

ValueLocation LocateValue(const std::string& name) {
  std::wstring path = windows::Utf16(name);
  path.erase(0, path.find_first_not_of(L'\\'));
  const std::size_t separator = path.rfind(L'\\');
  if (separator == std::wstring::npos) return {kHostKey, path};
  return {std::wstring(kHostKey) + L'\\' + path.substr(0, separator), path.substr(separator + 1)};
}

bool WriteValue(const std::string& name, DWORD type, const void* data, std::size_t size) {
  const ValueLocation location = LocateValue(name);
  return RegSetKeyValueW(HKEY_LOCAL_MACHINE, location.key.c_str(), location.name.c_str(), type, data,
                         static_cast<DWORD>(size)) == ERROR_SUCCESS;
}

/// The profile reader answers the default for a missing name; this one cannot stand in a file.
constexpr wchar_t kMissing[] = L"\x01";

}  // namespace

std::optional<std::string> ReadRegistryText(const std::string& name) {
  const ValueLocation location = LocateValue(name);
  DWORD bytes = 0;
  LSTATUS status = RegGetValueW(HKEY_LOCAL_MACHINE, location.key.c_str(), location.name.c_str(), RRF_RT_REG_SZ, nullptr,
                                nullptr, &bytes);
  if (status != ERROR_SUCCESS) return std::nullopt;
  std::wstring value(bytes / sizeof(wchar_t) + 1, L'\0');
  bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
  status = RegGetValueW(HKEY_LOCAL_MACHINE, location.key.c_str(), location.name.c_str(), RRF_RT_REG_SZ, nullptr,
                        value.data(), &bytes);
  if (status != ERROR_SUCCESS) return std::nullopt;
  return windows::Utf8(value.c_str());
}

std::optional<unsigned long> ReadRegistryNumber(const std::string& name) {
  const ValueLocation location = LocateValue(name);
  DWORD value = 0;
  DWORD bytes = sizeof(value);
  if (RegGetValueW(HKEY_LOCAL_MACHINE, location.key.c_str(), location.name.c_str(), RRF_RT_REG_DWORD, nullptr, &value,
                   &bytes) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  return value;
}

bool WriteRegistryText(const std::string& name, const std::string& value) {
  const std::wstring wide = windows::Utf16(value);
  return WriteValue(name, REG_SZ, wide.c_str(), (wide.size() + 1) * sizeof(wchar_t));
}

bool WriteRegistryNumber(const std::string& name, unsigned long value) {
  return WriteValue(name, REG_DWORD, &value, sizeof(value));
}

std::optional<std::string> ReadPathEntry(const std::string& name) {
  std::optional<std::string> folder = ReadRegistryText("PathAppl");
  if (!folder || name.empty()) return std::nullopt;
  if (!folder->ends_with('\\')) *folder += '\\';
  const std::wstring file = windows::Utf16(*folder + "System\\Directory.ini");
  std::vector<wchar_t> value(512);
  for (;;) {
    const DWORD length = GetPrivateProfileStringW(L"Directory", windows::Utf16(name).c_str(), kMissing, value.data(),
                                                  static_cast<DWORD>(value.size()), file.c_str());
    if (length + 1 < value.size()) break;
    value.resize(value.size() * 2);
  }
  if (value[0] == kMissing[0]) return std::nullopt;
  return windows::Utf8(value.data());
}

std::wstring OwnFolder() {
  wchar_t path[MAX_PATH] = {};
  const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
  if (length == 0 || length == MAX_PATH) return {};
  const std::wstring text(path, length);
  return text.substr(0, text.rfind(L'\\') + 1);
}

}  // namespace reference
