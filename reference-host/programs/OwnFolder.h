// The folder that a program lies in, which is where backup jobs look for its output.
#pragma once

#include <windows.h>

#include <string>

namespace programs {

/// With a "\" at the end; empty when the path is too long.
inline std::wstring OwnFolder() {
  wchar_t path[MAX_PATH] = {};
  const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
  if (length == 0 || length == MAX_PATH) return {};
  const std::wstring text(path, length);
  return text.substr(0, text.rfind(L'\\') + 1);
}

}  // namespace programs
