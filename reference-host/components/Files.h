// The few file operations that the components share. Paths are UTF-16.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace components {

/// An open file of Windows that closes itself.
class FileHandle {
 public:
  explicit FileHandle(HANDLE handle) : handle_(handle) {}
  ~FileHandle() {
    if (*this) CloseHandle(handle_);
  }
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;

  explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE Get() const { return handle_; }

 private:
  HANDLE handle_;
};

struct FolderEntry {
  std::wstring name;
  bool isFolder = false;
  FILETIME changed = {};
};

bool IsFolder(const std::wstring& path);
bool IsFile(const std::wstring& path);
/// Everything in `folder`, which ends in "\", but "." and "..". Empty for a folder that cannot be read.
std::vector<FolderEntry> ListFolder(const std::wstring& folder);
/// Makes `folder` and its parents where they are missing.
bool MakeFolder(const std::wstring& folder);
/// The file's bytes; nothing when it cannot be read whole.
std::optional<std::string> ReadFileBytes(const std::wstring& path);
bool WriteFileBytes(const std::wstring& path, const std::string& bytes);
/// Copies, overwriting, and makes sure that the copy is as long as its source: a copy that ran
/// into a read error is at times reported as done.
bool CopyWholeFile(const std::wstring& from, const std::wstring& to);

}  // namespace components
