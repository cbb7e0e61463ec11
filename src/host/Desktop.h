// The workstation around the program: the Windows shell, the user interface's event queue, and the clock.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "base/Outcome.h"
#include "base/Time.h"

namespace host {

/// What came of the shell's format dialog; the values are the shell's own.
enum class FormatAnswer : std::int32_t { Done = 0, Failed = -1, Cancelled = -2, NotPossible = -3 };

/// A time in which the workstation must go on: it does not fall asleep by itself, and before Windows signs the user out
/// or shuts down it asks, with the reason that was given. Ends with the object; of several at once the first one
/// counts. A person can still force the end.
class BusyTime {
 public:
  virtual ~BusyTime() = default;
};

/// What the shell shows is owned by the dialog in front, also while the operator is in another program.
class Shell {
 public:
  virtual ~Shell() = default;

  /// Lets the operator choose a folder, starting at `initialFolder` or the nearest folder above it that exists.
  /// Returns an empty text when nothing was chosen.
  virtual std::string BrowseForFolder(const std::string& title, const std::string& initialFolder) = 0;

  /// The signed-in Windows user's desktop folder; empty when it cannot be had.
  virtual std::string DesktopFolder() = 0;

  /// Copies one file into a folder with the shell's progress window. A copy that the operator stopped has failed.
  virtual base::Outcome CopyWithProgress(const std::string& source, const std::string& targetFolder,
                                         const std::string& title) = 0;

  /// Opens a document that stands beside the program, such as "QXBackupUtility.html", in whatever program is set up
  /// for its kind, and does not wait for it. Returns whether the document is there and was handed over; shows no
  /// message of its own.
  virtual bool OpenDocument(const std::string& fileName) = 0;

  /// Hands a text document to whatever prints its kind, or opens it where nothing does, and does not wait for it.
  /// Returns whether it was handed over; shows no message of its own.
  virtual bool PrintDocument(const std::string& path) = 0;

  /// Shows the shell's format dialog. `drive` counts from 0 for A:.
  virtual FormatAnswer FormatDrive(std::uint32_t drive, std::uint32_t formatId, std::uint32_t options) = 0;

  /// Begins a time in which the workstation must go on, while a dialog of the program is shown. `reason` is one short
  /// sentence for the operator. Never null; where the system grants nothing of this, the object does nothing.
  virtual std::unique_ptr<BusyTime> BeginBusy(const std::string& reason) = 0;
};

class MessageLoop {
 public:
  virtual ~MessageLoop() = default;
  /// Serves every event that is waiting and returns; never waits for one.
  virtual void Yield() = 0;
  /// Serves events for some `milliseconds`, at rest between them.
  virtual void Pause(int milliseconds) = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;
  virtual base::LocalTime Now() = 0;
  /// What has passed since some moment before the program's start. Never goes back, whoever sets the clock.
  virtual std::chrono::milliseconds Running() = 0;
  /// When a file was last written to, by its FolderEntry::modified.
  virtual base::LocalTime LocalTimeOf(std::uint64_t modified) = 0;
  /// The system's short date format.
  virtual std::string ShortDate(const base::LocalTime& time) = 0;
  /// The system's long time format.
  virtual std::string LongTime(const base::LocalTime& time) = 0;
};

}  // namespace host
