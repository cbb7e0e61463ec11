// The Windows shell. Its dialogs are owned by the window that the operator is working in.
#pragma once

#include <cstdint>
#include <string>

namespace host {

class Shell {
 public:
  virtual ~Shell() = default;

  /// Lets the operator choose a folder, starting at `initialFolder` or the nearest folder
  /// above it that exists. Returns an empty text when nothing was chosen.
  virtual std::string BrowseForFolder(const std::string& title, const std::string& initialFolder) = 0;

  /// The signed-in Windows user's desktop folder; empty when it cannot be had.
  virtual std::string DesktopFolder() = 0;

  /// Copies one file into a folder with the shell's progress window. Returns 0, or
  /// the shell's own non-zero code, which also stands for a copy that the operator stopped.
  virtual std::int32_t CopyWithProgress(const std::string& source, const std::string& targetFolder,
                                        const std::string& title) = 0;

  /// Opens a document that stands beside the program, such as "QXBackupUtility.html", in whatever
  /// program is set up for its kind, and does not wait for it. Returns whether the document is there
  /// and was handed over; shows no message of its own.
  virtual bool OpenDocument(const std::string& fileName) = 0;

  /// Shows the shell's format dialog. `drive` counts from 0 for A:. Returns -1 on an
  /// error, -2 when the operator cancelled, -3 when the drive cannot be formatted.
  virtual std::int32_t FormatDrive(std::uint32_t drive, std::uint32_t formatId, std::uint32_t options) = 0;
};

}  // namespace host
