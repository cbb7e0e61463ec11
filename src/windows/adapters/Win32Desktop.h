// The workstation around the program: the thread's message queue, the Windows shell, and the clock.
#pragma once

#include <optional>

#include "host/Desktop.h"
#include "windows/adapters/Win32.h"

namespace windows {

/// The program's dialogs, as far as the adapters must know of them.
class Dialogs {
 public:
  virtual ~Dialogs() = default;
  /// Sees each message before it is dispatched: dialogs take their keyboard messages here. Returns true when the
  /// message has been dealt with.
  virtual bool PreTranslate(MSG& message) = 0;
  /// The window of the dialog in front, also while the operator works in another program; null where none is shown.
  virtual HWND FrontWindow() const = 0;
};

class Win32MessageLoop : public host::MessageLoop {
 public:
  void Yield() override;
  void Pause(int milliseconds) override;

  /// Null for none. The dialogs must stay alive until they are replaced.
  void SetDialogs(Dialogs* dialogs) { dialogs_ = dialogs; }
  /// That of the dialogs; null without any.
  HWND FrontWindow() const { return dialogs_ == nullptr ? nullptr : dialogs_->FrontWindow(); }

  /// Treats one message as every loop of the program does. For messages other than WM_QUIT.
  void Dispatch(MSG& message);

  /// Serves every waiting message. Returns the exit code of a WM_QUIT among them, which the
  /// caller must post again once it is done: some outer loop is meant to end on it.
  std::optional<int> ServeWaiting();

  /// For long work that nobody may interfere with: paints what has become visible and answers other windows, and
  /// leaves the operator's keys and clicks in the queue. Cheap enough for every file: does nothing when it was called
  /// some milliseconds ago.
  void ServeWithoutInput();

  /// Whether ServeWithoutInput() is at work: what another program sends to a button then must press nothing.
  bool ServesWithoutInput() const { return servingWithoutInput_; }

  /// A job begins (1) or ends (-1) that the end of the Windows session would break.
  void CountJob(int change) { jobs_ += change; }
  /// Whether one runs: no dialog then agrees to the end of the session.
  bool IsBusy() const { return jobs_ > 0; }

 private:
  ULONGLONG servedAt_ = 0;
  bool servingWithoutInput_ = false;
  int jobs_ = 0;
  Dialogs* dialogs_ = nullptr;
};

class Win32Shell : public host::Shell {
 public:
  /// `loop` knows the window that owns what the shell shows.
  explicit Win32Shell(Win32MessageLoop& loop) : loop_(loop) {}

  std::string BrowseForFolder(const std::string& title, const std::string& initialFolder) override;
  std::string DesktopFolder() override;
  base::Outcome CopyWithProgress(const std::string& source, const std::string& targetFolder,
                                 const std::string& title) override;
  bool OpenDocument(const std::string& fileName) override;
  bool PrintDocument(const std::string& path) override;
  host::FormatAnswer FormatDrive(std::uint32_t drive, std::uint32_t formatId, std::uint32_t options) override;
  std::unique_ptr<host::BusyTime> BeginBusy(const std::string& reason) override;

 private:
  /// Opens a document, or does what `verb` says of its kind.
  bool HandOver(const wchar_t* verb, const std::wstring& path);

  Win32MessageLoop& loop_;
};

class Win32Clock : public host::Clock {
 public:
  base::LocalTime Now() override;
  std::chrono::milliseconds Running() override;
  base::LocalTime LocalTimeOf(std::uint64_t modified) override;
  /// Both formats are those of the Windows user's own regional settings.
  std::string ShortDate(const base::LocalTime& time) override;
  std::string LongTime(const base::LocalTime& time) override;
};

}  // namespace windows
