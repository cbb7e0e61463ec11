// Files and folders through the wide API.
#pragma once

#include "host/FileSystem.h"
#include "windows/adapters/Win32MessageLoop.h"

namespace windows {

class Win32FileSystem : public host::FileSystem {
 public:
  /// `loop`, where there is one, serves painting and other windows while a call works on many files or a large one.
  explicit Win32FileSystem(Win32MessageLoop* loop = nullptr) : loop_(loop) {}

  bool FileExists(const std::string& path) override;
  bool FolderExists(const std::string& path) override;
  std::int64_t FileSize(const std::string& path) override;
  std::int32_t List(const std::string& folder, const std::string& pattern,
                    std::vector<host::FolderEntry>& entries) override;
  std::unique_ptr<host::TextReader> OpenText(const std::string& path) override;
  std::unique_ptr<host::TextWriter> AppendText(const std::string& path) override;
  std::unique_ptr<host::TextWriter> CreateText(const std::string& path) override;
  std::unique_ptr<host::BinaryReader> OpenBinary(const std::string& path) override;
  std::unique_ptr<host::BinaryWriter> CreateBinary(const std::string& path) override;
  std::int32_t RemoveFile(const std::string& path) override;
  std::int32_t RemoveFolder(const std::string& path) override;
  std::int32_t MoveTo(const std::string& source, const std::string& target) override;
  std::int32_t CopyTo(const std::string& source, const std::string& target) override;
  std::int32_t ClearAttributes(const std::string& path) override;
  std::int32_t MakeFolder(const std::string& path) override;
  std::int32_t MakePrivateFolder(const std::string& path) override;
  std::string CurrentFolder() override;
  std::int32_t SetCurrentFolder(const std::string& path) override;
  std::string TemporaryFolder() override;

 private:
  void StayAlive() {
    if (loop_ != nullptr) loop_->ServeWithoutInput();
  }

  Win32MessageLoop* loop_;
};

}  // namespace windows
