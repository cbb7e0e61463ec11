// Windows path rules on UTF-8 text. Bytes of "\" and ":" are never part of another character in UTF-8.
#include "base/Path.h"

#include "base/Unicode.h"

namespace base {

std::string WithTrailingBackslash(std::string folder) {
  if (!folder.ends_with('\\')) folder.push_back('\\');
  return folder;
}

std::string WithoutTrailingBackslash(std::string folder) {
  while (folder.ends_with('\\')) folder.pop_back();
  return folder;
}

std::string FileNameOf(std::string_view path) {
  return std::string(path.substr(FolderOf(path).size()));
}

std::string FolderOf(std::string_view path) {
  const std::size_t last = path.rfind('\\');
  return last == std::string_view::npos ? std::string() : std::string(path.substr(0, last + 1));
}

std::string DriveLetterOf(std::string_view path) {
  const std::size_t colon = path.find(':');
  return colon == std::string_view::npos ? std::string() : std::string(path.substr(0, colon));
}

bool SameName(std::string_view left, std::string_view right) {
  while (!left.empty() && !right.empty()) {
    if (FoldCase(TakeCharacter(left)) != FoldCase(TakeCharacter(right))) return false;
  }
  return left.empty() && right.empty();
}

}  // namespace base
