// Scripts that run inside a modal loop, and the operator's hands.
#include "WindowTest.h"

#include "windows/adapters/Text.h"
#include "windows/toolkit/ControlIds.h"
#include "windows/toolkit/WindowText.h"

namespace windows_tests {

namespace {

constexpr UINT kRunScript = WM_APP;
constexpr wchar_t kScriptClass[] = L"QXTestScript";

struct Search {
  std::string title;
  HWND found;
};

BOOL CALLBACK FindTitle(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  wchar_t type[32] = {};
  GetClassNameW(window, type, 32);
  if (std::wstring(type) == L"QXDialog" && windows::TextOf(window) == search.title) search.found = window;
  return search.found == nullptr ? TRUE : FALSE;
}

}  // namespace

WindowTest::WindowTest() {
  WNDCLASSW type = {};
  type.lpfnWndProc = ScriptProc;
  type.hInstance = GetModuleHandleW(nullptr);
  type.lpszClassName = kScriptClass;
  RegisterClassW(&type);
  scriptWindow_ = CreateWindowExW(0, kScriptClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, type.hInstance, nullptr);
}

WindowTest::~WindowTest() {
  Hold();
  DestroyWindow(scriptWindow_);
  UnregisterClassW(kScriptClass, GetModuleHandleW(nullptr));
}

LRESULT CALLBACK WindowTest::ScriptProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != kRunScript) return DefWindowProcW(window, message, wParam, lParam);
  (*reinterpret_cast<std::function<void()>*>(lParam))();
  return 0;
}

void WindowTest::Show(forms::Form& form, std::function<void()> script) {
  std::function<void()> whole = [&form, &script, this] {
    loop_.Yield();
    script();
    if (form.IsOpen()) form.Close();
  };
  PostMessageW(scriptWindow_, kRunScript, 0, reinterpret_cast<LPARAM>(&whole));
  form.ShowModal();
}

HWND WindowTest::WindowOf(const forms::Form& form) {
  Search search = {form.Title(), nullptr};
  EnumThreadWindows(GetCurrentThreadId(), FindTitle, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

HWND WindowTest::ItemOf(const forms::Form& form, const forms::Control& control) {
  const windows::ControlId* entry = windows::FindControlId(form.Name(), control.Name());
  return entry == nullptr ? nullptr : GetDlgItem(WindowOf(form), entry->id);
}

void WindowTest::Key(WPARAM key) {
  PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
  PostMessageW(GetFocus(), WM_KEYUP, key, static_cast<LPARAM>(0xC0000001U));
  loop_.Yield();
}

void WindowTest::Type(HWND window, const std::wstring& text) {
  for (wchar_t character : text) PostMessageW(window, WM_CHAR, character, 1);
  loop_.Yield();
}

void WindowTest::Click(HWND window) {
  PostMessageW(window, BM_CLICK, 0, 0);
  loop_.Yield();
}

void WindowTest::Hold(std::initializer_list<int> keys) {
  BYTE state[256] = {};
  for (int key : keys) state[key] = 0x80;
  SetKeyboardState(state);
}

}  // namespace windows_tests
