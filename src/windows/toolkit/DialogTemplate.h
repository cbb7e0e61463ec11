// Dialog templates out of the resources: the IDs of their controls, and their bytes for a font that is known only at
// run time.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "windows/adapters/Win32.h"

namespace windows {

/// One control of a template: the build reads these off the templates.
struct ControlId {
  std::string_view form;
  std::string_view control;  ///< the name of the form's member
  int id;                    ///< from resource.h
};

/// The controls of a form's template in the order of their IDs; nothing for an unknown form.
std::span<const ControlId> ControlIdsOf(std::string_view formName);

/// The entry of one control; nullptr when the template has no control of that name.
const ControlId* FindControlId(std::string_view formName, std::string_view controlName);

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
