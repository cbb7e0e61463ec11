#include "fakes/FakeFileSystem.h"

#include <algorithm>
#include <utility>

#include "fakes/Text.h"

namespace fakes {
namespace {

/// An open file; counts itself out when it is closed.
class Handle {
 public:
  Handle(std::shared_ptr<Entry> file, int Entry::*counter) : file_(std::move(file)), counter_(counter) {
    ++(*file_.*counter_);
  }
  ~Handle() { Close(); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  Entry* File() const { return file_.get(); }
  void Close() {
    if (file_) --(*file_.*counter_);
    file_.reset();
  }

 private:
  std::shared_ptr<Entry> file_;
  int Entry::*counter_;
};

class Reading {
 public:
  Reading(std::shared_ptr<Entry> file, Disk& disk, CallCounter& calls, std::string path)
      : handle_(std::move(file), &Entry::readers), disk_(disk), calls_(calls), path_(std::move(path)) {}

 protected:
  bool Fails(const char* contract, const char* method) {
    const Drive* drive = disk_.FindDrive(disk_.Absolute(path_));
    return calls_.Fails(contract, method, path_) || drive == nullptr || !drive->ready;
  }
  const std::string& Bytes() const { return handle_.File()->bytes; }
  std::size_t at_ = 0;

 private:
  Handle handle_;
  Disk& disk_;
  CallCounter& calls_;
  std::string path_;
};

class FakeTextReader : public host::TextReader, private Reading {
 public:
  using Reading::Reading;
  bool ReadLine(std::string& line) override {
    failed_ = Fails("TextReader", "ReadLine");
    if (failed_ || at_ >= Bytes().size()) return false;
    const std::size_t end = std::min(Bytes().find('\n', at_), Bytes().size());
    std::string bytes = Bytes().substr(at_, end - at_);
    if (bytes.ends_with('\r')) bytes.pop_back();
    line = FromCodePage(bytes);
    at_ = end + 1;
    return true;
  }
  bool Failed() const override { return failed_; }

 private:
  bool failed_ = false;
};

class FakeBinaryReader : public host::BinaryReader, private Reading {
 public:
  using Reading::Reading;
  std::int64_t Read(std::byte* data, std::size_t count) override {
    if (Fails("BinaryReader", "Read")) return -1;
    const std::size_t taken = std::min(count, Bytes().size() - at_);
    std::transform(Bytes().begin() + static_cast<std::ptrdiff_t>(at_),
                   Bytes().begin() + static_cast<std::ptrdiff_t>(at_ + taken), data,
                   [](char c) { return static_cast<std::byte>(c); });
    at_ += taken;
    return static_cast<std::int64_t>(taken);
  }
};

class Writing {
 public:
  Writing(std::shared_ptr<Entry> file, Disk& disk, CallCounter& calls, std::string path)
      : handle_(std::move(file), &Entry::writers), disk_(disk), calls_(calls), path_(std::move(path)) {}

 protected:
  std::int32_t Add(const char* contract, const std::string& bytes) {
    if (calls_.Fails(contract, "Write", path_) || handle_.File() == nullptr) return -1;
    return disk_.Append(path_, *handle_.File(), bytes) ? 0 : -1;
  }
  std::int32_t Shut(const char* contract) {
    handle_.Close();
    return calls_.Fails(contract, "Close", path_) ? -1 : 0;
  }

