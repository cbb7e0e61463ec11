// The operating system's side of the archiver on Windows.
#include <windows.h>
// shellapi.h needs windows.h before it
#include <shellapi.h>

#include <algorithm>
#include <atomic>

#include "cabarc/Platform.h"
#include "windows/adapters/Text.h"

namespace cabarc::platform {

const char kSeparator = '\\';

namespace {

// A path as the wide functions take it; long ones get the prefix that lifts the limit of 260 characters. A folder
// must leave room for a short name below it, hence the lower limit here.
std::wstring ToSystemPath(std::string_view path) {
  constexpr DWORD kLongFrom = 240;
  std::wstring wide = windows::Utf16(path);
  const DWORD length = GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr);
  if (length < kLongFrom || wide.starts_with(L"\\\\?\\")) return wide;
  std::wstring full(length, L'\0');
  full.resize(GetFullPathNameW(wide.c_str(), length, full.data(), nullptr));
  if (full.starts_with(L"\\\\")) return L"\\\\?\\UNC" + full.substr(1);
  return L"\\\\?\\" + full;
}

DosStamp ToStamp(const FILETIME& time) {
  SYSTEMTIME utc{};
  SYSTEMTIME local{};
  if (!FileTimeToSystemTime(&time, &utc) || !SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local) ||
      local.wYear < 1980) {
    return {0x21, 0};  // the first day that can be told
  }
  if (local.wYear > 2107) return {0xFF9F, 0xBF7D};  // and the last second
  return {static_cast<std::uint16_t>((local.wYear - 1980) << 9 | local.wMonth << 5 | local.wDay),
          static_cast<std::uint16_t>(local.wHour << 11 | local.wMinute << 5 | local.wSecond / 2)};
}

bool FromStamp(DosStamp stamp, FILETIME& time) {
  SYSTEMTIME local{};
  local.wYear = static_cast<WORD>((stamp.date >> 9) + 1980);
  local.wMonth = stamp.date >> 5 & 15;
  local.wDay = stamp.date & 31;
  local.wHour = static_cast<WORD>(stamp.time >> 11);
  local.wMinute = stamp.time >> 5 & 63;
  local.wSecond = static_cast<WORD>((stamp.time & 31) * 2);
  SYSTEMTIME utc{};
  return TzSpecificLocalTimeToSystemTime(nullptr, &local, &utc) && SystemTimeToFileTime(&utc, &time);
}

std::uint64_t Join(DWORD high, DWORD low) {
  return static_cast<std::uint64_t>(high) << 32 | low;
}

// Found, by-handle and by-name records share these members.
template <class Data>
FileInfo ToInfo(const Data& data) {
  FileInfo info;
  info.kind = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) ? Kind::Folder : Kind::File;
  info.size = Join(data.nFileSizeHigh, data.nFileSizeLow);
  info.modified = Join(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime);
  info.stamp = ToStamp(data.ftLastWriteTime);
  info.attributes = static_cast<std::uint8_t>(data.dwFileAttributes & kAllAttributes);
  return info;
}

HANDLE Handle(std::intptr_t handle) {
  return reinterpret_cast<HANDLE>(handle);
}

std::intptr_t Open(const std::string& path, DWORD access, DWORD share, DWORD disposition, DWORD flags) {
  return reinterpret_cast<std::intptr_t>(
      CreateFileW(ToSystemPath(path).c_str(), access, share, nullptr, disposition, flags, nullptr));
}

// The file that is being written; there is never more than one.
std::atomic<std::intptr_t> unfinished = -1;

// Runs in a thread of its own. Nobody else can open the file, but its own handle can have it deleted when it is closed,
// as the end of the process does.
BOOL WINAPI RemoveUnfinished(DWORD) {
  FILE_DISPOSITION_INFO disposition{TRUE};
  const HANDLE handle = Handle(unfinished);
  if (handle != INVALID_HANDLE_VALUE) {
    SetFileInformationByHandle(handle, FileDispositionInfo, &disposition, sizeof disposition);
  }
  return FALSE;  // the process ends as it would have
}

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

}  // namespace

bool File::OpenForReading(const std::string& path) {
  Close();
  handle_ = Open(path, GENERIC_READ, kShareAll, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN);
  return IsOpen();
}

bool File::CreateNew(const std::string& path, std::uint8_t) {
  Close();
  handle_ = Open(path, GENERIC_WRITE | DELETE, FILE_SHARE_READ, CREATE_NEW, FILE_ATTRIBUTE_NORMAL);
  unfinished = handle_;
  return IsOpen();
}

