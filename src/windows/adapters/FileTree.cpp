// What Win32FileSystem does in more than one step.
#include "windows/adapters/FileTree.h"

#include <sddl.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

#include "windows/adapters/ApiPath.h"
#include "windows/adapters/Results.h"

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

DWORD DeleteFolder(const std::wstring& folder) {
  if (RemoveDirectoryW(folder.c_str()) != FALSE) return ERROR_SUCCESS;
  const DWORD error = GetLastError();
  if (SetFileAttributesW(folder.c_str(), FILE_ATTRIBUTE_NORMAL) == FALSE) return error;
  return RemoveDirectoryW(folder.c_str()) != FALSE ? ERROR_SUCCESS : GetLastError();
}

/// The first thing that went wrong with a tree; told from several threads.
class FirstFailure {
 public:
  void Note(const std::wstring& path, DWORD error) {
    if (error == ERROR_SUCCESS) return;
    const std::lock_guard lock(mutex_);
    if (first_.IsDone()) first_ = Failed(ShownPath(path), error);
  }
  const base::Outcome& Told() const { return first_; }

 private:
  std::mutex mutex_;
  base::Outcome first_;
};

/// Adds what lies below `folder`, and the folder itself behind everything in it.
void ListTree(const std::wstring& folder, std::vector<std::wstring>& files, std::vector<std::wstring>& folders,
              const std::function<void()>& afterEach, FirstFailure& failure) {
  const auto add = [&](const WIN32_FIND_DATAW& entry) {
    const std::wstring path = folder + L'\\' + entry.cFileName;
    if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
      files.push_back(path);
    } else {
      ListTree(path, files, folders, afterEach, failure);
    }
    afterEach();
  };
  // Of a link only the link goes; what it points to stays.
  if (!HasAttribute(folder, FILE_ATTRIBUTE_REPARSE_POINT)) failure.Note(folder, ForEachEntry(folder, add));
  folders.push_back(folder);
}

/// Deleting a file is mostly waiting for the system, so several threads do it side by side: once for a whole tree,
/// because starting them costs what some ten files cost. This one calls `afterEach` behind each file of its share.
/// When a file stays, the others are deleted all the same.
void DeleteFiles(const std::vector<std::wstring>& files, const std::function<void()>& afterEach,
                 FirstFailure& failure) {
  constexpr std::size_t kHelpers = 3;
  constexpr std::size_t kWorthAHelper = 16;  // files
  std::atomic<std::size_t> next = 0;
  const auto work = [&](const std::function<void()>& after) {
    for (std::size_t i = next++; i < files.size(); i = next++) {
      failure.Note(files[i], DeleteForced(files[i]));
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
}

/// Does `work`, which answers an error, once more without the read-only mark of `file` where that has refused it. A
/// file that stays keeps its mark.
template <class Work>
DWORD DespiteMark(const std::wstring& file, Work work) {
  const DWORD refusal = work();
  if (refusal != ERROR_ACCESS_DENIED || !HasAttribute(file, FILE_ATTRIBUTE_READONLY)) return refusal;
  const DWORD attributes = GetFileAttributesW(file.c_str());
  if (SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL) == FALSE) return refusal;
  const DWORD error = work();
  if (error != ERROR_SUCCESS) SetFileAttributesW(file.c_str(), attributes);
  return error;
}

/// For calls that leave their error to GetLastError; to be written round the call itself.
DWORD ErrorOf(BOOL succeeded) {
  const DWORD error = GetLastError();
  return succeeded != FALSE ? DWORD{ERROR_SUCCESS} : error;
}

/// Whether somebody has the file open who does not let it go.
bool IsHeld(const std::wstring& file) {
  const Handle handle(CreateFileW(file.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, 0, nullptr));
  return !handle && GetLastError() == ERROR_SHARING_VIOLATION;
}

DWORD CALLBACK CallOnProgress(LARGE_INTEGER /*size*/, LARGE_INTEGER /*copied*/, LARGE_INTEGER /*streamSize*/,
                              LARGE_INTEGER /*streamCopied*/, DWORD /*stream*/, DWORD /*reason*/, HANDLE /*source*/,
                              HANDLE /*target*/, LPVOID call) {
  (*static_cast<const std::function<void()>*>(call))();
  return PROGRESS_CONTINUE;
}

/// The user of this process as text, such as "S-1-5-21-...-1001"; empty, and an `error`, when it cannot be had.
std::wstring UserSid(DWORD& error) {
  HANDLE raw = nullptr;
  wchar_t* text = nullptr;
  const bool opened = OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &raw) != FALSE;
  error = GetLastError();
  if (!opened) return {};
  const Handle token(raw);
  DWORD size = 0;
  GetTokenInformation(token.Get(), TokenUser, nullptr, 0, &size);
  std::vector<std::byte> buffer(size);
  const bool found = size != 0 && GetTokenInformation(token.Get(), TokenUser, buffer.data(), size, &size) != FALSE &&
                     ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(buffer.data())->User.Sid, &text);
  error = GetLastError();
  return found ? std::wstring(LocalMemory<wchar_t>(text).get()) : std::wstring();
}

}  // namespace

