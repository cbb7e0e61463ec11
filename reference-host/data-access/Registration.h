// Puts this server's classes into the registry and takes them out again.
#pragma once

#include <windows.h>

namespace dataaccess {

/// Registers every class under its well-known name and remembers which class had the name before.
/// Fails anywhere but under Wine: a real machine has a real data access of those names, which other
/// programs use and a stand-in must never displace.
HRESULT RegisterClasses();

/// Gives the names back to the classes that had them.
HRESULT UnregisterClasses();

}  // namespace dataaccess
