// An operator without a mouse: keys go where the system sends them, to the window in front.
#pragma once

#include <windows.h>

#include <string>

namespace endtoend {

/// Presses and releases a key, with `held` (VK_SHIFT, VK_MENU) down meanwhile where it is given.
void PressKey(WORD key, WORD held = 0);
/// Types a text (UTF-8) into whatever has the focus.
void TypeText(const std::string& text);

}  // namespace endtoend
