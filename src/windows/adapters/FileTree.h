// What Win32FileSystem does in more than one step, on paths of the wide API.
#pragma once

#include <functional>
#include <string>

#include "windows/adapters/Win32.h"

namespace windows {

/// Calls `visit` for every entry of `folder` but "." and "..". Returns false when the folder cannot be read to its end.
bool ForEachEntry(const std::wstring& folder, const std::function<void(const WIN32_FIND_DATAW&)>& visit);

/// Deletes one file, read-only or not.
bool DeleteForced(const std::wstring& file);

/// Deletes a folder and all below it, as much as can be deleted. `folder` has no "\" at its end.
/// Calls `afterEach` all the while, on the caller's thread, so that others can be served.
bool DeleteTree(const std::wstring& folder, const std::function<void()>& afterEach);

/// Length in bytes, that of its target for a link; -1 when the file cannot be examined.
long long SizeOf(const std::wstring& file);

/// Copies one file to a name that is not taken; leaves nothing behind on a failure. Calls `meanwhile` from time to
/// time.
bool CopyToNewFile(const std::wstring& source, const std::wstring& target, const std::function<void()>& meanwhile);

/// Copies one file over another one, which stays as it was when that fails. Calls `meanwhile` from time to time.
bool CopyOver(const std::wstring& source, const std::wstring& target, const std::function<void()>& meanwhile);

}  // namespace windows