// INVALID_HANDLE_VALUE is -1; other handles may well be negative.
bool File::IsOpen() const {
  return handle_ != -1;
}

std::optional<std::size_t> File::Read(void* buffer, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    DWORD count = 0;
    if (!ReadFile(Handle(handle_), static_cast<char*>(buffer) + done, static_cast<DWORD>(size - done), &count,
                  nullptr)) {
      return std::nullopt;
    }
    if (count == 0) break;
    done += count;
  }
  return done;
}

bool File::Write(const void* data, std::size_t size) {
  DWORD count = 0;
  if (!WriteFile(Handle(handle_), data, static_cast<DWORD>(size), &count, nullptr)) return false;
  if (count != size) SetLastError(ERROR_DISK_FULL);
  return count == size;
}

bool File::Seek(std::uint64_t position) {
  LARGE_INTEGER distance;
  distance.QuadPart = static_cast<LONGLONG>(position);
  return SetFilePointerEx(Handle(handle_), distance, nullptr, FILE_BEGIN) != 0;
}

std::optional<FileInfo> File::Info() const {
  BY_HANDLE_FILE_INFORMATION data{};
  if (!GetFileInformationByHandle(Handle(handle_), &data)) return std::nullopt;
  return ToInfo(data);
}

bool File::SetAttributes(std::uint8_t attributes, DosStamp stamp) {
  FILE_BASIC_INFO basic{};  // times of 0 stay as they are
  const DWORD wanted = attributes & kAllAttributes;
  // Attributes of 0 stay as well: the system itself marks a new file for archiving.
  if (wanted != kArchive) basic.FileAttributes = wanted != 0 ? wanted : FILE_ATTRIBUTE_NORMAL;
  FILETIME time{};
  if (FromStamp(stamp, time)) {
    basic.LastWriteTime.QuadPart = static_cast<LONGLONG>(Join(time.dwHighDateTime, time.dwLowDateTime));
  }
  return SetFileInformationByHandle(Handle(handle_), FileBasicInfo, &basic, sizeof basic) != 0;
}

bool File::Close() {
  std::intptr_t mine = handle_;
  unfinished.compare_exchange_strong(mine, -1);
  return !IsOpen() || CloseHandle(Handle(std::exchange(handle_, -1))) != 0;
}

// Renaming the open file spares opening it a second time, which is half the price of a small file. A new name that
// belongs to a read-only file is not to be had in this way.
bool File::CloseAs(const std::string& from, const std::string& to) {
  const std::wstring path = ToSystemPath(to);
  std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  const std::size_t bytes = full.size() * sizeof(wchar_t);
  std::vector<std::byte> memory(sizeof(FILE_RENAME_INFO) + bytes);
  auto* const rename = reinterpret_cast<FILE_RENAME_INFO*>(memory.data());
  rename->ReplaceIfExists = TRUE;
  rename->FileNameLength = static_cast<DWORD>(bytes);
  std::copy(full.begin(), full.end(), rename->FileName);
  const bool renamed =
      SetFileInformationByHandle(Handle(handle_), FileRenameInfo, rename, static_cast<DWORD>(memory.size())) != 0;
  if (renamed) unfinished = -1;
  if (!Close()) {
    if (renamed) Remove(to);  // not all of it was written
    return false;
  }
  return renamed || Rename(from, to);
}

// The C run-time's own arguments are of no use: it turns "*.*" into the names of files.
std::vector<std::string> Arguments(int, char**) {
  std::vector<std::string> arguments;
  int count = 0;
  wchar_t** const values = CommandLineToArgvW(GetCommandLineW(), &count);
  for (int i = 1; values && i < count; ++i) arguments.push_back(windows::Utf8(values[i]));
  LocalFree(values);
  return arguments;
}

bool Print(std::string_view text, bool asError) {
  const HANDLE output = GetStdHandle(asError ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE);
  DWORD mode = 0;
  DWORD count = 0;
  if (GetConsoleMode(output, &mode)) {
    const std::wstring wide = windows::Utf16(text);
    return WriteConsoleW(output, wide.data(), static_cast<DWORD>(wide.size()), &count, nullptr) != 0;
  }
  return WriteFile(output, text.data(), static_cast<DWORD>(text.size()), &count, nullptr) && count == text.size();
}

bool IsTerminal(bool asError) {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(asError ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE), &mode) != 0;
}

