// What Win32FileSystem does in more than one step, on paths of the wide API.
//
// Errors are numbers of the system, ERROR_SUCCESS for none, so that the caller can name its own path beside them.
#pragma once

#include <functional>
#include <string>

#include "base/Outcome.h"
#include "windows/adapters/Patience.h"
#include "windows/adapters/Win32.h"

namespace windows {

/// Calls `visit` for every entry of `folder` but "." and "..". An error means that it could not be read to its end.
DWORD ForEachEntry(const std::wstring& folder, const std::function<void(const WIN32_FIND_DATAW&)>& visit);

/// Deletes one file, read-only or not.
DWORD DeleteForced(const std::wstring& file);

/// Deletes a folder and all below it, as much as can be deleted. `folder` has no "\" at its end.
/// Calls `afterEach` all the while, on the caller's thread, so that others can be served.
/// A failure names the first thing that could not be read or deleted.
base::Outcome DeleteTree(const std::wstring& folder, const std::function<void()>& afterEach);

/// Length in bytes, that of its target for a link; -1 when the file cannot be examined.
long long SizeOf(const std::wstring& file);

/// Copies one file to a name that is not taken; leaves nothing behind on a failure. A source in use is waited for.
DWORD CopyToNewFile(const std::wstring& source, const std::wstring& target, Patience& patience);

/// Copies one file over another one, read-only or not, which stays as it was when that fails. Waits for both.
DWORD CopyOver(const std::wstring& source, const std::wstring& target, Patience& patience);

/// Gives `source` the name of `target`, whose file goes. A target in use is told as that.
DWORD Replace(const std::wstring& source, const std::wstring& target, DWORD flags);

/// Has all that was written to a file brought to its medium. The file may be read-only.
DWORD FlushFile(const std::wstring& file);

/// Creates the folder `path` with a protected access list: full access for the process's user, the administrators and
/// the system, handed on to everything created in it. An error also means that the list could not be made.
DWORD CreatePrivateFolder(const std::wstring& path);

}  // namespace windows
