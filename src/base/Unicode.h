// The little that this program needs to know of Unicode: characters of UTF-8 text and letter case.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace base {

/// Takes the first character off `text`, which must not be empty. A byte that is no
/// part of valid UTF-8 is a character of its own that equals no valid one.
char32_t TakeCharacter(std::string_view& text);

/// All characters of `text`, by the rule of TakeCharacter.
std::u32string ToCharacters(std::string_view text);

/// The small letter of a capital one; every other character as it is. Knows Latin (full-width
/// letters included), Greek and Cyrillic, in the pairs by which Windows compares file names.
char32_t FoldCase(char32_t character);

/// The characters of a text with their case folded: what Windows compares names by.
std::u32string Folded(std::string_view text);

/// Length of a UTF-8 text in UTF-16 units, as Windows counts it.
std::size_t WideLength(std::string_view text);

}  // namespace base
