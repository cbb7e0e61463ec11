// Views of the forms, and the modal loops.
#include "windows/toolkit/Win32Toolkit.h"

#include <commctrl.h>

#include <algorithm>

#include "resource.h"
#include "windows/adapters/Text.h"
#include "windows/toolkit/Window.h"

namespace windows {

namespace {

constexpr wchar_t kDialogClass[] = L"" QX_DIALOG_CLASS;

HICON ProgramIcon(int widthMetric, int heightMetric) {
  return static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_PROGRAM), IMAGE_ICON,
                                       GetSystemMetrics(widthMetric), GetSystemMetrics(heightMetric), LR_SHARED));
}

void RegisterDialogClass() {
  WNDCLASSEXW type = {};
  type.cbSize = sizeof type;
  type.lpfnWndProc = DefDlgProcW;
  type.cbWndExtra = DLGWINDOWEXTRA;
  type.hInstance = GetModuleHandleW(nullptr);
  type.hIcon = ProgramIcon(SM_CXICON, SM_CYICON);
  type.hIconSm = ProgramIcon(SM_CXSMICON, SM_CYSMICON);
  type.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  type.lpszClassName = kDialogClass;
  RegisterClassExW(&type);
}

}  // namespace

Win32Toolkit::Win32Toolkit(Win32MessageLoop& loop) : loop_(loop) {
  RegisterDialogClass();
  const INITCOMMONCONTROLSEX progressBars{sizeof(INITCOMMONCONTROLSEX), ICC_PROGRESS_CLASS};
  InitCommonControlsEx(&progressBars);
  loop_.SetDialogs(this);
}

Win32Toolkit::~Win32Toolkit() {
  loop_.SetDialogs(nullptr);
  views_.clear();
  UnregisterClassW(kDialogClass, GetModuleHandleW(nullptr));
}

Win32Toolkit::Views::iterator Win32Toolkit::FindView(const forms::Form& form) {
  return std::ranges::find_if(views_, [&form](const auto& view) { return &view->GetForm() == &form; });
}

void Win32Toolkit::CreateView(forms::Form& form) {
  // Making, binding, filling and closing a large dialog may each take some hundredths of a second. Between them the
  // dialogs behind are painted.
  loop_.ServeWithoutInput();
  auto view = std::make_unique<DialogView>(form, FrontWindow(), font_, gdi_, pointer_, loop_);
  if (view->Window() == nullptr) return;
  loop_.ServeWithoutInput();
  view->Bind();
  form.SetView(view.get());
  views_.push_back(std::move(view));
  loop_.ServeWithoutInput();
}

void Win32Toolkit::DestroyView(forms::Form& form) {
  form.SetView(nullptr);
  const auto found = FindView(form);
  if (found == views_.end()) return;
  // Off the list before its window goes: that activates another window, whose messages look at the list.
  std::unique_ptr<DialogView> view = std::move(*found);
  views_.erase(found);
  view.reset();
  loop_.ServeWithoutInput();
}

void Win32Toolkit::RunModal(forms::Form& form) {
  const auto found = FindView(form);
  if (found == views_.end()) return;
  DialogView* view = found->get();
  DialogView* below = shown_.empty() ? nullptr : shown_.back();
  if (below != nullptr) below->SetCovered(true);
  shown_.push_back(view);
  loop_.ServeWithoutInput();
  view->Show();
  ServeUntilClosed(form);
  shown_.pop_back();
  // In this order: Windows activates another program's window when the owner cannot be activated.
  if (below != nullptr) below->SetCovered(false);
  view->Hide();
}

/// Looks at the form after every message: a click that is queued behind the one that closed the
/// form must not reach it. Sent messages, which the wait reports as well, close forms too.
void Win32Toolkit::ServeUntilClosed(const forms::Form& form) {
  MSG message;
  while (form.IsOpen()) {
    if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) == FALSE) {
      if (form.IsOpen()) MsgWaitForMultipleObjectsEx(0, nullptr, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    } else if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    } else {
      loop_.Dispatch(message);
    }
  }
}

// The view is found first: what its keys set off may load and unload other forms.
bool Win32Toolkit::PreTranslate(MSG& message) {
  const auto found = std::ranges::find_if(views_, [&message](const auto& view) { return view->Owns(message.hwnd); });
  if (found == views_.end()) return false;
  if (!(*found)->TakesKey(message)) return true;
  return IsDialogMessageW((*found)->Window(), &message) != FALSE;
}

HWND Win32Toolkit::FrontWindow() const {
  return shown_.empty() ? nullptr : shown_.back()->Window();
}

int Win32Toolkit::ScreenWidth() {
  return ToTwips(GetSystemMetrics(SM_CXSCREEN), ScreenDpi());
}

int Win32Toolkit::ScreenHeight() {
  return ToTwips(GetSystemMetrics(SM_CYSCREEN), ScreenDpi());
}

void Win32Toolkit::SetFont(const std::string& name, std::uint32_t points) {
  constexpr std::uint32_t kSmallest = 6;
  constexpr std::uint32_t kLargest = 36;
  font_ = {Utf16(name), static_cast<WORD>(std::clamp(points, kSmallest, kLargest))};
}

void Win32Toolkit::SetPointer(forms::Pointer pointer) {
  pointer_ = pointer;
  SetCursor(LoadCursorW(nullptr, pointer == forms::Pointer::Hourglass ? IDC_WAIT : IDC_ARROW));
}

void Win32Toolkit::ShowPlainMessage(const std::string& text, const std::string& title) {
  MessageBoxW(FrontWindow(), Utf16(text).c_str(), Utf16(title).c_str(), MB_OK | MB_ICONERROR | MB_SETFOREGROUND);
}

}  // namespace windows
