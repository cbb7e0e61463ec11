// Fills the fixed buffers of the host libraries' callers, and keeps a library's connection.
#include "libraries/Calls.h"

#include <windows.h>

#include <cstring>

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

std::unique_ptr<Database>& Connection() {
  static std::unique_ptr<Database> connection;
  return connection;
}

long Connect(const char* location) {
  if (!location) return kFailed;
  Connection() = Database::Open(windows::FromCodePage(location));
  return Connection() ? kDone : kFailed;
}

long Disconnect() {
  if (!Connection()) return kFailed;
  Connection().reset();
  return kDone;
}

}  // namespace reference
