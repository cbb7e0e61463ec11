// The two wildcard languages: text patterns with lists, and file name patterns.
#pragma once

#include <string_view>

namespace base {

/// Whether the whole of `text` fits `pattern`: "*" any characters, "?" one, "#" one digit,
/// "[abc]", "[a-z]" and "[!abc]" one of (or none of) a list. Case-sensitive. A pattern with an
/// unclosed "[" fits nothing.
bool MatchesPattern(std::string_view text, std::string_view pattern);

/// Whether a file name fits a pattern of "*" and "?" alone, without regard to case.
bool MatchesFileName(std::string_view name, std::string_view pattern);

}  // namespace base
