// What the exports of the host's libraries share: the callers' buffers, and the one connection.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "common/Database.h"
#include "common/Host.h"
#include "windows/adapters/Text.h"

namespace reference {

/// Writes `text` (UTF-8) to `buffer` in the system's code page with a closing NUL, cut between two
/// characters to fit `size` bytes in all. Bytes behind the NUL are left alone.
void FillBuffer(char* buffer, std::size_t size, const std::string& text);

/// The one connection that a library's calls share: its interface hands out no handle. Null while it is closed.
std::unique_ptr<Database>& Connection();

/// Replaces the connection by one to `location`, in the system's code page. kDone or kFailed.
long Connect(const char* location);
/// kFailed when it was closed already.
long Disconnect();

}  // namespace reference
