// The components that the server offers.
#pragma once

#include <objbase.h>

#include <memory>
#include <span>

#include "components/Component.h"

namespace components {

struct ComponentEntry {
  const wchar_t* programId;
  CLSID classId;
  std::unique_ptr<Component> (*create)();
};

std::span<const ComponentEntry> ComponentTable();

}  // namespace components
