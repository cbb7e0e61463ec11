// The host libraries' results and the fixed buffers that callers hand them.
#pragma once

#include <cstddef>
#include <string>

namespace reference {

inline constexpr long kDone = 0;
inline constexpr long kFailed = -1;

/// Writes `text` (UTF-8) to `buffer` in the system's code page with a closing NUL, cut between two
/// characters to fit `size` bytes in all. Bytes behind the NUL are left alone.
void FillBuffer(char* buffer, std::size_t size, const std::string& text);

}  // namespace reference
