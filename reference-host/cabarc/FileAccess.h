// Files as the archiver reads and writes them: at any place, and under a name only when complete.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "cabarc/Platform.h"
#include "cabarc/Status.h"

namespace cabarc {

/// A file as a source. It remembers why it could not be read.
class FileSource : public Source {
 public:
  /// To be called once, first.
  Status Open(const std::string& path);

  std::int64_t ReadAt(std::uint64_t offset, void* data, std::size_t count) override {
    const std::optional<std::size_t> got = file_.Seek(offset) ? file_.Read(data, count) : std::nullopt;
    if (got) return static_cast<std::int64_t>(*got);
    failure_ = FileError("it cannot be read: " + platform::LastError());
    return -1;
  }
  std::uint64_t Size() override { return size_; }

  const Status& Failure() const { return failure_; }

 private:
  platform::File file_;
  std::uint64_t size_ = 0;
  Status failure_;
};

/// Whether `name` is one under which a NewFile is written before it is complete.
bool IsUnfinishedName(std::string_view name);

/// A file that appears under its name only when it is complete: written under a temporary name in the same folder, then
/// renamed. Destroyed before that, it leaves nothing.
class NewFile {
 public:
  NewFile() = default;
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() { Discard(); }

  /// Begins the file that is to be `path`; one begun before is discarded.
  Status Create(const std::string& path, std::uint8_t attributes);
  bool IsOpen() const { return file_.IsOpen(); }
  Status Write(const void* data, std::size_t size);
  /// Goes on writing at `position`, in bytes from the start.
  Status Seek(std::uint64_t position);
  Status SetAttributes(std::uint8_t attributes, DosStamp stamp);
  /// The file is to be `path` instead, in the same folder.
  void Rename(const std::string& path) { path_ = path; }
  /// Closes the file and gives it its name, in place of a file that has it already.
  Status Commit();
  void Discard();

 private:
  Status Failure() const;

  platform::File file_;
  std::string path_;
  std::string temporary_;
  unsigned number_ = 0;
};

}  // namespace cabarc
