// Asks and works the controls of a window.
#include "operator/Window.h"

#include <commctrl.h>

#include <stdexcept>

#include "operator/Desktop.h"

namespace endtoend {
namespace {

/// What the window answers; 0 when it does not within some seconds.
DWORD_PTR Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  DWORD_PTR answer = 0;
  SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, 10000, &answer);
  return answer;
}

HWND FocusOf(HWND window) {
  GUITHREADINFO info{};
  info.cbSize = sizeof(info);
  GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
  return info.hwndFocus;
}

}  // namespace

HWND Window::Control(int control) const {
  HWND child = GetDlgItem(handle_, control);
  if (!child) throw std::runtime_error("no control " + std::to_string(control) + " in \"" + Title() + "\"");
  return child;
}

std::string Window::ClassName() const {
  wchar_t name[64] = L"";
  GetClassNameW(handle_, name, 64);
  return Utf8(name);
}

std::string Window::Title() const {
  std::wstring text(Ask(handle_, WM_GETTEXTLENGTH) + 1, L'\0');
  text.resize(Ask(handle_, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data())));
  return Utf8(text);
}

bool Window::IsTicked(int control) const {
  return Ask(Control(control), BM_GETCHECK) == BST_CHECKED;
}

std::optional<int> Window::Progress(int control) const {
  HWND bar = Control(control);
  // In this order: one that is hidden is set back then.
  const auto value = static_cast<int>(Ask(bar, PBM_GETPOS));
  return IsWindowVisible(bar) ? std::optional(value) : std::nullopt;
}

bool Window::HasFocus(int control) const {
  const HWND focused = FocusOf(handle_);
  return focused == Control(control) || IsChild(Control(control), focused);
}

void Window::Type(int control, const std::string& text) const {
  HWND box = Control(control);
  SendMessageW(box, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Utf16(text).c_str()));
  // Setting the text of a combo box raises no notice, as typing into it does.
  if (Window(box).ClassName() == "ComboBox")
    SendMessageW(handle_, WM_COMMAND, MAKEWPARAM(control, CBN_EDITCHANGE), reinterpret_cast<LPARAM>(box));
}

void Window::Tick(int control, bool ticked) const {
  if (IsTicked(control) != ticked) SendMessageW(Control(control), BM_CLICK, 0, 0);
}

void Window::Press(int control) const {
  PostMessageW(Control(control), BM_CLICK, 0, 0);
}

void Window::PressWithShift(int control) const {
  SetForegroundWindow(handle_);
  SendKey(VK_SHIFT);
  Sleep(150);  // a posted click would overtake the key
  Press(control);
  WaitUntil([this] { return !IsOpen(); });
  SendKey(VK_SHIFT, KEYEVENTF_KEYUP);
}

void Window::Key(WPARAM key) const {
  const HWND focused = FocusOf(handle_);
  const HWND target = focused ? focused : handle_;
  PostMessageW(target, WM_KEYDOWN, key, 1);
  PostMessageW(target, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

}  // namespace endtoend
