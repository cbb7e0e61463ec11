// The view's life, the way from the form to the window, and the focus.
#include "windows/toolkit/DialogView.h"

#include <commctrl.h>

#include <algorithm>

#include "windows/adapters/Text.h"
#include "windows/toolkit/Widening.h"
#include "windows/toolkit/Window.h"

namespace windows {

DialogView::DialogView(forms::Form& form, HWND owner, const LayoutFont& font, GdiCache& gdi,
                       const forms::Pointer& pointer, const Win32MessageLoop& loop)
    : form_(form), gdi_(gdi), pointer_(pointer), loop_(loop) {
  const Writing guard(*this);
  const std::vector<std::byte> bytes = TemplateWith(Utf16(form.Name()), font);
  if (bytes.empty()) return;
  window_ = CreateDialogIndirectParamW(GetModuleHandleW(nullptr), reinterpret_cast<const DLGTEMPLATE*>(bytes.data()),
                                       owner, DialogProc, reinterpret_cast<LPARAM>(this));
  if (window_ != nullptr) focus_.SetDialog(window_);
}

void DialogView::Bind() {
  const Writing guard(*this);
  BindControls();
  if (form_.Look().fontSize == 0) form_.SetLook(TemplateLook(window_, false));
  if (form_.Title().empty()) form_.SetTitle(TextOf(window_));
  WriteTitle();
  TakeSize();
  TakePlace();
}

// The form may be half gone already: no message of the dying window may reach it.
DialogView::~DialogView() {
  if (window_ == nullptr) return;
  SetWindowLongPtrW(window_, DWLP_USER, 0);
  DestroyWindow(window_);
}

void DialogView::BindControls() {
  for (forms::Control* control : form_.Controls()) {
    const ControlId* entry = FindControlId(form_.Name(), control->Name());
    HWND window = entry == nullptr ? nullptr : GetDlgItem(window_, entry->id);
    if (window == nullptr) continue;
    const BoundControl bound{control, window};
    TakeFromTemplate(bound);
    WriteAll(bound, gdi_);
    Subclass(bound);
    controls_.push_back(bound);
  }
}

void DialogView::Subclass(const BoundControl& bound) {
  if (bound.control->Kind() == forms::ControlKind::TextBox) {
    SetWindowSubclass(bound.window, TextBoxProc, 0, reinterpret_cast<DWORD_PTR>(bound.control));
  } else if (bound.control->Kind() == forms::ControlKind::CommandButton) {
    SetWindowSubclass(bound.window, ButtonProc, 0, 0);
  }
}

const BoundControl* DialogView::Find(const forms::Control& control) const {
  const auto found = std::ranges::find(controls_, &control, &BoundControl::control);
  return found == controls_.end() ? nullptr : &*found;
}

const BoundControl* DialogView::Find(HWND window) const {
  const auto found = std::ranges::find(controls_, window, &BoundControl::window);
  return found == controls_.end() ? nullptr : &*found;
}

void DialogView::FormChanged(forms::Aspect aspect) {
  const Writing guard(*this);
  if (aspect == forms::Aspect::Caption) WriteTitle();
  if (aspect == forms::Aspect::Appearance) Redraw();
  if (aspect != forms::Aspect::Enabled) return;
  for (const BoundControl& bound : controls_) Write(bound, forms::Aspect::Enabled);
  SetCovered(covered_);
}

void DialogView::WriteTitle() {
  ShowText(window_, form_.Title());
}

void DialogView::FormMoved() {
  const Writing guard(*this);
  const int dpi = DpiOf(window_);
  SetWindowPos(window_, nullptr, ToPixels(form_.Left(), dpi), ToPixels(form_.Top(), dpi), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void DialogView::TakePlace() {
  RECT place = {};
  if (IsIconic(window_) != FALSE || GetWindowRect(window_, &place) == FALSE) return;
  const int dpi = DpiOf(window_);
  form_.TakePlace(ToTwips(place.left, dpi), ToTwips(place.top, dpi));
}

void DialogView::TakeSize() {
  RECT place = {};
  if (IsIconic(window_) != FALSE || GetWindowRect(window_, &place) == FALSE) return;
  const int dpi = DpiOf(window_);
  form_.TakeSize(ToTwips(place.right - place.left, dpi), ToTwips(place.bottom - place.top, dpi));
}

void DialogView::ControlChanged(forms::Control& control, forms::Aspect aspect) {
  const BoundControl* bound = Find(control);
  if (bound == nullptr) return;
  const Writing guard(*this);
  if (aspect == forms::Aspect::Focus) return focus_.Give(bound->window);
  Write(*bound, aspect);
  if (control.Kind() == forms::ControlKind::ProgressBar) {
    taskBar_.Show(window_, static_cast<const forms::ProgressBar&>(control));
  }
}

bool DialogView::IsUsable(const BoundControl& bound) const {
  const forms::ControlKind kind = bound.control->Kind();
  const bool shows =
      kind == forms::ControlKind::Label || kind == forms::ControlKind::Frame || kind == forms::ControlKind::ProgressBar;
  return bound.control->Enabled() && (shows || form_.Enabled());
}

void DialogView::Write(const BoundControl& bound, forms::Aspect aspect) {
  const bool usable = IsUsable(bound) && bound.control->Visible();
  if (!usable) focus_.BeforeLeaving(bound.window);
  if (aspect == forms::Aspect::Enabled) {
    EnableWindow(bound.window, IsUsable(bound) ? TRUE : FALSE);
  } else {
    WriteAspect(bound, aspect, gdi_);
  }
  if (usable) focus_.AfterReturning(bound.window);
}

void DialogView::Show() {
  keyGuard_.Shown(GetTickCount());
  if (IsWindowVisible(window_) == FALSE) WidenForCaptions(window_, controls_);
  // Not ShowWindow: its first call obeys the start-up information of the process instead.
  SetWindowPos(window_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
  SetForegroundWindow(window_);
  SettleFocus();
}

/// An option button that gets the focus reports a click: not the operator's here.
void DialogView::SettleFocus() {
  const Writing guard(*this);
  focus_.Settle();
}

void DialogView::Hide() {
  ShowWindow(window_, SW_HIDE);
}

void DialogView::SetCovered(bool covered) {
  covered_ = covered;
  EnableWindow(window_, !covered_ && form_.Enabled() ? TRUE : FALSE);
}

bool DialogView::Owns(HWND window) const {
  return window == window_ || IsChild(window_, window) != FALSE;
}

/// By the time at which the key went down, which may have been before there was this dialog. Every key that enters a
/// character may press a button by its underlined letter; Tab, Esc, arrows and the like change nothing.
bool DialogView::TakesKey(const MSG& message) {
  const bool down = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
  if (!down || !form_.IsCautious()) return true;
  constexpr LPARAM kWasDown = 1 << 30;
  constexpr UINT kDeadKey = 0x80000000;
  const UINT character = MapVirtualKeyW(static_cast<UINT>(message.wParam), MAPVK_VK_TO_CHAR) & ~kDeadKey;
  if (character != L'\r' && character < L' ') return true;
  return keyGuard_.Takes(message.time, (message.lParam & kWasDown) != 0);
}

void DialogView::Redraw() {
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

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
