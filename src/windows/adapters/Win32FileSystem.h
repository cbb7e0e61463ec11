// Files, folders and drives through the wide API.
#pragma once

#include "host/FileSystem.h"
#include "windows/adapters/Patience.h"
#include "windows/adapters/Win32Desktop.h"

namespace windows {

class Win32FileSystem : public host::FileSystem {
 public:
  /// `loop`, where there is one, serves painting and other windows while a call works on many files or a large one, or
  /// waits for a file that is in use: opening, deleting, moving and copying do, for some seconds.
  explicit Win32FileSystem(Win32MessageLoop* loop = nullptr) : loop_(loop) {}

  bool FileExists(const std::string& path) override;
  bool FolderExists(const std::string& path) override;
  std::int64_t FileSize(const std::string& path) override;
  base::Outcome List(const std::string& folder, const std::string& pattern,
                     std::vector<host::FolderEntry>& entries) override;
  base::Obtained<host::TextReader> OpenText(const std::string& path) override;
  base::Obtained<host::TextWriter> AppendText(const std::string& path) override;
  base::Obtained<host::TextWriter> CreateText(const std::string& path) override;
  base::Obtained<host::BinaryReader> OpenBinary(const std::string& path) override;
  base::Obtained<host::BinaryReader> OpenUncached(const std::string& path) override;
  base::Obtained<host::BinaryWriter> CreateBinary(const std::string& path) override;
  base::Obtained<host::BinaryWriter> AppendBinary(const std::string& path) override;
  base::Outcome Flush(const std::string& path) override;
  base::Outcome RemoveFile(const std::string& path) override;
  base::Outcome RemoveFolder(const std::string& path) override;
  base::Outcome MoveTo(const std::string& source, const std::string& target) override;
  base::Outcome MoveOver(const std::string& source, const std::string& target) override;
  base::Outcome CopyTo(const std::string& source, const std::string& target) override;
  base::Outcome SetReadOnly(const std::string& path) override;
  base::Outcome MakeFolder(const std::string& path) override;
  base::Outcome MakePrivateFolder(const std::string& path) override;
  std::string CurrentFolder() override;
  base::Outcome SetCurrentFolder(const std::string& path) override;
  std::string TemporaryFolder() override;

 private:
  void StayAlive() {
    if (loop_ != nullptr) loop_->ServeWithoutInput();
  }

  Win32MessageLoop* loop_;
  Patience patience_{[this] { StayAlive(); }};
};

class Win32Drives : public host::Drives {
 public:
  bool IsReady(const std::string& drive) override;
  std::int64_t FreeSpace(const std::string& drive) override;
  std::optional<std::string> VolumeLabel(const std::string& drive) override;
  base::Outcome SetVolumeLabel(const std::string& drive, const std::string& label) override;
};

}  // namespace windows
