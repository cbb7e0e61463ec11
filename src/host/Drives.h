// Drives and the volumes in them. A drive is named by its letter and ":", such as "A:".
#pragma once

#include <cstdint>
#include <string>

namespace host {

class Drives {
 public:
  virtual ~Drives() = default;

  /// Whether the drive exists and holds a volume that can be read.
  virtual bool IsReady(const std::string& drive) = 0;
  /// Bytes that this user may still write; -1 when the drive is not ready.
  virtual std::int64_t FreeSpace(const std::string& drive) = 0;
  /// The volume's label. Returns -1 when it cannot be read, and then leaves `label` alone.
  virtual std::int32_t VolumeLabel(const std::string& drive, std::string& label) = 0;
  /// Returns -1 on failure.
  virtual std::int32_t SetVolumeLabel(const std::string& drive, const std::string& label) = 0;
};

}  // namespace host
