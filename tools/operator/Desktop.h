// What an operator has in front of him: keyboard, mouse, and the screen to take pictures of.
#pragma once

#include <windows.h>

#include <string>

#include "operator/Window.h"

namespace endtoend {

/// Sends one event of the keyboard, which goes where the system sends it, to the window in front: a key, or a character
/// with KEYEVENTF_UNICODE.
void SendKey(WORD key, DWORD flags = 0);
/// Presses and releases a key.
void PressKey(WORD key);
/// Types a text (UTF-8) into whatever has the focus.
void TypeText(const std::string& text);

/// Starts a command of the machine's shell and does not wait for it. Throws std::runtime_error when it cannot.
void RunNative(const std::string& command);

enum class Part { Screen, Window };

/// Leaves what the screen shows when `window` is in front and painted in `picture`, a path of the
/// machine: the whole screen, or the window with its frame. Throws std::runtime_error when no picture comes.
void TakeScreenshot(const std::string& picture, const Window& window, Part part);

/// Puts the mouse into a corner: a control under it looks different.
void MoveMouseAway();

}  // namespace endtoend
