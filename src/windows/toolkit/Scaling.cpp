// Twips and pixels by the monitor's resolution.
#include "windows/toolkit/Scaling.h"

namespace windows {

namespace {

constexpr int kTwipsPerInch = 1440;

}  // namespace

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
