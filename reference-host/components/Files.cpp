// Lists, reads, writes and copies files.
#include "components/Files.h"

#include <shlobj.h>

namespace components {
namespace {

std::optional<unsigned long long> SizeOf(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data = {};
  if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return std::nullopt;
  return ULARGE_INTEGER{{data.nFileSizeLow, data.nFileSizeHigh}}.QuadPart;
}

}  // namespace

bool IsFolder(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool IsFile(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::vector<FolderEntry> ListFolder(const std::wstring& folder) {
  std::vector<FolderEntry> entries;
  WIN32_FIND_DATAW data = {};
  const HANDLE search = FindFirstFileW((folder + L"*").c_str(), &data);
  if (search == INVALID_HANDLE_VALUE) return entries;
  do {
    const std::wstring name = data.cFileName;
    if (name == L"." || name == L"..") continue;
    entries.push_back({name, (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0, data.ftLastWriteTime});
  } while (FindNextFileW(search, &data));
  FindClose(search);
  return entries;
}

bool MakeFolder(const std::wstring& folder) {
  return IsFolder(folder) || SHCreateDirectoryExW(nullptr, folder.c_str(), nullptr) == ERROR_SUCCESS;
}

std::optional<std::string> ReadFileBytes(const std::wstring& path) {
  const FileHandle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, 0, nullptr));
  LARGE_INTEGER size = {};
  if (!file || !GetFileSizeEx(file.Get(), &size) || size.HighPart != 0) return std::nullopt;
  std::string bytes(size.LowPart, '\0');
  DWORD read = 0;
  if (!ReadFile(file.Get(), bytes.data(), size.LowPart, &read, nullptr) || read != size.LowPart) return std::nullopt;
  return bytes;
}

bool WriteFileBytes(const std::wstring& path, const std::string& bytes) {
  const FileHandle file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  DWORD written = 0;
  return file && WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
         written == bytes.size();
}

bool CopyWholeFile(const std::wstring& from, const std::wstring& to) {
  const auto size = SizeOf(from);
  return size && CopyFileW(from.c_str(), to.c_str(), FALSE) && SizeOf(to) == size;
}

}  // namespace components
