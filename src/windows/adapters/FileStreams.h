// Readers and writers on Windows files.
#pragma once

#include "host/FileSystem.h"
#include "windows/adapters/Handles.h"

namespace windows {

/// Reads in blocks of 64 KB and decodes line by line.
class FileTextReader : public host::TextReader {
 public:
  explicit FileTextReader(Handle file) : file_(std::move(file)) {}
  bool ReadLine(std::string& line) override;
  bool Failed() const override { return failed_; }

 private:
  bool Refill();

  Handle file_;
  std::string block_;
  std::size_t position_ = 0;
  bool failed_ = false;
};

/// Each write goes to the system at once, so that its failure is the caller's to see.
class FileBinaryWriter : public host::BinaryWriter {
 public:
  explicit FileBinaryWriter(Handle file) : file_(std::move(file)) {}
  std::int32_t Write(const std::byte* data, std::size_t count) override;
  std::int32_t Close() override;

 private:
  Handle file_;
};

class FileTextWriter : public host::TextWriter {
 public:
  explicit FileTextWriter(Handle file) : file_(std::move(file)) {}
  std::int32_t Write(const std::string& text) override;
  std::int32_t Close() override { return file_.Close(); }

 private:
  FileBinaryWriter file_;
};

class FileBinaryReader : public host::BinaryReader {
 public:
  explicit FileBinaryReader(Handle file) : file_(std::move(file)) {}
  std::int64_t Read(std::byte* data, std::size_t count) override;

 private:
  Handle file_;
};

}  // namespace windows
