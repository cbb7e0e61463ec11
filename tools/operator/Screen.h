// Pictures of the screen, and commands of the machine that Wine runs on.
#pragma once

#include <string>

#include "operator/Window.h"

namespace endtoend {

/// Starts a command of the machine's shell and does not wait for it. Throws std::runtime_error when it cannot.
void RunNative(const std::string& command);

enum class Part { Screen, Window };

/// Leaves what the screen shows when `window` is in front and painted in `picture`, a path of the
/// machine: the whole screen, or the window with its frame. Throws std::runtime_error when no picture comes.
void TakeScreenshot(const std::string& picture, const Window& window, Part part);

/// Puts the mouse into a corner: a control under it looks different.
void MoveMouseAway();

}  // namespace endtoend
