// Fixed formats of dates, sizes and numbers, and wildcard patterns.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/Clock.h"

namespace app {

/// "yyyy/mm/dd hh:mm:ss", the log's time stamp.
std::string FormatLogTime(const host::LocalTime& time);
/// "yymmddhhmmss": the staging folder's name.
std::string FormatShortStamp(const host::LocalTime& time);
/// "yyyymmddhhnnss": the proposed folder's name.
std::string FormatLongStamp(const host::LocalTime& time);
/// "yyyymmdd": the registry's backup date.
std::string FormatDay(const host::LocalTime& time);

/// `bytes` in units of 1024 * 1024 as "###,##0.00", such as "10,240.00".
std::string FormatMegabytes(std::uint64_t bytes);

/// `number` in decimal with at least three digits: 1 becomes "001".
std::string FormatPieceNumber(std::int32_t number);

/// The pieces of `text` between the separators; one empty piece for an empty text.
std::vector<std::string> Split(std::string_view text, char separator);

/// Whether the whole of `text` fits `pattern`: "*" any characters, "?" one, "#" one digit,
/// "[abc]", "[a-z]" and "[!abc]" one of (or none of) a list. Case-sensitive. A pattern with an
/// unclosed "[" fits nothing.
bool MatchesPattern(std::string_view text, std::string_view pattern);

/// Whether a file name fits a pattern of "*" and "?" alone, without regard to case.
bool MatchesFileName(std::string_view name, std::string_view pattern);

}  // namespace app
