#include "operator/Window.h"

#include <stdexcept>
#include <vector>

namespace endtoend {
namespace {

constexpr UINT kAnswerWithin = 10000;

std::wstring TextOf(HWND window) {
  DWORD_PTR length = 0;
  SendMessageTimeoutW(window, WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG, kAnswerWithin, &length);
  std::vector<wchar_t> text(length + 1, L'\0');
  SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()), SMTO_ABORTIFHUNG,
                      kAnswerWithin, &length);
  return text.data();
}

HWND FocusOf(HWND window) {
  GUITHREADINFO info{};
  info.cbSize = sizeof(info);
  GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
  return info.hwndFocus;
}

void SendKey(WORD key, bool down) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
  SendInput(1, &input, sizeof(input));
}

}  // namespace

std::wstring Utf16(const std::string& utf8) {
  std::wstring text(utf8.size(), L'\0');
  text.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()),
                                                           text.data(), static_cast<int>(text.size()))));
  return text;
}

std::string Utf8(const std::wstring& utf16) {
  std::string text(utf16.size() * 3, '\0');
  text.resize(
      static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, utf16.data(), static_cast<int>(utf16.size()),
                                                   text.data(), static_cast<int>(text.size()), nullptr, nullptr)));
  return text;
}

HWND Window::Control(int control) const {
  HWND child = GetDlgItem(handle_, control);
  if (!child) throw std::runtime_error("no control " + std::to_string(control) + " in \"" + Title() + "\"");
  return child;
}

std::string Window::Title() const {
  return Utf8(TextOf(handle_));
}

std::string Window::Text(int control) const {
  return Utf8(TextOf(Control(control)));
}

bool Window::IsTicked(int control) const {
  DWORD_PTR state = 0;
  SendMessageTimeoutW(Control(control), BM_GETCHECK, 0, 0, SMTO_ABORTIFHUNG, kAnswerWithin, &state);
  return state == BST_CHECKED;
}

void Window::Type(int control, const std::string& text) const {
  const std::wstring wide = Utf16(text);
  SendMessageW(Control(control), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide.c_str()));
}

bool Window::HasFocus(int control) const {
  const HWND focused = FocusOf(handle_);
  return focused == Control(control) || IsChild(Control(control), focused);
}

// Setting the text of a combo box raises no notice, as typing into it does.
void Window::TypeIntoCombo(int control, const std::string& text) const {
  Type(control, text);
  SendMessageW(handle_, WM_COMMAND, MAKEWPARAM(control, CBN_EDITCHANGE), reinterpret_cast<LPARAM>(Control(control)));
}

void Window::Pick(int control, const std::string& text) const {
  HWND combo = Control(control);
  const std::wstring wide = Utf16(text);
  if (SendMessageW(combo, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(wide.c_str())) == CB_ERR)
    throw std::runtime_error("no entry \"" + text + "\" in the list");
  SendMessageW(handle_, WM_COMMAND, MAKEWPARAM(control, CBN_SELCHANGE), reinterpret_cast<LPARAM>(combo));
}

void Window::Tick(int control, bool ticked) const {
  if (IsTicked(control) == ticked) return;
  SendMessageW(Control(control), BM_CLICK, 0, 0);
}

void Window::Choose(int control) const {
  SendMessageW(Control(control), BM_CLICK, 0, 0);
}

void Window::Press(int control) const {
  PostMessageW(Control(control), BM_CLICK, 0, 0);
}

void Window::PressWithShift(int control) const {
  SetForegroundWindow(handle_);
  SendKey(VK_SHIFT, true);
  Sleep(150);  // a posted click would overtake the key
  Press(control);
  WaitUntil([this] { return !IsOpen(); });
  SendKey(VK_SHIFT, false);
}

void Window::Key(WPARAM key) const {
  const HWND focused = FocusOf(handle_);
  const HWND target = focused ? focused : handle_;
  PostMessageW(target, WM_KEYDOWN, key, 1);
  PostMessageW(target, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

}  // namespace endtoend
