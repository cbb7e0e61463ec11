// The text of a window, whatever its length.
#include "windows/toolkit/WindowText.h"

#include "windows/adapters/Text.h"

namespace windows {

std::wstring WideTextOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::string TextOf(HWND window) {
  return Utf8(WideTextOf(window));
}

void ShowText(HWND window, const std::string& text) {
  const std::wstring wide = Utf16(text);
  if (WideTextOf(window) != wide) SetWindowTextW(window, wide.c_str());
}

}  // namespace windows
