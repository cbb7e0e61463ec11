// Windows path rules on UTF-8 text. Nothing here looks at a disk.
#pragma once

#include <string>
#include <string_view>

namespace base {

/// `folder`, with "\" added unless it ends in one. An empty text becomes "\".
std::string WithTrailingBackslash(std::string folder);

/// `folder` without the "\" at its end, however many there are; a drive root loses its own too.
std::string WithoutTrailingBackslash(std::string folder);

/// The text after the last "\"; all of it when there is none.
std::string FileNameOf(std::string_view path);

/// The text up to and including the last "\"; empty when there is none.
std::string FolderOf(std::string_view path);

/// The text before the first ":"; empty when there is none.
std::string DriveLetterOf(std::string_view path);

/// Whether two names are the same to Windows: compared without regard to case, letters
/// outside ASCII included where they have a simple counterpart in Latin, Greek or Cyrillic.
bool SameName(std::string_view left, std::string_view right);

}  // namespace base
