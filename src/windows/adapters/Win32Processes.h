// Programs: starting them, waiting for them, seeing which ones run; and what hidden ones get instead of a window.
#pragma once

#include <cstddef>
#include <thread>
#include <vector>

#include "host/Processes.h"
#include "windows/adapters/Win32Desktop.h"

namespace windows {

/// The programs of the host's jobs want a console each, and making one takes as long as many of them run. The system
/// makes a console without a window only together with a program; so this process attaches itself to that of a hidden
/// program, which then stays, and the next ones inherit it.
class HiddenConsole {
 public:
  /// How CreateProcess is to start the next hidden program: within the kept console, which is put back into the state
  /// that it was found in; or with a console of its own where none is kept or the kept one is gone.
  DWORD CreationFlags();

  /// Keeps the console of a hidden program that was started with these flags, as soon as the program has made it. Takes
  /// a thread, because a new console is slow to answer; the thread ends with the program at the latest.
  std::jthread KeepThatOf(HANDLE process, DWORD id);

 private:
  void KeepUntilEnd(HANDLE process, DWORD id);

  bool kept_ = false;
  UINT inputCodePage_ = 0;
  UINT outputCodePage_ = 0;
};

/// Lets a hidden program read and write nothing. Its output is seen by nobody, and drawing a line
/// per copied file on a console without a window costs a copy program a tenth of its time; a
/// program that asks a question goes on instead of waiting for an answer for ever.
class NoStreams {
 public:
  NoStreams();
  ~NoStreams();
  NoStreams(const NoStreams&) = delete;
  NoStreams& operator=(const NoStreams&) = delete;

  /// Prepares `startup` so that the program gets these streams and inherits no other handle. False
  /// when that is not to be had; the program then starts with streams of its own.
  bool GiveTo(STARTUPINFOEXW& startup);

 private:
  Handle nothing_;
  HANDLE stream_ = nullptr;  // the list refers to it until the program has started
  std::vector<std::byte> memory_;
  LPPROC_THREAD_ATTRIBUTE_LIST list_ = nullptr;
};

class Win32Processes : public host::Processes {
 public:
  /// Marks this process as an instance that runs, until it ends. `loop` serves the messages during waits.
  explicit Win32Processes(Win32MessageLoop& loop);

  base::Obtained<host::StartedProgram> Start(const std::string& commandLine, host::WindowStyle style,
                                             host::Where where = host::Where::ProgramsOnly) override;
  std::vector<std::string> RunningExecutables() override;
  bool HasPreviousInstance() override { return hasPreviousInstance_; }
  bool HasAdministratorsRights() override;
  [[noreturn]] void EndThisProcess() override;

 private:
  Win32MessageLoop& loop_;
  HiddenConsole console_;
  Handle instanceMark_;
  bool hasPreviousInstance_;
};

}  // namespace windows
