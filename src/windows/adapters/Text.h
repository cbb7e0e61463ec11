// Text at the edges: UTF-8 inside, UTF-16 at the wide API, the system's code
// page at the host libraries and in text files.
#pragma once

#include <string>
#include <string_view>

namespace windows {

/// Bytes that are not UTF-8 become the replacement character.
std::wstring Utf16(std::string_view utf8);
std::string Utf8(std::wstring_view utf16);

/// Characters that the code page does not have become a similar one, or its substitute, mostly "?".
std::string ToCodePage(std::string_view utf8);
/// The same, but never a similar one: in a path or a name that would be another file or another person.
std::string ToCodePageStrictly(std::string_view utf8);
std::string FromCodePage(std::string_view bytes);

}  // namespace windows
