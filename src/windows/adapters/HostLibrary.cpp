// Loading of the host's DLLs.
#include "windows/adapters/HostLibrary.h"

#include "windows/adapters/ApiPath.h"

namespace windows {
namespace {

std::wstring SystemFolder() {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetSystemDirectoryW(path.data(), static_cast<UINT>(path.size())));
  return path + L'\\';
}

/// `error` is that of the first try, unless that one knew nothing of its flags.
HMODULE Load(const wchar_t* fileName, DWORD& error) {
  constexpr DWORD kTrustedFolders = LOAD_LIBRARY_SEARCH_APPLICATION_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32;
  const HMODULE library = LoadLibraryExW(fileName, nullptr, kTrustedFolders);
  error = GetLastError();
  if (library != nullptr || error != ERROR_INVALID_PARAMETER) return library;
  // A Windows 7 without its later updates does not know these flags.
  for (const std::wstring& folder : {ProgramFolder(), SystemFolder()}) {
    const std::wstring path = folder + fileName;
    const HMODULE found = LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    error = GetLastError();
    if (found != nullptr) return found;
  }
  return nullptr;
}

}  // namespace

HostLibrary::HostLibrary(const wchar_t* fileName) : fileName_(Utf8(fileName)), library_(Load(fileName, loadError_)) {}

FARPROC HostLibrary::Address(const char* exportName, DWORD& absence) {
  const FARPROC address = library_ == nullptr ? nullptr : GetProcAddress(library_.get(), exportName);
  absence = library_ == nullptr ? loadError_ : GetLastError();
  exports_.push_back({exportName, address != nullptr});
  return address;
}

}  // namespace windows
