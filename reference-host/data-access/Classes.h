// The classes that this server makes, and the names under which programs ask for them.
#pragma once

#include <objbase.h>

#include <span>

#include "data-access/Automation.h"

namespace dataaccess {

struct ServedClass {
  CLSID id;
  const wchar_t* progId;
  AutomationObject* (*create)();
};

std::span<const ServedClass> ServedClasses();

}  // namespace dataaccess
