// Fills the fixed buffers of the host libraries' callers.
#include "libraries/Buffers.h"

#include <windows.h>

#include <cstring>

#include "windows/adapters/Text.h"

namespace reference {

void FillBuffer(char* buffer, std::size_t size, const std::string& text) {
  const std::string ansi = windows::ToCodePageStrictly(text);
  std::size_t fitting = 0;
  while (fitting < ansi.size()) {
    const std::size_t step = IsDBCSLeadByte(static_cast<BYTE>(ansi[fitting])) ? 2 : 1;
    if (fitting + step >= size) break;
    fitting += step;
  }
  std::memcpy(buffer, ansi.data(), fitting);
  buffer[fitting] = '\0';
}

}  // namespace reference
