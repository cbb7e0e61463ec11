// The text of a window, whatever its length.
#pragma once

#include <string>

#include "windows/adapters/Win32.h"

namespace windows {

std::wstring WideTextOf(HWND window);
/// In UTF-8.
std::string TextOf(HWND window);
/// Leaves a window alone that shows `text` (UTF-8) already: a caret would jump, an event be raised.
void ShowText(HWND window, const std::string& text);

}  // namespace windows
