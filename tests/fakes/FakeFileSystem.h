// The program's view of the imaginary disks: the contract's calls, counted.
#pragma once

#include "fakes/FakeFiles.h"
#include "host/Drives.h"

namespace fakes {

class FakeFileSystem : public host::FileSystem {
 public:
  FakeFileSystem(Disk& disk, CallCounter& calls) : disk_(disk), calls_(calls) {}

  /// As GetTempPath gives it, with its "\"; empty when it cannot be had.
  std::string temporaryFolder = "C:\\Users\\Operator\\Temp\\";

  bool FileExists(const std::string& path) override { return Goes(__func__, path) && disk_.IsFile(path); }
  bool FolderExists(const std::string& path) override { return Goes(__func__, path) && disk_.IsFolder(path); }
  std::int64_t FileSize(const std::string& path) override {
    return Goes(__func__, path) && disk_.IsFile(path) ? static_cast<std::int64_t>(disk_.Find(path)->bytes.size()) : -1;
  }
  std::int32_t List(const std::string& folder, const std::string& pattern,
                    std::vector<host::FolderEntry>& entries) override {
    entries.clear();
    if (!Goes(__func__, folder) || !disk_.IsFolder(folder)) return -1;
    for (const auto& entry : disk_.Children(folder))
      if (FitsWildcard(entry->name, pattern)) entries.push_back({entry->name, entry->isFolder, entry->bytes.size()});
    return 0;
  }
  std::unique_ptr<host::TextReader> OpenText(const std::string& path) override {
    return Opened<FakeTextReader>(path, Goes(__func__, path) ? Readable(path) : nullptr);
  }
  std::unique_ptr<host::TextWriter> AppendText(const std::string& path) override {
    if (!Goes(__func__, path)) return nullptr;
    const auto file = disk_.Find(path);
    const bool refused = file && (file->isFolder || (file->attributes & kReadOnly) != 0 || InUse(*file));
    return Opened<FakeTextWriter>(path, refused ? nullptr : file ? file : disk_.Create(path));
  }
  std::unique_ptr<host::TextWriter> CreateText(const std::string& path) override {
    return Opened<FakeTextWriter>(path, Goes(__func__, path) ? disk_.Create(path) : nullptr);
  }
  std::unique_ptr<host::BinaryReader> OpenBinary(const std::string& path) override {
    return Opened<FakeBinaryReader>(path, Goes(__func__, path) ? Readable(path) : nullptr);
  }
  std::unique_ptr<host::BinaryWriter> CreateBinary(const std::string& path) override {
    return Opened<FakeBinaryWriter>(path, Goes(__func__, path) ? disk_.Create(path) : nullptr);
  }
  std::int32_t RemoveFile(const std::string& path) override {
    return Goes(__func__, path) && disk_.IsFile(path) && disk_.Remove(path) ? 0 : -1;
  }
  std::int32_t RemoveFolder(const std::string& path) override {
    return Goes(__func__, path) && disk_.IsFolder(path) && disk_.Remove(path) ? 0 : -1;
  }
  std::int32_t MoveTo(const std::string& source, const std::string& target) override {
    return Goes(__func__, source) && disk_.IsFile(source) && disk_.Move(source, target) ? 0 : -1;
  }
  std::int32_t CopyTo(const std::string& source, const std::string& target) override {
    const bool ontoItself = disk_.IsFile(source) && disk_.Find(source) == disk_.Find(target);
    return Goes(__func__, source) && (ontoItself || disk_.Copy(source, target)) ? 0 : -1;
  }
  std::int32_t ClearAttributes(const std::string& path) override {
    const auto entry = Goes(__func__, path) ? disk_.Find(path) : nullptr;
    if (entry) entry->attributes = 0;
    return entry ? 0 : -1;
  }
  std::int32_t MakeFolder(const std::string& path) override {
    return Goes(__func__, path) && disk_.MakeFolder(path) ? 0 : -1;
  }
  std::int32_t MakePrivateFolder(const std::string& path) override {
    return Goes(__func__, path) && disk_.MakeFolder(path) ? 0 : -1;
  }
  std::string CurrentFolder() override { return disk_.CurrentFolder(); }
  std::int32_t SetCurrentFolder(const std::string& path) override {
    return Goes(__func__, path) && disk_.SetCurrentFolder(path) ? 0 : -1;
  }
  std::string TemporaryFolder() override { return Goes(__func__, "") ? temporaryFolder : ""; }

 private:
  bool Goes(const char* method, const std::string& path) { return !calls_.Fails("FileSystem", method, path); }
  std::shared_ptr<Entry> Readable(const std::string& path) {
    const auto file = disk_.Find(path);
    return file && !file->isFolder && file->writers == 0 ? file : nullptr;
  }
  /// Null when there is no file.
  template <class File>
  std::unique_ptr<File> Opened(const std::string& path, const std::shared_ptr<Entry>& file) {
    return file ? std::make_unique<File>(file, disk_, calls_, path) : nullptr;
  }

  Disk& disk_;
  CallCounter& calls_;
};

class FakeDrives : public host::Drives {
 public:
  FakeDrives(Disk& disk, CallCounter& calls) : disk_(disk), calls_(calls) {}

  bool IsReady(const std::string& drive) override { return Ready(__func__, drive) != nullptr; }
  std::int64_t FreeSpace(const std::string& drive) override {
    return Ready(__func__, drive) == nullptr ? -1 : disk_.FreeSpace(drive);
  }
  std::int32_t VolumeLabel(const std::string& drive, std::string& label) override {
    const Drive* found = Ready(__func__, drive);
    if (found != nullptr) label = found->label;
    return found != nullptr ? 0 : -1;
  }
  std::int32_t SetVolumeLabel(const std::string& drive, const std::string& label) override {
    Drive* found = Ready(__func__, drive);
    if (found != nullptr) found->label = label;
    return found != nullptr ? 0 : -1;
  }

 private:
  /// The drive when it is ready and the call is not to fail; else null.
  Drive* Ready(const char* method, const std::string& drive) {
    const bool fails = calls_.Fails("Drives", method, drive);
    Drive* found = disk_.FindDrive(drive);
    return fails || found == nullptr || !found->ready ? nullptr : found;
  }

  Disk& disk_;
  CallCounter& calls_;
};

}  // namespace fakes
