// What Win32FileSystem does in more than one step.
#include "windows/adapters/FileTree.h"

#include <algorithm>
#include <atomic>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

#include "windows/adapters/Handles.h"

namespace windows {
namespace {

bool Exists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool HasAttribute(const std::wstring& path, DWORD attribute) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & attribute) != 0;
}

/// A name beside `file` that nothing has yet.
std::wstring FreeNameBeside(const std::wstring& file) {
  std::wstring name;
  int number = 0;
  do {
    name = file + L".copy" + std::to_wstring(number++);
  } while (Exists(name));
  return name;
}

bool DeleteFolder(const std::wstring& folder) {
  if (RemoveDirectoryW(folder.c_str()) != FALSE) return true;
  return SetFileAttributesW(folder.c_str(), FILE_ATTRIBUTE_NORMAL) != FALSE &&
         RemoveDirectoryW(folder.c_str()) != FALSE;
}

/// Adds what lies below `folder`, and the folder itself behind everything in it. False when a folder cannot be read to
/// its end.
bool ListTree(const std::wstring& folder, std::vector<std::wstring>& files, std::vector<std::wstring>& folders,
              const std::function<void()>& afterEach) {
  bool read = true;
  const auto add = [&](const WIN32_FIND_DATAW& entry) {
    const std::wstring path = folder + L'\\' + entry.cFileName;
    if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
      files.push_back(path);
    } else {
      read = ListTree(path, files, folders, afterEach) && read;
    }
    afterEach();
  };
  // Of a link only the link goes; what it points to stays.
  if (!HasAttribute(folder, FILE_ATTRIBUTE_REPARSE_POINT)) read = ForEachEntry(folder, add) && read;
  folders.push_back(folder);
  return read;
}

/// Deleting a file is mostly waiting for the system, so several threads do it side by side: once for a whole tree,
/// because starting them costs what some ten files cost. This one calls `afterEach` behind each file of its share.
/// False when any file stays; the others are deleted all the same.
bool DeleteFiles(const std::vector<std::wstring>& files, const std::function<void()>& afterEach) {
  constexpr std::size_t kHelpers = 3;
  constexpr std::size_t kWorthAHelper = 16;  // files
  std::atomic<std::size_t> next = 0;
  std::atomic<bool> deleted = true;
  const auto work = [&](const std::function<void()>& after) {
    for (std::size_t i = next++; i < files.size(); i = next++) {
      if (!DeleteForced(files[i])) deleted = false;
      after();
    }
  };
  std::vector<std::jthread> helpers;
  try {
    while (helpers.size() < std::min(kHelpers, files.size() / kWorthAHelper)) helpers.emplace_back(work, [] {});
  } catch (const std::system_error&) {
    // Fewer threads take longer and do the same.
  }
  work(afterEach);
  helpers.clear();
  return deleted;
}

DWORD CALLBACK CallOnProgress(LARGE_INTEGER /*size*/, LARGE_INTEGER /*copied*/, LARGE_INTEGER /*streamSize*/,
                              LARGE_INTEGER /*streamCopied*/, DWORD /*stream*/, DWORD /*reason*/, HANDLE /*source*/,
                              HANDLE /*target*/, LPVOID call) {
  (*static_cast<const std::function<void()>*>(call))();
  return PROGRESS_CONTINUE;
}

}  // namespace

bool ForEachEntry(const std::wstring& folder, const std::function<void(const WIN32_FIND_DATAW&)>& visit) {
  WIN32_FIND_DATAW entry;
  const HANDLE first = FindFirstFileW((folder + L"\\*").c_str(), &entry);
  // An empty root has not even "." in it.
  if (first == INVALID_HANDLE_VALUE) return GetLastError() == ERROR_FILE_NOT_FOUND;
  const FindHandle search(first);
  do {
    const std::wstring_view name = entry.cFileName;
    if (name != L"." && name != L"..") visit(entry);
  } while (FindNextFileW(search.get(), &entry) != FALSE);
  return GetLastError() == ERROR_NO_MORE_FILES;
}

bool DeleteForced(const std::wstring& file) {
  if (DeleteFileW(file.c_str()) != FALSE) return true;
  return HasAttribute(file, FILE_ATTRIBUTE_READONLY) &&
         SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL) != FALSE && DeleteFileW(file.c_str()) != FALSE;
}

bool DeleteTree(const std::wstring& folder, const std::function<void()>& afterEach) {
  std::vector<std::wstring> files;
  std::vector<std::wstring> folders;
  bool deleted = ListTree(folder, files, folders, afterEach);
  deleted = DeleteFiles(files, afterEach) && deleted;
  for (const std::wstring& each : folders) {
    deleted = DeleteFolder(each) && deleted;
    afterEach();
  }
  return deleted;
}

long long SizeOf(const std::wstring& file) {
  const Handle handle(CreateFileW(file.c_str(), FILE_READ_ATTRIBUTES,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, 0,
                                  nullptr));
  LARGE_INTEGER size{};
  return handle && GetFileSizeEx(handle.Get(), &size) != FALSE ? size.QuadPart : -1;
}

bool CopyToNewFile(const std::wstring& source, const std::wstring& target, const std::function<void()>& meanwhile) {
  if (Exists(target)) return false;
  std::function<void()> call = meanwhile;
  const bool copied =
      CopyFileExW(source.c_str(), target.c_str(), CallOnProgress, &call, nullptr, COPY_FILE_FAIL_IF_EXISTS) != FALSE;
  // A source that could not be read to its end has been seen to count as copied.
  const long long size = SizeOf(source);
  if (copied && size >= 0 && size == SizeOf(target)) return true;
  DeleteForced(target);
  return false;
}

bool CopyOver(const std::wstring& source, const std::wstring& target, const std::function<void()>& meanwhile) {
  const std::wstring copy = FreeNameBeside(target);
  if (!CopyToNewFile(source, copy, meanwhile)) return false;
  if (MoveFileExW(copy.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE) return true;
  DeleteForced(copy);
  return false;
}

}  // namespace windows