DWORD ForEachEntry(const std::wstring& folder, const std::function<void(const WIN32_FIND_DATAW&)>& visit) {
  const std::wstring pattern = folder + L"\\*";
  WIN32_FIND_DATAW entry;
  const HANDLE first = FindFirstFileW(pattern.c_str(), &entry);
  if (first == INVALID_HANDLE_VALUE) {
    const DWORD error = GetLastError();
    // An empty root has not even "." in it.
    return error == ERROR_FILE_NOT_FOUND ? DWORD{ERROR_SUCCESS} : error;
  }
  const FindHandle search(first);
  do {
    const std::wstring_view name = entry.cFileName;
    if (name != L"." && name != L"..") visit(entry);
  } while (FindNextFileW(search.get(), &entry) != FALSE);
  const DWORD error = GetLastError();
  return error == ERROR_NO_MORE_FILES ? DWORD{ERROR_SUCCESS} : error;
}

DWORD DeleteForced(const std::wstring& file) {
  return DespiteMark(file, [&] { return ErrorOf(DeleteFileW(file.c_str())); });
}

base::Outcome DeleteTree(const std::wstring& folder, const std::function<void()>& afterEach) {
  std::vector<std::wstring> files;
  std::vector<std::wstring> folders;
  FirstFailure failure;
  ListTree(folder, files, folders, afterEach, failure);
  DeleteFiles(files, afterEach, failure);
  for (const std::wstring& each : folders) {
    failure.Note(each, DeleteFolder(each));
    afterEach();
  }
  return failure.Told();
}

long long SizeOf(const std::wstring& file) {
  constexpr long long kNotKnown = -1;
  const Handle handle(CreateFileW(file.c_str(), FILE_READ_ATTRIBUTES,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, 0,
                                  nullptr));
  LARGE_INTEGER size{};
  return handle && GetFileSizeEx(handle.Get(), &size) != FALSE ? size.QuadPart : kNotKnown;
}

DWORD CopyToNewFile(const std::wstring& source, const std::wstring& target, Patience& patience) {
  if (Exists(target)) return ERROR_FILE_EXISTS;
  std::function<void()> call = patience.Meanwhile();
  const DWORD error = patience.WhileInUse([&] {
    return ErrorOf(
        CopyFileExW(source.c_str(), target.c_str(), CallOnProgress, &call, nullptr, COPY_FILE_FAIL_IF_EXISTS));
  });
  const bool copied = error == ERROR_SUCCESS;
  // A source that could not be read to its end has been seen to count as copied.
  const long long size = SizeOf(source);
  if (copied && size >= 0 && size == SizeOf(target)) return ERROR_SUCCESS;
  DeleteForced(target);
  return copied ? ERROR_READ_FAULT : error;
}

DWORD Replace(const std::wstring& source, const std::wstring& target, DWORD flags) {
  const DWORD error = ErrorOf(MoveFileExW(source.c_str(), target.c_str(), flags | MOVEFILE_REPLACE_EXISTING));
  // The system denies access for it, as it does where the right is lacking.
  return error == ERROR_ACCESS_DENIED && IsHeld(target) ? DWORD{ERROR_SHARING_VIOLATION} : error;
}

DWORD CopyOver(const std::wstring& source, const std::wstring& target, Patience& patience) {
  const std::wstring copy = FreeNameBeside(target);
  DWORD error = CopyToNewFile(source, copy, patience);
  if (error != ERROR_SUCCESS) return error;
  error = patience.WhileInUse([&] { return DespiteMark(target, [&] { return Replace(copy, target, 0); }); });
  if (error != ERROR_SUCCESS) DeleteForced(copy);
  return error;
}

DWORD FlushFile(const std::wstring& file) {
  const DWORD attributes = GetFileAttributesW(file.c_str());
  Handle handle;
  // Only who may write to a file may have it flushed.
  const DWORD error = DespiteMark(file, [&] {
    handle = Handle(CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                nullptr, OPEN_EXISTING, 0, nullptr));
    return ErrorOf(handle ? TRUE : FALSE);
  });
  if (error != ERROR_SUCCESS) return error;
  if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) SetFileAttributesW(file.c_str(), attributes);
  return ErrorOf(FlushFileBuffers(handle.Get()));
}

DWORD CreatePrivateFolder(const std::wstring& path) {
  DWORD error = ERROR_SUCCESS;
  const std::wstring user = UserSid(error);
  if (user.empty()) return error;
  const std::wstring list = L"D:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;FA;;;" + user + L")";
  void* descriptor = nullptr;
  if (ConvertStringSecurityDescriptorToSecurityDescriptorW(list.c_str(), SDDL_REVISION_1, &descriptor, nullptr) ==
      FALSE)
    return GetLastError();
  const LocalMemory<void> owner(descriptor);
  SECURITY_ATTRIBUTES attributes{sizeof(SECURITY_ATTRIBUTES), descriptor, FALSE};
  return CreateDirectoryW(path.c_str(), &attributes) != FALSE ? ERROR_SUCCESS : GetLastError();
}

}  // namespace windows
