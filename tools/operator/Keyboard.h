// An operator without a mouse: keys go where the system sends them, to the window in front.
#pragma once

#include <windows.h>

#include <string>

namespace endtoend {

/// Sends one event of the keyboard: a key, or a character with KEYEVENTF_UNICODE.
void SendKey(WORD key, DWORD flags = 0);
/// Presses and releases a key.
void PressKey(WORD key);
/// Types a text (UTF-8) into whatever has the focus.
void TypeText(const std::string& text);

}  // namespace endtoend
