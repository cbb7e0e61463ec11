// Twips, in which forms keep their place, and pixels, which depend on the monitor.
#pragma once

#include "windows/adapters/Win32.h"

namespace windows {

/// Dots per inch of the monitor that shows `window`.
int DpiOf(HWND window);
/// Dots per inch of the primary monitor.
int ScreenDpi();

int ToTwips(int pixels, int dpi);
int ToPixels(int twips, int dpi);

}  // namespace windows