void RemoveUnfinishedWhenEnded() {
  SetConsoleCtrlHandler(RemoveUnfinished, TRUE);
}

std::string ToNative(std::string_view path) {
  std::string native(path);
  std::replace(native.begin(), native.end(), '/', kSeparator);
  return native;
}

std::string FromCodePage(std::string_view bytes) {
  return windows::FromCodePage(bytes);
}

std::string FoldName(std::string_view name) {
  std::wstring wide = windows::Utf16(name);
  CharUpperBuffW(wide.data(), static_cast<DWORD>(wide.size()));
  return windows::Utf8(wide);
}

FileInfo InfoOf(const std::string& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!GetFileAttributesExW(ToSystemPath(path).c_str(), GetFileExInfoStandard, &data)) return {};
  File file;
  if ((data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0 || !file.OpenForReading(path)) return ToInfo(data);
  return file.Info().value_or(FileInfo{});
}

bool IsSameFile(const std::string& one, const std::string& other) {
  const auto identity = [](const std::string& path) -> std::optional<BY_HANDLE_FILE_INFORMATION> {
    const std::intptr_t handle = Open(path, 0, kShareAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    if (handle == -1) return std::nullopt;
    BY_HANDLE_FILE_INFORMATION data{};
    const bool known = GetFileInformationByHandle(Handle(handle), &data) != 0;
    CloseHandle(Handle(handle));
    return known ? std::optional(data) : std::nullopt;
  };
  const auto first = identity(one);
  const auto second = identity(other);
  return first && second && first->dwVolumeSerialNumber == second->dwVolumeSerialNumber &&
         first->nFileIndexHigh == second->nFileIndexHigh && first->nFileIndexLow == second->nFileIndexLow;
}

Kind KindOf(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(ToSystemPath(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return Kind::Missing;
  if (attributes & FILE_ATTRIBUTE_REPARSE_POINT) return Kind::Link;
  return (attributes & FILE_ATTRIBUTE_DIRECTORY) ? Kind::Folder : Kind::File;
}

bool ListFolder(const std::string& path, std::vector<FolderEntry>& entries) {
  WIN32_FIND_DATAW found{};
  std::wstring pattern = ToSystemPath(path);
  if (!pattern.ends_with(L'\\')) pattern += L'\\';  // after the long prefix, doubled ones are not accepted
  const HANDLE search = FindFirstFileExW((pattern + L'*').c_str(), FindExInfoBasic, &found, FindExSearchNameMatch,
                                         nullptr, FIND_FIRST_EX_LARGE_FETCH);
  if (search == INVALID_HANDLE_VALUE) return GetLastError() == ERROR_FILE_NOT_FOUND;
  do {
    FolderEntry entry{windows::Utf8(found.cFileName), ToInfo(found)};
    if (entry.name == "." || entry.name == "..") continue;
    if (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) {
      if (entry.info.kind == Kind::File) entry.info = InfoOf(path + kSeparator + entry.name);
      if (entry.info.kind != Kind::File) entry.info.kind = Kind::Link;
    }
    entries.push_back(std::move(entry));
  } while (FindNextFileW(search, &found));
  const DWORD error = GetLastError();
  FindClose(search);
  SetLastError(error);
  return error == ERROR_NO_MORE_FILES;
}

bool CreateFolder(const std::string& path) {
  return CreateDirectoryW(ToSystemPath(path).c_str(), nullptr) != 0;
}

bool Remove(const std::string& path) {
  return DeleteFileW(ToSystemPath(path).c_str()) != 0;
}

bool Rename(const std::string& from, const std::string& to) {
  const std::wstring source = ToSystemPath(from);
  const std::wstring target = ToSystemPath(to);
  if (MoveFileExW(source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
  if (GetLastError() != ERROR_ACCESS_DENIED || KindOf(to) != Kind::File) return false;
  // A read-only file is not replaced otherwise.
  SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_NORMAL);
  return MoveFileExW(source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

std::string LastError() {
  wchar_t text[512];
  const DWORD error = GetLastError();
  DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, text,
                                static_cast<DWORD>(std::size(text)), nullptr);
  while (length > 0 && (text[length - 1] <= L' ' || text[length - 1] == L'.')) --length;
  return length > 0 ? windows::Utf8({text, length}) : "error " + std::to_string(error);
}

unsigned ProcessNumber() {
  return GetCurrentProcessId();
}

}  // namespace cabarc::platform
