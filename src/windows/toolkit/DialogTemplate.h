// Dialog templates out of the resources, laid out by a font that is known only at run time.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "windows/adapters/Win32.h"

namespace windows {

/// The font by which dialog units are turned into pixels; an empty name stands for the template's own.
struct LayoutFont {
  std::wstring name;
  WORD points = 0;
};

/// The bytes of the program's template `name` with `font` in place of its own, for
/// CreateDialogIndirectParam; empty when there is no such template. Templates are extended ones
/// (DIALOGEX), name a font, and name menu and class by text.
std::vector<std::byte> TemplateWith(const std::wstring& name, const LayoutFont& font);

}  // namespace windows
