// Text at the edges: UTF-8 inside, UTF-16 at Windows, the system's code page at ANSI exports.
#pragma once

#include <string>
#include <string_view>

namespace reference {

std::wstring Utf16(std::string_view utf8);
std::string Utf8(std::wstring_view utf16);
/// Characters outside the system's code page become "?".
std::string ToAnsi(std::string_view utf8);
std::string FromAnsi(std::string_view ansi);

}  // namespace reference
