// The program's view of the imaginary disks: the contract's calls, counted.
#pragma once

#include <functional>

#include "fakes/CallCounter.h"
#include "fakes/Disk.h"
#include "host/Drives.h"
#include "host/FileSystem.h"

namespace fakes {

class FakeFileSystem : public host::FileSystem {
 public:
  FakeFileSystem(Disk& disk, CallCounter& calls) : disk_(disk), calls_(calls) {}

  /// As GetTempPath gives it, with its "\"; empty when it cannot be had.
  std::string temporaryFolder = "C:\\Users\\Operator\\Temp\\";

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
  std::string CurrentFolder() override { return disk_.CurrentFolder(); }
  std::int32_t SetCurrentFolder(const std::string& path) override;
  std::string TemporaryFolder() override;

 private:
  /// 0, or -1 when the call is to fail or the disk refused.
  std::int32_t Answer(const char* method, const std::string& path, const std::function<bool()>& work);
  bool Fails(const char* method, const std::string& path) { return calls_.Fails("FileSystem", method, path); }

  Disk& disk_;
  CallCounter& calls_;
};

class FakeDrives : public host::Drives {
 public:
  FakeDrives(Disk& disk, CallCounter& calls) : disk_(disk), calls_(calls) {}

  bool IsReady(const std::string& drive) override;
  std::int64_t FreeSpace(const std::string& drive) override;
  std::int32_t VolumeLabel(const std::string& drive, std::string& label) override;
  std::int32_t SetVolumeLabel(const std::string& drive, const std::string& label) override;

 private:
  /// The drive when it is ready and the call is not to fail; else null.
  Drive* Ready(const char* method, const std::string& drive);

  Disk& disk_;
  CallCounter& calls_;
};

}  // namespace fakes
