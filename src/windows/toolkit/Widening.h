// Widens a dialog whose captions are longer than its template has room for.
#pragma once

#include <vector>

#include "windows/toolkit/BoundControl.h"

namespace windows {

/// Stretches the dialog and its controls sideways, all by one factor, until no caption is cut, as far as the monitor
/// allows; at most to about twice the width. Nothing happens where all have room. Call it once, before the dialog is
/// shown.
void WidenForCaptions(HWND dialog, const std::vector<BoundControl>& controls);

}  // namespace windows
