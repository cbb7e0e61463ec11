// The program's view of the imaginary disks: open files, the file system and the drives, their calls counted.
#pragma once

#include <algorithm>
#include <memory>

#include "fakes/CallCounter.h"
#include "fakes/Disk.h"
#include "fakes/Text.h"
#include "host/FileSystem.h"

namespace fakes {

/// Counts itself out when it is closed.
template <class Contract, int Entry::*kUsers>
class OpenFile : public Contract {
 public:
  using Opened = Contract;

  OpenFile(std::shared_ptr<Entry> file, Disk& disk, CallCounter& calls, std::string path)
      : file_(std::move(file)), disk_(disk), calls_(calls), path_(std::move(path)) {
    ++((*file_).*kUsers);
  }
  ~OpenFile() override { Leave(); }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

 protected:
  void Leave() {
    if (file_) --((*file_).*kUsers);
    file_.reset();
  }
  bool FailsToRead(const char* contract, const char* method) {
    return calls_.Fails(contract, method, path_) || !disk_.FindDrive(disk_.Absolute(path_))->ready;
  }
  base::Outcome Append(const char* contract, const std::string& bytes) {
    const auto append = [&] { return file_ && disk_.Append(path_, *file_, bytes); };
    return ContractCalls(calls_, contract).Do("Write", path_, append, "not all was written");
  }
  base::Outcome CloseWriter(const char* contract) {
    Leave();
    return ContractCalls(calls_, contract).Do("Close", path_, [] { return true; });
  }
  const std::string& Bytes() const { return file_->bytes; }

 private:
  std::shared_ptr<Entry> file_;
  Disk& disk_;
  CallCounter& calls_;
  std::string path_;
};

class FakeTextReader : public OpenFile<host::TextReader, &Entry::readers> {
 public:
  using OpenFile::OpenFile;
  bool ReadLine(std::string& line) override {
    failed_ = FailsToRead("TextReader", __func__);
    if (failed_ || at_ >= Bytes().size()) return false;
    const std::size_t end = std::min(Bytes().find('\n', at_), Bytes().size());
    line = FromCodePage(Bytes().substr(at_, end - at_));
    if (line.ends_with('\r')) line.pop_back();
    at_ = end + 1;
    return true;
  }
  bool Failed() const override { return failed_; }

 private:
  std::size_t at_ = 0;
  bool failed_ = false;
};

class FakeBinaryReader : public OpenFile<host::BinaryReader, &Entry::readers> {
 public:
  using OpenFile::OpenFile;
  std::int64_t Read(std::byte* data, std::size_t count) override {
    if (FailsToRead("BinaryReader", __func__)) return -1;
    const std::size_t taken = Bytes().copy(reinterpret_cast<char*>(data), count, at_);
    at_ += taken;
    return static_cast<std::int64_t>(taken);
  }
  bool Seek(std::uint64_t offset) override {
    if (FailsToRead("BinaryReader", __func__) || offset > INT64_MAX) return false;
    at_ = static_cast<std::size_t>(std::min<std::uint64_t>(offset, Bytes().size()));
    return true;
  }

 protected:
  std::size_t Place() const { return at_; }

 private:
  std::size_t at_ = 0;
};

/// Reads what was on the medium when it was opened.
class FakeUncachedReader : public FakeBinaryReader {
 public:
  FakeUncachedReader(std::shared_ptr<Entry> file, Disk& disk, CallCounter& calls, const std::string& path)
      : FakeBinaryReader(std::move(file), disk, calls, path), medium_(disk.OnMedium(path)) {}
  std::int64_t Read(std::byte* data, std::size_t count) override {
    const std::size_t begin = Place();
    const bool isBroken = medium_.readable < medium_.bytes.size();
    if (isBroken && begin >= medium_.readable) return -1;
    const std::int64_t taken =
        FakeBinaryReader::Read(data, isBroken ? std::min(count, medium_.readable - begin) : count);
    if (taken > 0) medium_.bytes.copy(reinterpret_cast<char*>(data), static_cast<std::size_t>(taken), begin);
    return taken;
  }

