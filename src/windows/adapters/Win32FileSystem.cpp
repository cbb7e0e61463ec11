// Files, folders and drives through the wide API.
#include "windows/adapters/Win32FileSystem.h"

#include <limits>

#include "base/Wildcard.h"
#include "windows/adapters/ApiPath.h"
#include "windows/adapters/FileStreams.h"
#include "windows/adapters/FileTree.h"
#include "windows/adapters/Results.h"
#include "windows/adapters/Text.h"

namespace windows {
namespace {

DWORD AttributesOf(const std::string& path) {
  return GetFileAttributesW(ApiPath(path).c_str());
}

bool IsFolder(DWORD attributes) {
  return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsDriveRoot(std::wstring_view unlimitedPath) {
  return unlimitedPath.ends_with(L':');
}

/// How a file is opened. Its fields are those of the system's call.
struct Opening {
  DWORD access;
  DWORD sharing;
  DWORD disposition;
  DWORD flags;
};

/// A reader leaves others their access: logs and databases are in use while they are read, and logs are renamed.
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr Opening kForReading = {GENERIC_READ, kShareAll, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN};
constexpr Opening kForUncachedReading = {GENERIC_READ, kShareAll, OPEN_EXISTING, FILE_FLAG_NO_BUFFERING};
constexpr Opening kForWriting = {GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL};
constexpr Opening kForAppending = {FILE_APPEND_DATA, FILE_SHARE_READ, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL};

template <typename Contract, typename Stream>
base::Obtained<Contract> Open(Patience& patience, const std::string& path, const Opening& how) {
  const std::wstring name = ApiPath(path);
  Handle file;
  const DWORD error = patience.WhileInUse([&] {
    file = Handle(CreateFileW(name.c_str(), how.access, how.sharing, nullptr, how.disposition, how.flags, nullptr));
    return file ? DWORD{ERROR_SUCCESS} : GetLastError();
  });
  if (!file) return Failed(path, error);
  return std::make_unique<Stream>(std::move(file), path);
}

/// What a failure of two paths is about.
std::string FromTo(const std::string& source, const std::string& target) {
  return source + " to " + target;
}

std::uint64_t Joined(DWORD high, DWORD low) {
  return (std::uint64_t{high} << 32) | low;
}

host::FolderEntry EntryOf(const WIN32_FIND_DATAW& found, std::string name) {
  const bool isFolder = IsFolder(found.dwFileAttributes);
  return {.name = std::move(name),
          .isFolder = isFolder,
          .size = isFolder ? 0 : Joined(found.nFileSizeHigh, found.nFileSizeLow),
          .modified = Joined(found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime),
          .isLink = (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0,
          .isReadOnly = (found.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0};
}

/// "A:" as "A:\", the only form that the volume calls take. What names no drive becomes a name that
/// no volume has: the calls would take an empty one for the current drive.
std::wstring RootOf(const std::string& drive) {
  const bool namesDrive = drive.size() == 2 && drive[1] == ':';
  return (namesDrive ? Utf16(drive) : L"?:") + L'\\';
}

BOOL ReadLabel(const std::string& drive, std::wstring& label) {
  wchar_t name[MAX_PATH + 1] = {};
  const BOOL read =
      GetVolumeInformationW(RootOf(drive).c_str(), name, MAX_PATH + 1, nullptr, nullptr, nullptr, nullptr, 0);
  label = name;
  return read;
}

}  // namespace

bool Win32FileSystem::FileExists(const std::string& path) {
  const DWORD attributes = AttributesOf(path);
  return attributes != INVALID_FILE_ATTRIBUTES && !IsFolder(attributes);
}

bool Win32FileSystem::FolderExists(const std::string& path) {
  const DWORD attributes = AttributesOf(path);
  return attributes != INVALID_FILE_ATTRIBUTES && IsFolder(attributes);
}

std::int64_t Win32FileSystem::FileSize(const std::string& path) {
  return SizeOf(ApiPath(path));
}

base::Outcome Win32FileSystem::List(const std::string& folder, const std::string& pattern,
                                    std::vector<host::FolderEntry>& entries) {
  entries.clear();
  const std::wstring path = UnlimitedPath(folder);
  if (path.empty()) return Failed(folder, ERROR_BAD_PATHNAME);
  // The pattern is matched here: the system would also match the short 8.3 names that it
  // keeps beside the long ones, and so take "a.cabinet" for "*.cab".
  const DWORD error = ForEachEntry(path, [&](const WIN32_FIND_DATAW& entry) {
    StayAlive();
    std::string name = Utf8(entry.cFileName);
    if (base::MatchesFileName(name, pattern)) entries.push_back(EntryOf(entry, std::move(name)));
  });
  if (error != ERROR_SUCCESS) entries.clear();
  return OutcomeOfError(error, folder);
}

base::Obtained<host::TextReader> Win32FileSystem::OpenText(const std::string& path) {
  return Open<host::TextReader, FileTextReader>(patience_, path, kForReading);
}

base::Obtained<host::TextWriter> Win32FileSystem::AppendText(const std::string& path) {
  return Open<host::TextWriter, FileTextWriter>(patience_, path, kForAppending);
}

base::Obtained<host::TextWriter> Win32FileSystem::CreateText(const std::string& path) {
  return Open<host::TextWriter, FileTextWriter>(patience_, path, kForWriting);
}

base::Obtained<host::BinaryReader> Win32FileSystem::OpenBinary(const std::string& path) {
  return Open<host::BinaryReader, FileBinaryReader>(patience_, path, kForReading);
}

base::Obtained<host::BinaryReader> Win32FileSystem::OpenUncached(const std::string& path) {
  return Open<host::BinaryReader, UncachedReader>(patience_, path, kForUncachedReading);
}

base::Obtained<host::BinaryWriter> Win32FileSystem::AppendBinary(const std::string& path) {
  return Open<host::BinaryWriter, FileBinaryWriter>(patience_, path, kForAppending);
}

base::Obtained<host::BinaryWriter> Win32FileSystem::CreateBinary(const std::string& path) {
  return Open<host::BinaryWriter, FileBinaryWriter>(patience_, path, kForWriting);
}

base::Outcome Win32FileSystem::Flush(const std::string& path) {
  return OutcomeOfError(patience_.WhileInUse([&] { return FlushFile(ApiPath(path)); }), path);
}

base::Outcome Win32FileSystem::RemoveFile(const std::string& path) {
  return OutcomeOfError(patience_.WhileInUse([&] { return DeleteForced(ApiPath(path)); }), path);
}

base::Outcome Win32FileSystem::RemoveFolder(const std::string& path) {
  const std::wstring folder = UnlimitedPath(path);
  if (folder.empty()) return Failed(path, ERROR_BAD_PATHNAME);
  // A drive has no folder of its own to delete; emptying it instead would be a disaster.
  if (IsDriveRoot(folder)) return Failed(path, ERROR_CURRENT_DIRECTORY);
  if (!FolderExists(path)) return Failed(path, ERROR_PATH_NOT_FOUND);
  // What is left of a tree may also be a folder that is not empty for a moment longer.
  return patience_.Repeat([&] { return DeleteTree(folder, patience_.Meanwhile()); },
                          [](const base::Outcome& deleted) { return !deleted.IsDone(); });
}

base::Outcome Win32FileSystem::MoveTo(const std::string& source, const std::string& target) {
  if (!FileExists(source)) return Failed(source, ERROR_FILE_NOT_FOUND);
  const std::wstring from = ApiPath(source);
  const std::wstring to = ApiPath(target);
  DWORD error = patience_.WhileInUse(
      [&] { return MoveFileExW(from.c_str(), to.c_str(), 0) != FALSE ? DWORD{ERROR_SUCCESS} : GetLastError(); });
  if (error == ERROR_NOT_SAME_DEVICE) {
    // The system's own move to another volume deletes the source without a look at the copy.
    error = CopyToNewFile(from, to, patience_);
    if (error == ERROR_SUCCESS) error = patience_.WhileInUse([&] { return DeleteForced(from); });
  }
  return OutcomeOfError(error, FromTo(source, target));
}

base::Outcome Win32FileSystem::MoveOver(const std::string& source, const std::string& target) {
  if (!FileExists(source)) return Failed(source, ERROR_FILE_NOT_FOUND);
  const DWORD old = AttributesOf(target);
  // Not every system refuses these of its own.
  if (old != INVALID_FILE_ATTRIBUTES && (IsFolder(old) || (old & FILE_ATTRIBUTE_READONLY) != 0))
    return Failed(FromTo(source, target), ERROR_ACCESS_DENIED);
  const DWORD error =
      patience_.WhileInUse([&] { return Replace(ApiPath(source), ApiPath(target), MOVEFILE_WRITE_THROUGH); });
  return OutcomeOfError(error, FromTo(source, target));
}

base::Outcome Win32FileSystem::CopyTo(const std::string& source, const std::string& target) {
  const std::wstring from = ApiPath(source);
  const std::wstring to = ApiPath(target);
  const bool isNew = AttributesOf(target) == INVALID_FILE_ATTRIBUTES;
  const DWORD error = isNew ? CopyToNewFile(from, to, patience_) : CopyOver(from, to, patience_);
  return OutcomeOfError(error, FromTo(source, target));
}

base::Outcome Win32FileSystem::SetReadOnly(const std::string& path) {
  const DWORD attributes = AttributesOf(path);
  const bool known = attributes != INVALID_FILE_ATTRIBUTES;
  return OutcomeOf(known && SetFileAttributesW(ApiPath(path).c_str(), attributes | FILE_ATTRIBUTE_READONLY) != FALSE,
                   path);
}

base::Outcome Win32FileSystem::MakeFolder(const std::string& path) {
  return OutcomeOf(CreateDirectoryW(ApiPath(path).c_str(), nullptr), path);
}

base::Outcome Win32FileSystem::MakePrivateFolder(const std::string& path) {
  return OutcomeOfError(CreatePrivateFolder(ApiPath(path)), path);
}

std::string Win32FileSystem::CurrentFolder() {
  std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
  folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
  return Utf8(folder);
}

base::Outcome Win32FileSystem::SetCurrentFolder(const std::string& path) {
  return OutcomeOf(SetCurrentDirectoryW(Utf16(path).c_str()), path);
}

std::string Win32FileSystem::TemporaryFolder() {
  std::wstring folder(MAX_PATH + 1, L'\0');
  const DWORD length = GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
  folder.resize(length <= MAX_PATH ? length : 0);
  return Utf8(folder);
}

bool Win32Drives::IsReady(const std::string& drive) {
  std::wstring label;
  return ReadLabel(drive, label) != FALSE;
}

std::int64_t Win32Drives::FreeSpace(const std::string& drive) {
  constexpr std::int64_t kNotReady = -1;
  constexpr ULONGLONG kMost = std::numeric_limits<std::int64_t>::max();
  ULARGE_INTEGER available{};
  if (GetDiskFreeSpaceExW(RootOf(drive).c_str(), &available, nullptr, nullptr) == FALSE) return kNotReady;
  return static_cast<std::int64_t>(available.QuadPart < kMost ? available.QuadPart : kMost);
}

std::optional<std::string> Win32Drives::VolumeLabel(const std::string& drive) {
  std::wstring label;
  return ReadLabel(drive, label) != FALSE ? std::optional(Utf8(label)) : std::nullopt;
}

base::Outcome Win32Drives::SetVolumeLabel(const std::string& drive, const std::string& label) {
  return OutcomeOf(SetVolumeLabelW(RootOf(drive).c_str(), Utf16(label).c_str()), drive);
}

}  // namespace windows
