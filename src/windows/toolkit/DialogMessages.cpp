// The way from the window to the form: what the operator and the system do.
#include "windows/adapters/Win32.h"

#include <commctrl.h>
#include <dbt.h>

#include "windows/toolkit/DialogView.h"

namespace windows {

namespace {

/// Posted to itself, to act after the dialog's own handling of a message.
constexpr UINT kSettleFocus = WM_APP + 1;
constexpr UINT kRefreshFonts = WM_APP + 2;
constexpr UINT kTellOfDevice = WM_APP + 3;

forms::ShiftState HeldKeys() {
  const auto held = [](int key) { return GetKeyState(key) < 0; };
  return {held(VK_SHIFT), held(VK_CONTROL), held(VK_MENU)};
}

/// The visible field or list of a combo box asks for colours in its own name.
HWND ComboBoxOf(HWND part, const std::vector<BoundControl>& controls) {
  for (const BoundControl& bound : controls) {
    if (bound.control->Kind() != forms::ControlKind::ComboBox) continue;
    COMBOBOXINFO info = {};
    info.cbSize = sizeof info;
    if (GetComboBoxInfo(bound.window, &info) != FALSE && (part == info.hwndItem || part == info.hwndList)) {
      return bound.window;
    }
  }
  return nullptr;
}

}  // namespace

INT_PTR CALLBACK DialogView::DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(window, DWLP_USER, lParam);
    return FALSE;
  }
  auto* view = reinterpret_cast<DialogView*>(GetWindowLongPtrW(window, DWLP_USER));
  return view == nullptr || view->window_ == nullptr ? FALSE : view->Handle(message, wParam, lParam);
}

INT_PTR DialogView::Answer(LRESULT result) {
  SetWindowLongPtrW(window_, DWLP_MSGRESULT, result);
  return TRUE;
}

INT_PTR DialogView::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      OnCommand(LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HWND>(lParam));
      return TRUE;
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
      return OnControlColour(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
    case WM_DRAWITEM:
      return OnDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    case WM_SETCURSOR:
      return OnSetCursor();
    case WM_QUERYENDSESSION:
      return Answer(loop_.IsBusy() ? FALSE : TRUE);
    case WM_DEVICECHANGE:
      OnDeviceChange(wParam, lParam);
      return Answer(TRUE);
    case DM_GETDEFID: {
      const forms::CommandButton* button = EnterButton();
      const BoundControl* bound = button == nullptr ? nullptr : Find(*button);
      return bound == nullptr ? FALSE : Answer(MAKELONG(GetDlgCtrlID(bound->window), DC_HASDEFID));
    }
    case WM_MOVE:
      if (writing_ == 0) TakePlace();
      return FALSE;
    case WM_SIZE:
      TakeSize();
      return FALSE;
    case WM_ACTIVATE:
      if (LOWORD(wParam) != WA_INACTIVE) {
        keyGuard_.Shown(GetTickCount());
        PostMessageW(window_, kSettleFocus, 0, 0);
      }
      RedrawButton(form_.DefaultButton());
      return FALSE;
    case WM_DPICHANGED:
      PostMessageW(window_, kRefreshFonts, 0, 0);
      return FALSE;
    case kSettleFocus:
      if (GetActiveWindow() == window_) SettleFocus();
      return TRUE;
    case kRefreshFonts:
      for (const BoundControl& bound : controls_) WriteAspect(bound, forms::Aspect::Appearance, gdi_);
      return TRUE;
    case kTellOfDevice:
      TellOfDevice(static_cast<DWORD>(wParam));
      return TRUE;
    case WM_HELP:  // F1 in any control, which passes it on
      form_.RequestHelp();
      return Answer(TRUE);
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
      Redraw();
      return FALSE;
    default:
      return FALSE;
  }
}

/// IDOK and IDCANCEL are no controls: they stand for Enter, and for Esc and the close box.
void DialogView::OnCommand(int id, int code, HWND source) {
  const BoundControl* bound = Find(source != nullptr ? source : GetDlgItem(window_, id));
  const bool button = bound != nullptr && bound->control->Kind() == forms::ControlKind::CommandButton;
  if (button && (code == BN_SETFOCUS || code == BN_KILLFOCUS)) return RedrawButton(form_.DefaultButton());
  if (writing_ > 0 || loop_.ServesWithoutInput()) return;
  if (id == IDCANCEL) return Press(form_.CancelButton());
  if (id == IDOK) return Press(EnterButton());
  if (bound != nullptr) OnNotice(*bound, code);
}

void DialogView::OnNotice(const BoundControl& bound, int code) {
  switch (bound.control->Kind()) {
    case forms::ControlKind::CommandButton:
      if (code == BN_CLICKED) Press(static_cast<forms::CommandButton*>(bound.control));
      return;
    case forms::ControlKind::CheckBox:
    case forms::ControlKind::OptionButton:
      if (code == BN_CLICKED) Toggle(bound);
      return;
    case forms::ControlKind::TextBox:
      if (code == EN_CHANGE) ReadText(bound);
      return;
    case forms::ControlKind::ComboBox:
      if (code == CBN_EDITCHANGE) ReadText(bound);
      if (code == CBN_SELCHANGE) ReadPick(bound);
      return;
    case forms::ControlKind::ListBox:
      if (code == LBN_SELCHANGE) ReadPick(bound);
      return;
    case forms::ControlKind::Label:
    case forms::ControlKind::Frame:
    case forms::ControlKind::ProgressBar:
      return;
  }
}

