// The server's entries in the registry, below HKEY_LOCAL_MACHINE\Software\Classes.
#pragma once

#include <windows.h>

namespace components {

/// Registers every component with this DLL's own path. SELFREG_E_CLASS when the
/// registry refuses, which without administrator's rights it does.
HRESULT RegisterAll();

/// Removes what RegisterAll wrote; entries that are not there count as removed.
HRESULT UnregisterAll();

}  // namespace components
