// Text and resolution of a window.
#include "windows/toolkit/Window.h"

#include "windows/adapters/Text.h"

namespace windows {

namespace {

constexpr int kTwipsPerInch = 1440;

}  // namespace

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

int ScreenDpi() {
  HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return dpi > 0 ? dpi : USER_DEFAULT_SCREEN_DPI;
}

int DpiOf(HWND window) {
  // Looked up because versions before Windows 10 have one resolution for all monitors, and no such call.
  using Query = UINT(WINAPI*)(HWND);
  auto* address = reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow"));
  const UINT dpi = address == nullptr ? 0 : reinterpret_cast<Query>(address)(window);
  return dpi == 0 ? ScreenDpi() : static_cast<int>(dpi);
}

int ToTwips(int pixels, int dpi) {
  return MulDiv(pixels, kTwipsPerInch, dpi);
}

int ToPixels(int twips, int dpi) {
  return MulDiv(twips, dpi, kTwipsPerInch);
}

}  // namespace windows
