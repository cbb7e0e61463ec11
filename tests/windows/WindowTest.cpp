// Scripts that run inside a modal loop, and the operator's hands.
#include "WindowTest.h"

#include "windows/adapters/Text.h"
#include "windows/toolkit/DialogTemplate.h"

namespace windows_tests {

namespace {

/// The timer's number is where its script stands.
void CALLBACK RunScript(HWND window, UINT, UINT_PTR script, DWORD) {
  KillTimer(window, script);
  (*reinterpret_cast<std::function<void()>*>(script))();
}

}  // namespace

void WindowTest::Show(forms::Form& form, std::function<void()> script) {
  std::function<void()> whole = [&] {
    loop_.Yield();
    script();
    if (form.IsOpen()) form.Close();
  };
  // A timer without a window would get a number of the system's.
  HWND owner = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  SetTimer(owner, reinterpret_cast<UINT_PTR>(&whole), 0, RunScript);
  form.ShowModal();
  DestroyWindow(owner);
}

HWND WindowTest::WindowOf(const forms::Form& form) {
  HWND window = nullptr;
  DWORD process = 0;
  do {
    window = FindWindowExW(nullptr, window, L"QXDialog", windows::Utf16(form.Title()).c_str());
    GetWindowThreadProcessId(window, &process);
  } while (window != nullptr && process != GetCurrentProcessId());
  return window;
}

HWND WindowTest::ItemOf(const forms::Form& form, const forms::Control& control) {
  const windows::ControlId* entry = windows::FindControlId(form.Name(), control.Name());
  return entry == nullptr ? nullptr : GetDlgItem(WindowOf(form), entry->id);
}

void WindowTest::Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  PostMessageW(window, message, wParam, lParam);
  loop_.Yield();
}

void WindowTest::Key(WPARAM key) {
  PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
  Post(GetFocus(), WM_KEYUP, key, static_cast<LPARAM>(0xC0000001U));
}

void WindowTest::Type(HWND window, const std::wstring& text) {
  for (wchar_t character : text) Post(window, WM_CHAR, character, 1);
}

void WindowTest::Hold(std::initializer_list<int> keys) {
  BYTE state[256] = {};
  for (int key : keys) state[key] = 0x80;
  SetKeyboardState(state);
}

}  // namespace windows_tests
