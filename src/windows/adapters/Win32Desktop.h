// The workstation around the program: the Windows shell and the clock. The message loop has a file of its own.
#pragma once

#include "host/Desktop.h"

namespace windows {

class Win32Shell : public host::Shell {
 public:
  std::string BrowseForFolder(const std::string& title, const std::string& initialFolder) override;
  std::string DesktopFolder() override;
  base::Outcome CopyWithProgress(const std::string& source, const std::string& targetFolder,
                                 const std::string& title) override;
  bool OpenDocument(const std::string& fileName) override;
  host::FormatAnswer FormatDrive(std::uint32_t drive, std::uint32_t formatId, std::uint32_t options) override;
};

class Win32Clock : public host::Clock {
 public:
  base::LocalTime Now() override;
  /// Both formats are those of the Windows user's own regional settings.
  std::string ShortDate(const base::LocalTime& time) override;
  std::string LongTime(const base::LocalTime& time) override;
};

}  // namespace windows
