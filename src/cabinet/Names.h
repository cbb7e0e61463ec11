// How the names of a cabinet's members are written.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace cabinet {

/// Makes UTF-8 of the bytes of a code page.
using CodePage = std::function<std::string(std::string_view bytes)>;

/// Windows code page 1252. Bytes that mean nothing there become a replacement character.
std::string FromCodePage1252(std::string_view bytes);

bool IsAscii(std::string_view text);
/// Whether `text` is well-formed UTF-8: no overlong forms, no surrogates.
bool IsUtf8(std::string_view text);

/// `text`, UTF-8, fit for a line on a terminal: control characters as their pictures (U+2400 and following), others
/// that would turn or hide what follows them, and bytes that are no UTF-8, as a replacement character.
std::string Printable(std::string_view text);

}  // namespace cabinet
