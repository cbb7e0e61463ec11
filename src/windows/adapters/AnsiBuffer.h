// A buffer for a text that a host library writes.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "windows/adapters/Text.h"

namespace windows {

class AnsiBuffer {
 public:
  /// `capacity` is the number of characters that the host's interface states.
  explicit AnsiBuffer(std::size_t capacity) : capacity_(capacity), bytes_(capacity + kSlack, '\0') {}

  char* Data() { return bytes_.data(); }

  /// The text before the first NUL, at most the stated number of characters, in UTF-8.
  std::string Text() const { return FromCodePage({bytes_.data(), strnlen(bytes_.data(), capacity_)}); }

 private:
  // The libraries know no buffer sizes: they copy what their database holds. What runs over
  // the stated size must land here and not in the rest of the program.
  static constexpr std::size_t kSlack = 4096;

  std::size_t capacity_;
  std::vector<char> bytes_;
};

}  // namespace windows
