// Font and colours of the message window: the host's registry settings, or the system's.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "components/MessageCatalogue.h"

namespace components {

struct MessageLook {
  std::wstring fontName;
  int fontPoints = 9;
  COLORREF back = 0, text = 0, button = 0;
  bool isHighContrast = false;

  /// What is missing in the registry comes from the system, and under high contrast all colours do.
  static MessageLook Read();
};

/// The text's colour, `share` percent of it on `under`; all of it under high contrast.
COLORREF Faded(const MessageLook& look, COLORREF under, int share);

/// The system's icon and sound for a kind of message.
struct MessagePicture {
  LPCWSTR icon;
  UINT sound;
};
MessagePicture PictureOf(MessageIcon icon);

struct GdiDelete {
  using pointer = HGDIOBJ;
  void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
using GdiObject = std::unique_ptr<void, GdiDelete>;

/// Dots per inch of the window; the screen's where the system knows no other.
int DpiOf(HWND window);
GdiObject CreateLookFont(const MessageLook& look, int dpi);

/// Draws an owner-drawn push button: `isDefault` is the one that Enter presses.
void DrawLookButton(const DRAWITEMSTRUCT& item, const MessageLook& look, bool isDefault);

}  // namespace components
