// Paths as the wide API takes them.
#pragma once

#include <string>

namespace windows {

/// The folder of the running program, with a "\" at its end.
std::wstring ProgramFolder();

/// `path` in UTF-16, absolute and with single separators; a folder's "\" at the end stays.
/// Empty when the path makes no sense.
std::wstring FullPath(const std::string& path);

/// `path` in UTF-16, made absolute with single separators where it is longer than the API
/// takes as it stands. Doubled separators in shorter ones are the system's to skip.
std::wstring ApiPath(const std::string& path);

/// `path` made absolute, in the form that knows no length limit, without a "\" at its end:
/// for walks below it. Empty when the path makes no sense.
std::wstring UnlimitedPath(const std::string& path);

/// A path of the wide API as a person writes it: in UTF-8, without the mark of the form that knows no limit.
std::string ShownPath(const std::wstring& path);

}  // namespace windows
