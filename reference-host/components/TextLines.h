// Text files of any of the encodings that the host's programs write.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace components {

/// `bytes` without the lines that `isUnwanted` picks; the lines that stay keep their bytes and
/// line ends. Knows UTF-16 with a byte order mark, UTF-8, and the system's code page. Nothing
/// when `bytes` is no text (it holds NUL bytes).
std::optional<std::string> WithoutLines(std::string_view bytes,
                                        const std::function<bool(std::wstring_view line)>& isUnwanted);

}  // namespace components
