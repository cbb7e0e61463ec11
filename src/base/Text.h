// Small rules on text, and the fixed formats of numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace base {

/// The text without blanks at either end.
std::string Trim(std::string_view text);

/// `text` in double quotes.
std::string Quoted(std::string_view text);

/// The pieces of `text` between the separators; one empty piece for an empty text.
std::vector<std::string> Split(std::string_view text, char separator);

/// `text` with every `from`, letter case included, replaced by `to`.
std::string Replaced(std::string text, const std::string& from, const std::string& to);

/// The text before the first NUL, as it comes out of the fixed buffers of the host's libraries; with
/// `stripPrefix`, first drops everything up to and including the first ":".
std::string CutAtNul(const std::string& text, bool stripPrefix = false);

/// Cut, or padded with blanks, to exactly `width` characters.
std::string FixedWidth(std::string_view text, std::size_t width);

/// The number at the head of the trimmed text, 0 when there is none. One beyond 32 bits stands at the largest.
std::int32_t LeadingNumber(std::string_view text);

/// `number`, which is not negative, in decimal with at least `digits` digits: 1 becomes "001" with three.
std::string WithLeadingZeros(std::int64_t number, std::size_t digits);

/// `bytes` in units of 1024 * 1024 as "###,##0.00", such as "10,240.00".
std::string FormatMegabytes(std::uint64_t bytes);
/// With its unit: such megabytes, and below one of them whole kilobytes, rounded up.
std::string FormatSize(std::uint64_t bytes);

}  // namespace base
