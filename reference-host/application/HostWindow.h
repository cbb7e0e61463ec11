// The host application's main window.
#pragma once

#include <windows.h>

#include <string>

namespace application {

class HostWindow {
 public:
  /// `state` says in a line how the application came to run.
  explicit HostWindow(std::wstring state) : state_(std::move(state)) {}
  ~HostWindow();
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  /// Shows the window until File/Exit or the close box. False when it cannot be made.
  bool Run();

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR Handle(UINT message, WPARAM wParam);
  void Fill();
  /// The backup utility starts the application again when it ends, so this one makes room.
  void StartBackupUtility();

  std::wstring state_;
  HWND window_ = nullptr;
  HFONT titleFont_ = nullptr;
};

/// The main window of an application that already runs; null when there is none.
HWND FindRunningWindow();

}  // namespace application
