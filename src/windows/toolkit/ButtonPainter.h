// The look of a command button: a raised face in the configured colour.
#pragma once

#include "windows/adapters/Win32.h"
#include "windows/toolkit/GdiCache.h"

namespace windows {

/// Whether the user has asked Windows for a high-contrast scheme, which goes before configured colours.
bool IsHighContrast();

struct ButtonColours {
  COLORREF face;
  COLORREF text;
  /// An edge in the text's colour in place of a raised one, whose light and shadow cannot be told from the face
  /// where that is black.
  bool plain = false;
};

/// Draws the button that `item` describes, in the state it names. `isDefault`: it stands behind Enter
/// and gets a frame.
void PaintButton(const DRAWITEMSTRUCT& item, const ButtonColours& colours, bool isDefault, GdiCache& gdi);

}  // namespace windows
