// Moves the focus away from controls that cannot use it, and back.
#include "windows/toolkit/FocusKeeper.h"

namespace windows {

/// The control itself or a part of it, such as the text field of a combo box.
bool FocusKeeper::Has(HWND control) const {
  HWND focus = GetFocus();
  return focus != nullptr && (focus == control || IsChild(control, focus) != FALSE);
}

/// The way that keeps a dialog's notion of its current control right.
void FocusKeeper::MoveTo(HWND control) const {
  SendMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
}

void FocusKeeper::BeforeLeaving(HWND control) {
  if (!Has(control)) return;
  if (lost_ == nullptr || control != parked_) lost_ = control;
  HWND next = GetNextDlgTabItem(dialog_, control, FALSE);
  if (next == nullptr || next == control) {
    parked_ = dialog_;
    SetFocus(dialog_);
  } else {
    parked_ = next;
    MoveTo(next);
  }
}

void FocusKeeper::AfterReturning(HWND control) {
  if (control != lost_ || IsWindowVisible(control) == FALSE) return;
  lost_ = nullptr;
  if (GetFocus() == dialog_ || Has(parked_)) MoveTo(control);
}

void FocusKeeper::Give(HWND control) {
  if (IsWindowVisible(dialog_) == FALSE) {
    wanted_ = control;
    return;
  }
  lost_ = nullptr;
  MoveTo(control);
}

void FocusKeeper::Settle() {
  HWND focus = GetFocus();
  const bool usable = focus != nullptr && IsChild(dialog_, focus) != FALSE && IsWindowEnabled(focus) != FALSE;
  if (wanted_ == nullptr && usable) return;
  HWND target = wanted_ != nullptr && IsWindowEnabled(wanted_) != FALSE ? wanted_ : nullptr;
  if (target == nullptr) target = GetNextDlgTabItem(dialog_, nullptr, FALSE);
  wanted_ = nullptr;
  if (target != nullptr) MoveTo(target);
}

}  // namespace windows
