// Which members of a cabinet are wanted, and the folder that they go to.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "cabarc/CabinetReader.h"
#include "cabarc/MemberNames.h"

namespace cabarc {

/// The folder that members are extracted into, and the only way to a path below it.
class TargetFolder {
 public:
  /// `root`: the folder, with or without a separator at its end; empty is the current one.
  explicit TargetFolder(std::string_view root);

  /// Makes the folder itself, and those above it, where they are missing.
  Status Create();

  /// The path of a member whose name is safe (see WhyUnsafe).
  std::string PathOf(std::string_view name) const;

  /// Whether the folders that a member's name asks for are there or can be made: refuses a link among them, which could
  /// lead anywhere, and a file.
  Status CheckFoldersOf(std::string_view name);

  /// Makes these folders, by the same rules.
  Status CreateFoldersOf(std::string_view name);

 private:
  using Step = Status (*)(const std::string& path);

  Status ForFoldersOf(std::string_view name, Step step);

  std::string root_;                      // empty, or with a separator at its end
  Step step_ = nullptr;                   // what was done last, and for which
  std::string last_;                      // folder part: mostly the same comes again
  std::unordered_set<std::string> done_;  // folder parts for which it was done
};

/// A member that is to be extracted.
struct Wanted {
  const Member* member;
  std::string name;  // below the target folder, parts separated by "\"
};

/// Finds the members that the options name. A name that matches nothing is an error.
Status SelectMembers(const Structure& structure, const ExtractOptions& options, std::vector<Wanted>& wanted);

/// Refuses names that are unsafe, and such as cannot stand beside each other.
Status CheckNames(const std::vector<Wanted>& wanted);

/// Looks for what stands in the way, before anything is written: a file that must not be replaced, or one where
/// a folder has to come.
Status CheckTarget(const std::vector<Wanted>& wanted, TargetFolder& target, bool overwrite);

}  // namespace cabarc
