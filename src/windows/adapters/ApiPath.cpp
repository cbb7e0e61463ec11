// Paths as the wide API takes them.
#include "windows/adapters/ApiPath.h"

#include "windows/adapters/Text.h"
#include "windows/adapters/Win32.h"

namespace windows {
namespace {

// A folder's path must leave room for a file name of the old kind, 8.3.
constexpr std::size_t kLongestPlainPath = MAX_PATH - 13;

std::wstring WithoutLimit(const std::wstring& fullPath) {
  if (fullPath.starts_with(LR"(\\?\)") || fullPath.starts_with(LR"(\\.\)")) return fullPath;
  if (fullPath.starts_with(LR"(\\)")) return LR"(\\?\UNC\)" + fullPath.substr(2);
  return LR"(\\?\)" + fullPath;
}

}  // namespace

std::wstring ProgramFolder() {
  constexpr std::size_t kLongestPath = 32768;
  std::wstring path(kLongestPath, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path.substr(0, path.rfind(L'\\') + 1);
}

std::wstring FullPath(const std::string& path) {
  const std::wstring given = Utf16(path);
  const DWORD needed = GetFullPathNameW(given.c_str(), 0, nullptr, nullptr);
  std::wstring full(needed, L'\0');
  full.resize(GetFullPathNameW(given.c_str(), needed, full.data(), nullptr));
  return full;
}

std::wstring ApiPath(const std::string& path) {
  const std::wstring full = FullPath(path);
  return full.size() > kLongestPlainPath ? WithoutLimit(full) : Utf16(path);
}

std::wstring UnlimitedPath(const std::string& path) {
  std::wstring full = FullPath(path);
  if (full.empty()) return full;
  while (full.ends_with(L'\\')) full.pop_back();
  return WithoutLimit(full);
}

}  // namespace windows
