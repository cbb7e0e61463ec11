// Helpers for one window: its text, whatever its length, and its resolution.
//
// Forms keep their place in twips (1/1440 inch); how many pixels that is depends on the monitor.
#pragma once

#include <string>

#include "windows/adapters/Win32.h"

namespace windows {

std::wstring WideTextOf(HWND window);
/// In UTF-8.
std::string TextOf(HWND window);
/// Leaves a window alone that shows `text` (UTF-8) already: a caret would jump, an event be raised.
void ShowText(HWND window, const std::string& text);

/// Dots per inch of the monitor that shows `window`.
int DpiOf(HWND window);
/// Dots per inch of the primary monitor.
int ScreenDpi();

int ToTwips(int pixels, int dpi);
int ToPixels(int twips, int dpi);

}  // namespace windows
