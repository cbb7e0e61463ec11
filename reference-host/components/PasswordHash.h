// How the host keeps passwords.
#pragma once

#include <optional>
#include <string>

namespace components {

/// SHA-256 over the UTF-8 bytes of salt and password, as 64 lower-case hexadecimal digits.
/// Nothing when the system's cryptography fails.
std::optional<std::string> HashPassword(const std::string& salt, const std::string& password);

}  // namespace components
