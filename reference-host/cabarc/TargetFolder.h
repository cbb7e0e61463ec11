// The folder that members are extracted into, and the only way to a path below it.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include "cabarc/Status.h"

namespace cabinet {

class TargetFolder {
 public:
  /// `root`: the folder, with or without a separator at its end; empty is the current one.
  explicit TargetFolder(std::string_view root);

  /// Makes the folder itself, and those above it, where they are missing.
  Status Create();

  /// The path of a member whose name is safe (see WhyUnsafe).
  std::string PathOf(std::string_view name) const;

  /// Makes the folders that a member's name asks for. Refuses a link among them, which could lead anywhere.
  Status CreateFoldersOf(std::string_view name);

 private:
  Status CreateOne(const std::string& path);

  std::string root_;                      // empty, or with a separator at its end
  std::string last_;                      // folder part of the member before: mostly the same again
  std::unordered_set<std::string> made_;  // folder parts known to be folders
};

}  // namespace cabinet
