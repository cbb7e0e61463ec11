// Which control ID a form's template uses for which member of the form.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "forms/Controls.h"

namespace windows {

struct ControlId {
  const char* name;  ///< of the form's member
  int id;            ///< from resources/resource.h
  /// The text colour that the template gives, where it is not the system's.
  std::optional<forms::Colour> foreground = {};
};

/// The controls of a form's template in the order of their IDs; nothing for an unknown form.
std::span<const ControlId> ControlIdsOf(std::string_view formName);

/// The entry of one control; nullptr when the template has no control of that name.
const ControlId* FindControlId(std::string_view formName, std::string_view controlName);

}  // namespace windows
