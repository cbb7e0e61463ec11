// Exports the host's registry key as Tarsus.reg, in its own folder, in the
// registry editor's format. Exit code 0, 1 when nothing could be exported.

#include <windows.h>

#include <fstream>
#include <string>
#include <vector>

#include "common/Host.h"

namespace {

constexpr DWORD kLongestName = 16384;  // of a value, by the registry's own rules

std::wstring Quoted(const std::wstring& text) {
  std::wstring quoted = L"\"";
  for (const wchar_t character : text) {
    if (character == L'\\' || character == L'"') quoted += L'\\';
    quoted += character;
  }
  return quoted + L"\"";
}

std::wstring Hex(const wchar_t* format, unsigned long number) {
  wchar_t text[16] = {};
  swprintf(text, std::size(text), format, number);
  return text;
}

std::wstring Bytes(DWORD type, const std::vector<BYTE>& data) {
  std::wstring text = type == REG_BINARY ? L"hex:" : Hex(L"hex(%lx):", type);
  for (std::size_t at = 0; at < data.size(); ++at) text += (at ? L"," : L"") + Hex(L"%02lx", data[at]);
  return text;
}

std::wstring Value(DWORD type, const std::vector<BYTE>& data) {
  if (type == REG_DWORD && data.size() == sizeof(DWORD)) {
    return Hex(L"dword:%08lx", *reinterpret_cast<const DWORD*>(data.data()));
  }
  if (type != REG_SZ) return Bytes(type, data);
  std::wstring text(reinterpret_cast<const wchar_t*>(data.data()), data.size() / sizeof(wchar_t));
  while (text.ends_with(L'\0')) text.pop_back();
  // A quoted text has no way to hold a line end.
  return text.find_first_of(L"\r\n") == std::wstring::npos ? Quoted(text) : Bytes(type, data);
}

void ExportValues(HKEY key, std::wstring& output) {
  DWORD longestData = 0;
  RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &longestData, nullptr,
                   nullptr);
  std::wstring name(kLongestName, L'\0');
  for (DWORD index = 0;; ++index) {
    std::vector<BYTE> data(longestData + sizeof(wchar_t));
    DWORD nameLength = kLongestName, size = static_cast<DWORD>(data.size()), type = REG_NONE;
    if (RegEnumValueW(key, index, name.data(), &nameLength, nullptr, &type, data.data(), &size) != ERROR_SUCCESS)
      return;
    data.resize(size);
    output += (nameLength ? Quoted(name.substr(0, nameLength)) : L"@") + L"=" + Value(type, data) + L"\r\n";
  }
}

bool ExportKey(const std::wstring& path, std::wstring& output) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
  output += L"\r\n[HKEY_LOCAL_MACHINE\\" + path + L"]\r\n";
  ExportValues(key, output);
  bool exported = true;
  wchar_t name[256] = {};
  for (DWORD index = 0, length = 256;
       RegEnumKeyExW(key, index, name, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
       ++index, length = 256) {
    exported = ExportKey(path + L"\\" + name, output) && exported;
  }
  RegCloseKey(key);
  return exported;
}

}  // namespace

int wmain() {
  const std::wstring folder = reference::OwnFolder();
  std::wstring output = L"\xFEFFWindows Registry Editor Version 5.00\r\n";
  if (folder.empty() || !ExportKey(reference::kHostKey, output)) return 1;
  std::ofstream file((folder + L"Tarsus.reg").c_str(), std::ios::binary);
  file.write(reinterpret_cast<const char*>(output.data()),
             static_cast<std::streamsize>(output.size() * sizeof(wchar_t)));
  return file.flush() ? 0 : 1;
}
