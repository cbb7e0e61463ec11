// Files as the archiver reads and writes them: through a large buffer, and under a name only when complete.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "cabarc/Platform.h"
#include "cabarc/Status.h"

namespace cabarc {

/// Reads a file piece by piece through a large buffer.
class BufferedInput {
 public:
  /// `size`: how long the file is, in bytes.
  BufferedInput(platform::File& file, std::uint64_t size)
      : file_(file), buffer_(static_cast<std::size_t>(std::clamp<std::uint64_t>(size, 1, kBufferSize))) {}

  /// Goes on reading at `position`, in bytes from the start of the file.
  Status Seek(std::uint64_t position) {
    next_ = end_ = 0;
    return file_.Seek(position) ? Status{} : FileError("it cannot be read: " + platform::LastError());
  }

  /// Appends the next `size` bytes to `bytes`. Fails when the file ends before, or cannot be read; `bytes` may then
  /// have grown.
  Status Append(std::size_t size, std::vector<std::uint8_t>& bytes) {
    while (size > 0) {
      if (next_ == end_) {
        const std::optional<std::size_t> count = file_.Read(buffer_.data(), buffer_.size());
        if (!count) return FileError("it cannot be read: " + platform::LastError());
        if (*count == 0) return BrokenCabinet("its end is missing");
        next_ = 0;
        end_ = *count;
      }
      const std::size_t count = size < end_ - next_ ? size : end_ - next_;
      const auto from = buffer_.begin() + static_cast<std::ptrdiff_t>(next_);
      bytes.insert(bytes.end(), from, from + static_cast<std::ptrdiff_t>(count));
      next_ += count;
      size -= count;
    }
    return {};
  }

 private:
  static constexpr std::size_t kBufferSize = std::size_t{1} << 20;

  platform::File& file_;
  std::vector<std::uint8_t> buffer_;
  std::size_t next_ = 0;
  std::size_t end_ = 0;
};

/// An open file as a source. It remembers why it could not be read.
class FileSource : public Source {
 public:
  FileSource(platform::File& file, std::uint64_t size) : file_(file), size_(size) {}

  std::int64_t ReadAt(std::uint64_t offset, void* data, std::size_t count) override {
    const std::optional<std::size_t> got = file_.Seek(offset) ? file_.Read(data, count) : std::nullopt;
    if (got) return static_cast<std::int64_t>(*got);
    failure_ = FileError("it cannot be read: " + platform::LastError());
    return -1;
  }
  std::uint64_t Size() override { return size_; }

  const Status& Failure() const { return failure_; }

 private:
  platform::File& file_;
  const std::uint64_t size_;
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
