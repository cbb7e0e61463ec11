// A file that appears under its name only when it is complete.
#pragma once

#include <cstdint>
#include <string>

#include "cabarc/Platform.h"
#include "cabarc/Status.h"

namespace cabinet {

/// Written under a temporary name in the same folder, then renamed. Destroyed before that, it leaves nothing.
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
  Status SetAttributes(std::uint8_t attributes, platform::DosStamp stamp);
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

}  // namespace cabinet