 private:
  MediumBytes medium_;
};

class FakeTextWriter : public OpenFile<host::TextWriter, &Entry::writers> {
 public:
  using OpenFile::OpenFile;
  base::Outcome Write(const std::string& text) override { return Append("TextWriter", ToCodePage(text)); }
  base::Outcome Close() override { return CloseWriter("TextWriter"); }
};

class FakeBinaryWriter : public OpenFile<host::BinaryWriter, &Entry::writers> {
 public:
  using OpenFile::OpenFile;
  base::Outcome Write(const std::byte* data, std::size_t count) override {
    return Append("BinaryWriter", {reinterpret_cast<const char*>(data), count});
  }
  base::Outcome Close() override { return CloseWriter("BinaryWriter"); }
};

class FakeFileSystem : public host::FileSystem {
 public:
  FakeFileSystem(Disk& disk, CallCounter& calls) : disk_(disk), calls_(calls) {}

  /// As GetTempPath gives it, with its "\"; empty when it cannot be had.
  std::string temporaryFolder = "C:\\Users\\Operator\\Temp\\";

  bool FileExists(const std::string& path) override { return !Fails(__func__, path) && disk_.IsFile(path); }
  bool FolderExists(const std::string& path) override { return !Fails(__func__, path) && disk_.IsFolder(path); }
  std::int64_t FileSize(const std::string& path) override {
    const bool known = !Fails(__func__, path) && disk_.IsFile(path);
    return known ? static_cast<std::int64_t>(disk_.Find(path)->bytes.size()) : -1;
  }
  base::Outcome List(const std::string& folder, const std::string& pattern,
                     std::vector<host::FolderEntry>& entries) override {
    entries.clear();
    return Do(__func__, folder, [&] {
      if (!disk_.IsFolder(folder)) return false;
      for (const auto& entry : disk_.Children(folder))
        if (FitsWildcard(entry->name, pattern))
          entries.push_back({.name = entry->name,
                             .isFolder = entry->isFolder,
                             .size = entry->bytes.size(),
                             .modified = entry->modified,
                             .isReadOnly = (entry->attributes & kReadOnly) != 0});
      return true;
    });
  }
  base::Obtained<host::TextReader> OpenText(const std::string& path) override {
    return Open<FakeTextReader>(__func__, path, [&] { return Readable(path); });
  }
  base::Obtained<host::TextWriter> AppendText(const std::string& path) override {
    return Open<FakeTextWriter>(__func__, path, [&] { return disk_.OpenEnd(path); });
  }
  base::Obtained<host::TextWriter> CreateText(const std::string& path) override {
    return Open<FakeTextWriter>(__func__, path, [&] { return disk_.Create(path); });
  }
  base::Obtained<host::BinaryReader> OpenBinary(const std::string& path) override {
    return Open<FakeBinaryReader>(__func__, path, [&] { return Readable(path); });
  }
  base::Obtained<host::BinaryWriter> CreateBinary(const std::string& path) override {
    return Open<FakeBinaryWriter>(__func__, path, [&] { return disk_.Create(path); });
  }
  base::Obtained<host::BinaryWriter> AppendBinary(const std::string& path) override {
    return Open<FakeBinaryWriter>(__func__, path, [&] { return disk_.OpenEnd(path); });
  }
  base::Outcome RemoveFile(const std::string& path) override {
    return Do(__func__, path, [&] { return disk_.IsFile(path) && disk_.Remove(path); });
  }
  base::Outcome RemoveFolder(const std::string& path) override {
    return Do(__func__, path, [&] { return disk_.IsFolder(path) && disk_.Remove(path); });
  }
  base::Outcome MoveTo(const std::string& source, const std::string& target) override {
    return Do(__func__, source, [&] { return disk_.IsFile(source) && disk_.Move(source, target); });
  }
  base::Outcome CopyTo(const std::string& source, const std::string& target) override {
    return Do(__func__, source, [&] {
      const bool ontoItself = disk_.IsFile(source) && disk_.Find(source) == disk_.Find(target);
      return ontoItself || disk_.Replace(source, target);
    });
  }
  base::Outcome SetReadOnly(const std::string& path) override {
    return Do(__func__, path, [&] {
      const auto entry = disk_.Find(path);
      if (entry) entry->attributes |= kReadOnly;
      return entry != nullptr;
    });
  }
  base::Outcome MakeFolder(const std::string& path) override {
    return Do(__func__, path, [&] { return disk_.MakeFolder(path); });
  }
  base::Outcome MakePrivateFolder(const std::string& path) override {
    return Do(__func__, path, [&] { return disk_.MakeFolder(path); });
  }
  std::string CurrentFolder() override { return disk_.CurrentFolder(); }
  base::Outcome SetCurrentFolder(const std::string& path) override {
    // The one call here that takes no longer paths.
    return Do(__func__, path, [&] { return !IsTooLong(disk_.Absolute(path)) && disk_.SetCurrentFolder(path); });
  }
  std::string TemporaryFolder() override { return Fails(__func__, "") ? "" : temporaryFolder; }
  base::Obtained<host::BinaryReader> OpenUncached(const std::string& path) override {
    return Open<FakeUncachedReader>(__func__, path, [&] { return Readable(path); });
  }
  base::Outcome Flush(const std::string& path) override {
    return Do(__func__, path, [&] { return disk_.Flush(path); });
  }
  base::Outcome MoveOver(const std::string& source, const std::string& target) override {
    return Do(__func__, source, [&] { return disk_.MoveOver(source, target); });
  }

