// Files and folders through the wide API.
#include "windows/adapters/Win32FileSystem.h"

#include "app/TextFormat.h"
#include "windows/adapters/ApiPath.h"
#include "windows/adapters/FileStreams.h"
#include "windows/adapters/FileTree.h"
#include "windows/adapters/PrivateFolder.h"
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

/// A reader leaves others their access: logs and databases are in use while they are read.
Handle OpenForReading(const std::string& path) {
  return Handle(CreateFileW(ApiPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
}

Handle OpenForWriting(const std::string& path, DWORD access, DWORD disposition) {
  return Handle(CreateFileW(ApiPath(path).c_str(), access, FILE_SHARE_READ, nullptr, disposition, FILE_ATTRIBUTE_NORMAL,
                            nullptr));
}

template <typename Stream>
std::unique_ptr<Stream> StreamOn(Handle file) {
  return file ? std::make_unique<Stream>(std::move(file)) : nullptr;
}

std::uint64_t SizeIn(const WIN32_FIND_DATAW& entry) {
  return (std::uint64_t{entry.nFileSizeHigh} << 32) | entry.nFileSizeLow;
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

std::int32_t Win32FileSystem::List(const std::string& folder, const std::string& pattern,
                                   std::vector<host::FolderEntry>& entries) {
  entries.clear();
  // The pattern is matched here: the system would also match the short 8.3 names that it
  // keeps beside the long ones, and so take "a.cabinet" for "*.cab".
  const std::wstring path = UnlimitedPath(folder);
  const bool read = !path.empty() && ForEachEntry(path, [&](const WIN32_FIND_DATAW& entry) {
    StayAlive();
    const std::string name = Utf8(entry.cFileName);
    if (!app::MatchesFileName(name, pattern)) return;
    const bool isFolder = IsFolder(entry.dwFileAttributes);
    entries.push_back({name, isFolder, isFolder ? 0 : SizeIn(entry)});
  });
  if (!read) entries.clear();
  return ResultOf(read);
}

std::unique_ptr<host::TextReader> Win32FileSystem::OpenText(const std::string& path) {
  return StreamOn<FileTextReader>(OpenForReading(path));
}

std::unique_ptr<host::TextWriter> Win32FileSystem::AppendText(const std::string& path) {
  return StreamOn<FileTextWriter>(OpenForWriting(path, FILE_APPEND_DATA, OPEN_ALWAYS));
}

std::unique_ptr<host::TextWriter> Win32FileSystem::CreateText(const std::string& path) {
  return StreamOn<FileTextWriter>(OpenForWriting(path, GENERIC_WRITE, CREATE_ALWAYS));
}

std::unique_ptr<host::BinaryReader> Win32FileSystem::OpenBinary(const std::string& path) {
  return StreamOn<FileBinaryReader>(OpenForReading(path));
}

std::unique_ptr<host::BinaryWriter> Win32FileSystem::CreateBinary(const std::string& path) {
  return StreamOn<FileBinaryWriter>(OpenForWriting(path, GENERIC_WRITE, CREATE_ALWAYS));
}

std::int32_t Win32FileSystem::RemoveFile(const std::string& path) {
  return ResultOf(DeleteForced(ApiPath(path)));
}

std::int32_t Win32FileSystem::RemoveFolder(const std::string& path) {
  const std::wstring folder = UnlimitedPath(path);
  // A drive has no folder of its own to delete; emptying it instead would be a disaster.
  if (folder.empty() || IsDriveRoot(folder) || !FolderExists(path)) return app::kFailed;
  // A program that has just ended, or a virus scanner, may hold a file for a moment longer.
  constexpr int kTries = 20;
  constexpr DWORD kPause = 25;  // milliseconds
  for (int tries = 1; !DeleteTree(folder, [this] { StayAlive(); }); ++tries) {
    if (tries == kTries) return app::kFailed;
    Sleep(kPause);
    StayAlive();
  }
  return app::kDone;
}

std::int32_t Win32FileSystem::MoveTo(const std::string& source, const std::string& target) {
  if (!FileExists(source)) return app::kFailed;
  const std::wstring from = ApiPath(source);
  const std::wstring to = ApiPath(target);
  if (MoveFileExW(from.c_str(), to.c_str(), 0) != FALSE) return app::kDone;
  if (GetLastError() != ERROR_NOT_SAME_DEVICE) return app::kFailed;
  // The system's own move to another volume deletes the source without a look at the copy.
  return ResultOf(CopyToNewFile(from, to, [this] { StayAlive(); }) && DeleteForced(from));
}

std::int32_t Win32FileSystem::CopyTo(const std::string& source, const std::string& target) {
  const std::wstring from = ApiPath(source);
  const std::wstring to = ApiPath(target);
  const bool isNew = AttributesOf(target) == INVALID_FILE_ATTRIBUTES;
  const auto meanwhile = [this] { StayAlive(); };
  return ResultOf(isNew ? CopyToNewFile(from, to, meanwhile) : CopyOver(from, to, meanwhile));
}

std::int32_t Win32FileSystem::ClearAttributes(const std::string& path) {
  return ResultOf(SetFileAttributesW(ApiPath(path).c_str(), FILE_ATTRIBUTE_NORMAL));
}

std::int32_t Win32FileSystem::MakeFolder(const std::string& path) {
  return ResultOf(CreateDirectoryW(ApiPath(path).c_str(), nullptr));
}

std::int32_t Win32FileSystem::MakePrivateFolder(const std::string& path) {
  return ResultOf(CreatePrivateFolder(ApiPath(path)));
}

std::string Win32FileSystem::CurrentFolder() {
  std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
  folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
  return Utf8(folder);
}

std::int32_t Win32FileSystem::SetCurrentFolder(const std::string& path) {
  return ResultOf(SetCurrentDirectoryW(Utf16(path).c_str()));
}

std::string Win32FileSystem::TemporaryFolder() {
  std::wstring folder(MAX_PATH + 1, L'\0');
  const DWORD length = GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
  folder.resize(length <= MAX_PATH ? length : 0);
  return Utf8(folder);
}

}  // namespace windows
