// Keeps the keyboard focus of one dialog on a control that can use it.
#pragma once

#include "windows/adapters/Win32.h"

namespace windows {

class FocusKeeper {
 public:
  void SetDialog(HWND dialog) { dialog_ = dialog; }

  /// Call before a control is disabled or hidden: a focus there would swallow every key.
  void BeforeLeaving(HWND control);
  /// Call after a control was enabled or shown: brings back the focus that it had to give away,
  /// unless the operator has chosen another control meanwhile.
  void AfterReturning(HWND control);
  /// Puts the focus on a control, or notes it for when the dialog is shown.
  void Give(HWND control);
  /// Call as the dialog is shown and whenever it becomes active.
  void Settle();

 private:
  bool Has(HWND control) const;
  void MoveTo(HWND control) const;

  HWND dialog_ = nullptr;
  HWND wanted_ = nullptr;  ///< asked for while the dialog was hidden
  HWND lost_ = nullptr;    ///< had the focus when it was disabled
  HWND parked_ = nullptr;  ///< where the focus was put instead
};

}  // namespace windows
