// The Windows shell.
#pragma once

#include "host/Shell.h"

namespace windows {

class Win32Shell : public host::Shell {
 public:
  std::string BrowseForFolder(const std::string& title, const std::string& initialFolder) override;
  std::string DesktopFolder() override;
  std::int32_t CopyWithProgress(const std::string& source, const std::string& targetFolder,
                                const std::string& title) override;
  bool OpenDocument(const std::string& fileName) override;
  std::int32_t FormatDrive(std::uint32_t drive, std::uint32_t formatId, std::uint32_t options) override;
};

}  // namespace windows
