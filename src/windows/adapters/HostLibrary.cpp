// Loading of the host's DLLs.
#include "windows/adapters/HostLibrary.h"

#include <string>

#include "windows/adapters/ApiPath.h"

namespace windows {
namespace {

std::wstring SystemFolder() {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetSystemDirectoryW(path.data(), static_cast<UINT>(path.size())));
  return path + L'\\';
}

HMODULE Load(const wchar_t* fileName) {
  constexpr DWORD kTrustedFolders = LOAD_LIBRARY_SEARCH_APPLICATION_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32;
  const HMODULE library = LoadLibraryExW(fileName, nullptr, kTrustedFolders);
  if (library != nullptr || GetLastError() != ERROR_INVALID_PARAMETER) return library;
  // A Windows 7 without its later updates does not know these flags.
  for (const std::wstring& folder : {ProgramFolder(), SystemFolder()}) {
    const HMODULE found = LoadLibraryExW((folder + fileName).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (found != nullptr) return found;
  }
  return nullptr;
}

}  // namespace

HostLibrary::HostLibrary(const wchar_t* fileName) : library_(Load(fileName)) {}

FARPROC HostLibrary::Address(const char* exportName) {
  const FARPROC address = library_ == nullptr ? nullptr : GetProcAddress(library_.get(), exportName);
  exports_.push_back({exportName, address != nullptr});
  return address;
}

}  // namespace windows
