// One window of another process, worked like a person works it: by its controls.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "windows/adapters/Text.h"

namespace endtoend {

using windows::Utf16;
using windows::Utf8;

/// Texts are UTF-8. Every call that needs a control throws std::runtime_error when
/// there is none with that ID.
class Window {
 public:
  explicit Window(HWND handle = nullptr) : handle_(handle) {}

  HWND Handle() const { return handle_; }
  std::string ClassName() const;
  /// Whether the window exists and is on the screen.
  bool IsOpen() const { return IsWindow(handle_) && IsWindowVisible(handle_); }
  bool Has(int control) const { return GetDlgItem(handle_, control) != nullptr; }

  std::string Title() const;
  std::string Text(int control) const { return Window(Control(control)).Title(); }
  bool IsEnabled(int control) const { return IsWindowEnabled(Control(control)); }
  bool IsTicked(int control) const;
  /// How far a progress bar is, of 1000; nothing while it is hidden.
  std::optional<int> Progress(int control) const;
  /// Whether the keyboard works on the control or a part of it.
  bool HasFocus(int control) const;

  void Type(int control, const std::string& text) const;
  /// Clicks a check box or an option button when it is not `ticked` already.
  void Tick(int control, bool ticked = true) const;
  /// Presses a button and does not wait for what that starts.
  void Press(int control) const;
  /// The same with the Shift key held until the window has closed.
  void PressWithShift(int control) const;
  /// Sends a key press to the window's focused control.
  void Key(WPARAM key) const;

 private:
  HWND Control(int control) const;

  HWND handle_;
};

/// Calls `condition` until it holds; false when it does not within `milliseconds`.
template <typename Condition>
bool WaitUntil(Condition condition, unsigned milliseconds = 60000) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  while (!condition()) {
    if (GetTickCount64() > end) return false;
    Sleep(15);
  }
  return true;
}

}  // namespace endtoend
