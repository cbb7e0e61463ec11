// Drives and the volumes in them.
#pragma once

#include "host/Drives.h"

namespace windows {

class Win32Drives : public host::Drives {
 public:
  bool IsReady(const std::string& drive) override;
  std::int64_t FreeSpace(const std::string& drive) override;
  std::int32_t VolumeLabel(const std::string& drive, std::string& label) override;
  std::int32_t SetVolumeLabel(const std::string& drive, const std::string& label) override;
};

}  // namespace windows
