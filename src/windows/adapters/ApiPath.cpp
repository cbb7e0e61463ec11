// Paths as the wide API takes them.
#include "windows/adapters/ApiPath.h"

#include "windows/adapters/Text.h"
#include "windows/adapters/Win32.h"

namespace windows {
namespace {

// A folder's path must leave room for a file name of the old kind, 8.3.
constexpr std::size_t kLongestPlainPath = MAX_PATH - 13;

// What stands before a path that knows no limit: one of a drive, and one of the network in place of its "\\".
constexpr std::wstring_view kNoLimit = LR"(\\?\)";
constexpr std::wstring_view kNoLimitOfNetwork = LR"(\\?\UNC\)";
constexpr std::wstring_view kNetwork = LR"(\\)";

std::wstring WithoutLimit(const std::wstring& fullPath) {
  if (fullPath.starts_with(kNoLimit) || fullPath.starts_with(LR"(\\.\)")) return fullPath;
  if (fullPath.starts_with(kNetwork)) return std::wstring(kNoLimitOfNetwork) + fullPath.substr(kNetwork.size());
  return std::wstring(kNoLimit) + fullPath;
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

std::string ShownPath(const std::wstring& path) {
  if (path.starts_with(kNoLimitOfNetwork)) return Utf8(std::wstring(kNetwork) + path.substr(kNoLimitOfNetwork.size()));
  return Utf8(path.starts_with(kNoLimit) ? path.substr(kNoLimit.size()) : path);
}

}  // namespace windows
