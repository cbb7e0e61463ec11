// The names of a cabinet's members: safety, wildcards.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cabinet/Names.h"

namespace cabarc {

using namespace cabinet;

/// Why a name (UTF-8, "\" or "/" between its parts) must be neither stored nor extracted: because it would lead out
/// of the target folder, name a device or a stream, or be changed by Windows into another name. Nothing when safe.
/// The answer is the same on every platform.
std::optional<std::string_view> WhyUnsafe(std::string_view name);

/// The text after the last "\".
std::string_view BaseName(std::string_view name);

/// Whether `text` matches `pattern` with "*" and "?", without regard to case in ASCII. "*.*" matches everything, names
/// without a dot too.
bool Matches(std::string_view pattern, std::string_view text);
bool HasWildcard(std::string_view text);

}  // namespace cabarc
