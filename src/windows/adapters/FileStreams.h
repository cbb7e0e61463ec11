// Readers and writers on Windows files. Each is made from the open file and its path.
#pragma once

#include "host/FileSystem.h"
#include "windows/adapters/Win32.h"

namespace windows {

/// Reads in blocks of 64 KB and decodes line by line.
class FileTextReader : public host::TextReader {
 public:
  FileTextReader(Handle file, const std::string& /*path*/) : file_(std::move(file)) {}
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
  FileBinaryWriter(Handle file, std::string path) : file_(std::move(file)), path_(std::move(path)) {}
  base::Outcome Write(const std::byte* data, std::size_t count) override;
  base::Outcome Close() override;

 private:
  Handle file_;
  std::string path_;  ///< for the words of a failure
};

class FileTextWriter : public host::TextWriter {
 public:
  FileTextWriter(Handle file, std::string path) : file_(std::move(file), std::move(path)) {}
  base::Outcome Write(const std::string& text) override;
  base::Outcome Close() override { return file_.Close(); }

 private:
  FileBinaryWriter file_;
};

class FileBinaryReader : public host::BinaryReader {
 public:
  FileBinaryReader(Handle file, const std::string& /*path*/) : file_(std::move(file)) {}
  std::int64_t Read(std::byte* data, std::size_t count) override;
  bool Seek(std::uint64_t offset) override;

 private:
  Handle file_;
};

/// For a file that was opened without buffering. The system then takes nothing but whole sectors, in the file and in
/// memory; so this reads whole blocks and gives out of them what is asked for.
class UncachedReader : public host::BinaryReader {
 public:
  UncachedReader(Handle file, const std::string& /*path*/);
  std::int64_t Read(std::byte* data, std::size_t count) override;
  bool Seek(std::uint64_t offset) override;

 private:
  struct PageFreer {
    void operator()(std::byte* pages) const { VirtualFree(pages, 0, MEM_RELEASE); }
  };

  /// Reads the block in which the place lies; false on an error.
  bool Refill();

  Handle file_;
  std::unique_ptr<std::byte, PageFreer> block_;
  std::uint64_t blockAt_ = 0;  ///< where the block begins in the file
  std::size_t size_ = 0;       ///< bytes in the block; fewer than it holds only at the file's end
  std::uint64_t position_ = 0;
};

}  // namespace windows
