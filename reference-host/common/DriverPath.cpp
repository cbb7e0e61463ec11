// Asks Wine, where there is one, for a file's name in the system below it.
#include "common/DriverPath.h"

#include <windows.h>

#include "windows/adapters/Text.h"

namespace reference {

namespace {

using GetUnixFileName = char*(CDECL*)(const wchar_t*);

GetUnixFileName FindConverter() {
  const FARPROC address = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name");
  return reinterpret_cast<GetUnixFileName>(reinterpret_cast<void*>(address));
}

}  // namespace

std::string DriverPath(const std::string& path) {
  const GetUnixFileName convert = FindConverter();
  char* const converted = convert ? convert(windows::Utf16(path).c_str()) : nullptr;
  if (!converted) return path;
  std::string result = converted;
  HeapFree(GetProcessHeap(), 0, converted);
  return result;
}

}  // namespace reference
