// Folders that other users of the computer cannot look into.
#pragma once

#include <string>

#include "windows/adapters/Win32.h"

namespace windows {

/// Creates the folder `path`, as CreateDirectory takes it, with a protected access list: full access for the
/// process's user, the administrators and the system, handed on to everything created in it. FALSE when it
/// could not be created, or the list could not be made.
BOOL CreatePrivateFolder(const std::wstring& path);

}  // namespace windows