/// A second press that was queued behind one that closed the dialog finds no open form.
void DialogView::Press(forms::CommandButton* button) {
  if (button == nullptr || !TakesInput()) return;
  const forms::ShiftState keys = HeldKeys();
  for (const BoundControl& bound : controls_) ReadText(bound);
  button->Press(keys);
}

void DialogView::Toggle(const BoundControl& bound) {
  auto& toggle = static_cast<forms::ToggleControl&>(*bound.control);
  if (TakesInput() && toggle.Enabled() && toggle.Visible()) {
    toggle.SetValue(toggle.Kind() == forms::ControlKind::OptionButton || !toggle.Value());
  }
  // Option buttons have moved their mark among themselves; the form's values lead.
  const Writing guard(*this);
  for (const BoundControl& other : controls_) WriteAspect(other, forms::Aspect::Value, gdi_);
}

forms::CommandButton* DialogView::EnterButton() const {
  const BoundControl* focused = Find(GetFocus());
  if (focused != nullptr && focused->control->Kind() == forms::ControlKind::CommandButton) {
    return static_cast<forms::CommandButton*>(focused->control);
  }
  return form_.DefaultButton();
}

void DialogView::RedrawButton(const forms::CommandButton* button) {
  const BoundControl* bound = button == nullptr ? nullptr : Find(*button);
  if (bound != nullptr) InvalidateRect(bound->window, nullptr, FALSE);
}

INT_PTR DialogView::OnSetCursor() {
  if (pointer_ != forms::Pointer::Hourglass) return FALSE;
  SetCursor(LoadCursorW(nullptr, IDC_WAIT));
  return Answer(TRUE);
}

INT_PTR DialogView::OnControlColour(HDC context, HWND window) {
  if (IsHighContrast()) return FALSE;
  const BoundControl* bound = Find(window);
  if (bound == nullptr) bound = Find(ComboBoxOf(window, controls_));
  // A field that takes no input stands on the dialog's own colour, as everywhere in Windows.
  const bool plain =
      bound == nullptr || bound->control->Kind() == forms::ControlKind::CommandButton || !bound->control->Enabled();
  const forms::Appearance& look = plain ? form_.Look() : bound->control->Look();
  const bool input = !plain && IsInput(bound->control->Kind());
  SetTextColor(context, look.foreground);
  SetBkColor(context, look.background);
  SetBkMode(context, input ? OPAQUE : TRANSPARENT);
  return reinterpret_cast<INT_PTR>(gdi_.Brush(look.background));
}

INT_PTR DialogView::OnDrawItem(const DRAWITEMSTRUCT& item) {
  const BoundControl* bound = Find(item.hwndItem);
  if (bound == nullptr || bound->control->Kind() != forms::ControlKind::CommandButton) return FALSE;
  const forms::Appearance& look = bound->control->Look();
  const ButtonColours colours = IsHighContrast()
                                    ? ButtonColours{GetSysColor(COLOR_BTNFACE), GetSysColor(COLOR_BTNTEXT), true}
                                    : ButtonColours{look.background, look.foreground};
  const bool isDefault = bound->control == EnterButton() && IsUsable(*bound) && GetActiveWindow() == window_;
  PaintButton(item, colours, isDefault, gdi_);
  return TRUE;
}

/// The system sends this and waits for the answer, and meanwhile components in other processes cannot be called. So the
/// form is told later, and once of several devices of one type.
void DialogView::OnDeviceChange(WPARAM event, LPARAM data) {
  if ((event != DBT_DEVICEARRIVAL && event != DBT_DEVICEREMOVECOMPLETE) || data == 0) return;
  const DWORD type = reinterpret_cast<const DEV_BROADCAST_HDR*>(data)->dbch_devicetype;
  const bool isNew = changedDevices_.insert(type).second;
  if (isNew && PostMessageW(window_, kTellOfDevice, type, 0) == FALSE) changedDevices_.erase(type);
}

void DialogView::TellOfDevice(DWORD type) {
  changedDevices_.erase(type);
  if (form_.IsLoaded()) form_.OnDeviceChanged(static_cast<int>(type));
}

LRESULT CALLBACK DialogView::TextBoxProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                         DWORD_PTR control) {
  const auto& box = *reinterpret_cast<const forms::TextBox*>(control);
  // Other control characters are commands, such as Ctrl+V: they enter nothing.
  const bool typed = message == WM_CHAR && (wParam >= L' ' || wParam == L'\b');
  if (typed && box.AcceptsKey && !box.AcceptsKey(static_cast<char32_t>(wParam))) return 0;
  return DefSubclassProc(window, message, wParam, lParam);
}

/// Windows marks the default button by a style of its own, which would end the drawing by the dialog.
LRESULT CALLBACK DialogView::ButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
  constexpr WPARAM kKind = BS_TYPEMASK;
  if (message == BM_SETSTYLE) wParam = (wParam & ~kKind) | BS_OWNERDRAW;
  return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace windows