 private:
  bool Fails(const char* method, const std::string& path) { return calls_.Fails("FileSystem", method, path); }
  base::Outcome Refusal(const std::string& path) {
    const auto entry = disk_.Find(path);
    return base::Failure(path + (!entry ? ": not found" : InUse(*entry) ? ": in use" : ": refused"));
  }
  template <class Work>
  base::Outcome Do(const char* method, const std::string& path, Work work) {
    if (Fails(method, path)) return InjectedFault(path);
    return work() ? base::Outcome() : Refusal(path);
  }
  /// `find` yields the file, or null when there is none to be opened.
  template <class File, class Find>
  base::Obtained<typename File::Opened> Open(const char* method, const std::string& path, Find find) {
    if (Fails(method, path)) return InjectedFault(path);
    if (const std::shared_ptr<Entry> file = find()) return std::make_unique<File>(file, disk_, calls_, path);
    return Refusal(path);
  }
  std::shared_ptr<Entry> Readable(const std::string& path) {
    const auto file = disk_.Find(path);
    return file && IsReadable(*file) ? file : nullptr;
  }

  Disk& disk_;
  CallCounter& calls_;
};

class FakeDrives : public host::Drives {
 public:
  FakeDrives(Disk& disk, CallCounter& calls) : disk_(disk), calls_(calls, "Drives") {}

  bool IsReady(const std::string& drive) override { return !calls_.Fails(__func__, drive) && Ready(drive) != nullptr; }
  std::int64_t FreeSpace(const std::string& drive) override {
    return calls_.Fails(__func__, drive) || Ready(drive) == nullptr ? -1 : disk_.FreeSpace(drive);
  }
  std::optional<std::string> VolumeLabel(const std::string& drive) override {
    const Drive* found = calls_.Fails(__func__, drive) ? nullptr : Ready(drive);
    return found == nullptr ? std::nullopt : std::optional(found->label);
  }
  base::Outcome SetVolumeLabel(const std::string& drive, const std::string& label) override {
    const auto set = [&] {
      Drive* found = Ready(drive);
      if (found != nullptr) found->label = label;
      return found != nullptr;
    };
    return calls_.Do(__func__, drive, set, "not ready");
  }

 private:
  /// Null when the drive is not there or not ready.
  Drive* Ready(const std::string& drive) {
    Drive* found = disk_.FindDrive(drive);
    return found == nullptr || !found->ready ? nullptr : found;
  }

  Disk& disk_;
  ContractCalls calls_;
};

}  // namespace fakes