 private:
  Handle handle_;
  Disk& disk_;
  CallCounter& calls_;
  std::string path_;
};

class FakeTextWriter : public host::TextWriter, private Writing {
 public:
  using Writing::Writing;
  std::int32_t Write(const std::string& text) override { return Add("TextWriter", ToCodePage(text)); }
  std::int32_t Close() override { return Shut("TextWriter"); }
};

class FakeBinaryWriter : public host::BinaryWriter, private Writing {
 public:
  using Writing::Writing;
  std::int32_t Write(const std::byte* data, std::size_t count) override {
    std::string bytes(count, '\0');
    std::transform(data, data + count, bytes.begin(), [](std::byte b) { return static_cast<char>(b); });
    return Add("BinaryWriter", bytes);
  }
  std::int32_t Close() override { return Shut("BinaryWriter"); }
};

std::shared_ptr<Entry> Readable(Disk& disk, const std::string& path) {
  auto file = disk.Find(path);
  return file && !file->isFolder && file->writers == 0 ? file : nullptr;
}

}  // namespace

std::int32_t FakeFileSystem::Answer(const char* method, const std::string& path, const std::function<bool()>& work) {
  return !Fails(method, path) && work() ? 0 : -1;
}

bool FakeFileSystem::FileExists(const std::string& path) {
  return !Fails("FileExists", path) && disk_.IsFile(path);
}

bool FakeFileSystem::FolderExists(const std::string& path) {
  return !Fails("FolderExists", path) && disk_.IsFolder(path);
}

std::int64_t FakeFileSystem::FileSize(const std::string& path) {
  if (Fails("FileSize", path) || !disk_.IsFile(path)) return -1;
  return static_cast<std::int64_t>(disk_.Find(path)->bytes.size());
}

std::int32_t FakeFileSystem::List(const std::string& folder, const std::string& pattern,
                                  std::vector<host::FolderEntry>& entries) {
  entries.clear();
  if (Fails("List", folder) || !disk_.IsFolder(folder)) return -1;
  for (const auto& entry : disk_.Children(folder))
    if (FitsWildcard(entry->name, pattern)) entries.push_back({entry->name, entry->isFolder, entry->bytes.size()});
  return 0;
}

std::unique_ptr<host::TextReader> FakeFileSystem::OpenText(const std::string& path) {
  auto file = Fails("OpenText", path) ? nullptr : Readable(disk_, path);
  return file ? std::make_unique<FakeTextReader>(file, disk_, calls_, path) : nullptr;
}

std::unique_ptr<host::TextWriter> FakeFileSystem::AppendText(const std::string& path) {
  if (Fails("AppendText", path)) return nullptr;
  auto file = disk_.Find(path);
  if (!file) file = disk_.Create(path);
  const bool refused =
      !file || file->isFolder || (file->attributes & kReadOnly) != 0 || file->readers + file->writers > 0;
  return refused ? nullptr : std::make_unique<FakeTextWriter>(file, disk_, calls_, path);
}

std::unique_ptr<host::TextWriter> FakeFileSystem::CreateText(const std::string& path) {
  auto file = Fails("CreateText", path) ? nullptr : disk_.Create(path);
  return file ? std::make_unique<FakeTextWriter>(file, disk_, calls_, path) : nullptr;
}

std::unique_ptr<host::BinaryReader> FakeFileSystem::OpenBinary(const std::string& path) {
  auto file = Fails("OpenBinary", path) ? nullptr : Readable(disk_, path);
  return file ? std::make_unique<FakeBinaryReader>(file, disk_, calls_, path) : nullptr;
}

std::unique_ptr<host::BinaryWriter> FakeFileSystem::CreateBinary(const std::string& path) {
  auto file = Fails("CreateBinary", path) ? nullptr : disk_.Create(path);
  return file ? std::make_unique<FakeBinaryWriter>(file, disk_, calls_, path) : nullptr;
}

std::int32_t FakeFileSystem::RemoveFile(const std::string& path) {
  return Answer("RemoveFile", path, [&] { return disk_.IsFile(path) && disk_.Remove(path); });
}

std::int32_t FakeFileSystem::RemoveFolder(const std::string& path) {
  return Answer("RemoveFolder", path, [&] { return disk_.IsFolder(path) && disk_.Remove(path); });
}

std::int32_t FakeFileSystem::MoveTo(const std::string& source, const std::string& target) {
  return Answer("MoveTo", source, [&] { return disk_.IsFile(source) && disk_.Move(source, target); });
}

std::int32_t FakeFileSystem::CopyTo(const std::string& source, const std::string& target) {
  return Answer("CopyTo", source, [&] { return disk_.Copy(source, target); });
}

std::int32_t FakeFileSystem::ClearAttributes(const std::string& path) {
  return Answer("ClearAttributes", path, [&] {
    const auto entry = disk_.Find(path);
    if (entry) entry->attributes = 0;
    return entry != nullptr;
  });
}

std::int32_t FakeFileSystem::MakeFolder(const std::string& path) {
  return Answer("MakeFolder", path, [&] { return disk_.MakeFolder(path); });
}

std::int32_t FakeFileSystem::MakePrivateFolder(const std::string& path) {
  return Answer("MakePrivateFolder", path, [&] { return disk_.MakeFolder(path); });
}

std::int32_t FakeFileSystem::SetCurrentFolder(const std::string& path) {
  return Answer("SetCurrentFolder", path, [&] { return disk_.SetCurrentFolder(path); });
}

std::string FakeFileSystem::TemporaryFolder() {
  return Fails("TemporaryFolder", "") ? std::string() : temporaryFolder;
}

Drive* FakeDrives::Ready(const char* method, const std::string& drive) {
  const bool fails = calls_.Fails("Drives", method, drive);
  Drive* found = disk_.FindDrive(drive);
  return fails || found == nullptr || !found->ready ? nullptr : found;
}

bool FakeDrives::IsReady(const std::string& drive) {
  return Ready("IsReady", drive) != nullptr;
}

std::int64_t FakeDrives::FreeSpace(const std::string& drive) {
  return Ready("FreeSpace", drive) == nullptr ? -1 : disk_.FreeSpace(drive);
}

std::int32_t FakeDrives::VolumeLabel(const std::string& drive, std::string& label) {
  const Drive* found = Ready("VolumeLabel", drive);
  if (found != nullptr) label = found->label;
  return found != nullptr ? 0 : -1;
}

std::int32_t FakeDrives::SetVolumeLabel(const std::string& drive, const std::string& label) {
  Drive* found = Ready("SetVolumeLabel", drive);
  if (found == nullptr || !found->writable) return -1;
  found->label = label;
  return 0;
}

}  // namespace fakes
