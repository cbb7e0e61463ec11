// Open files on the imaginary disks; their calls are counted.
#pragma once

#include <algorithm>

#include "fakes/CallCounter.h"
#include "fakes/Disk.h"
#include "fakes/Text.h"
#include "host/FileSystem.h"

namespace fakes {

/// Counts itself out when it is closed.
template <class Contract, int Entry::*kUsers>
class OpenFile : public Contract {
 public:
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
  bool Fails(const char* contract, const char* method) { return calls_.Fails(contract, method, path_); }
  bool FailsToRead(const char* contract, const char* method) {
    return Fails(contract, method) || !disk_.FindDrive(disk_.Absolute(path_))->ready;
  }
  std::int32_t Append(const std::string& bytes) { return file_ && disk_.Append(path_, *file_, bytes) ? 0 : -1; }
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

 private:
  std::size_t at_ = 0;
};

class FakeTextWriter : public OpenFile<host::TextWriter, &Entry::writers> {
 public:
  using OpenFile::OpenFile;
  std::int32_t Write(const std::string& text) override {
    return Fails("TextWriter", __func__) ? -1 : Append(ToCodePage(text));
  }
  std::int32_t Close() override {
    Leave();
    return Fails("TextWriter", __func__) ? -1 : 0;
  }
};

class FakeBinaryWriter : public OpenFile<host::BinaryWriter, &Entry::writers> {
 public:
  using OpenFile::OpenFile;
  std::int32_t Write(const std::byte* data, std::size_t count) override {
    return Fails("BinaryWriter", __func__) ? -1 : Append({reinterpret_cast<const char*>(data), count});
  }
  std::int32_t Close() override {
    Leave();
    return Fails("BinaryWriter", __func__) ? -1 : 0;
  }
};

}  // namespace fakes
