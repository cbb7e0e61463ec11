// Which members of a cabinet are wanted, and the folder that they go to.
#include "cabarc/Selection.h"

#include <algorithm>

namespace cabarc {

using platform::kSeparator;

namespace {

Status CheckFolder(const std::string& path) {
  switch (platform::KindOf(path)) {
    case platform::Kind::Folder:
    case platform::Kind::Missing:
      return {};
    case platform::Kind::Link:
      return UnsafeName(path + ": it is a link, and may lead out of the target folder");
    default:
      return FileError(path + ": it is in the way of a folder of that name");
  }
}

Status CreateFolder(const std::string& path) {
  Status status = CheckFolder(path);
  if (status.Failed() || platform::KindOf(path) == platform::Kind::Folder || platform::CreateFolder(path))
    return status;
  return FileError(path + ": it cannot be made: " + platform::LastError());
}

}  // namespace

TargetFolder::TargetFolder(std::string_view root) : root_(platform::ToNative(root)) {
  if (!root_.empty() && root_.back() != kSeparator) root_ += kSeparator;
}

Status TargetFolder::Create() {
  std::size_t end = root_.size();
  // Back to the first folder that is there, then forward. The root itself may be reached through links.
  while (end > 1 && platform::InfoOf(root_.substr(0, end)).kind == platform::Kind::Missing) {
    const std::size_t before = root_.rfind(kSeparator, end - 2);
    end = before == std::string::npos ? 0 : before + 1;
  }
  while (end < root_.size()) {
    end = root_.find(kSeparator, end) + 1;
    const std::string path = root_.substr(0, end - 1);
    if (!platform::CreateFolder(path)) return FileError(path + ": it cannot be made: " + platform::LastError());
  }
  return {};
}

std::string TargetFolder::PathOf(std::string_view name) const {
  return root_ + platform::ToNative(name);
}

Status TargetFolder::CheckFoldersOf(std::string_view name) {
  return ForFoldersOf(name, CheckFolder);
}

Status TargetFolder::CreateFoldersOf(std::string_view name) {
  return ForFoldersOf(name, CreateFolder);
}

Status TargetFolder::ForFoldersOf(std::string_view name, Step step) {
  const std::string_view folder = name.substr(0, name.rfind('\\') + 1);
  if (folder == last_ && step == step_) return {};
  if (step != step_) done_.clear();
  step_ = step;
  for (std::size_t end = folder.find('\\'); end != std::string_view::npos; end = folder.find('\\', end + 1)) {
    const std::string part(folder.substr(0, end));
    if (done_.contains(part)) continue;
    if (Status status = step(PathOf(part)); status.Failed()) return status;
    done_.insert(part);
  }
  last_ = folder;
  return {};
}

Status SelectMembers(const Structure& structure, const ExtractOptions& options, std::vector<Wanted>& wanted) {
  std::vector<bool> used(options.names.size());
  for (const Member& member : structure.members) {
    bool chosen = options.names.empty();
    for (std::size_t i = 0; i < options.names.size(); ++i) {
      if (!Matches(options.names[i], member.name) && !Matches(options.names[i], BaseName(member.name))) continue;
      used[i] = true;
      chosen = true;
    }
    if (chosen) wanted.push_back({&member, std::string(options.keepPaths ? member.name : BaseName(member.name))});
  }
  const auto unused = std::find(used.begin(), used.end(), false);
  if (unused == used.end()) return {};
  const std::string& name = options.names[static_cast<std::size_t>(unused - used.begin())];
  return FileError(name + ": the cabinet has no such file, and there is no folder of that name to extract to");
}

Status CheckNames(const std::vector<Wanted>& wanted) {
  std::unordered_set<std::string> names;
  for (const Wanted& one : wanted) {
    if (one.member->nameIsMalformed) return MalformedName(*one.member);
    // The whole name counts, even if only its last part is used: an honest cabinet has no such name at all.
    if (const auto reason = WhyUnsafe(one.member->name)) {
      return UnsafeName(one.member->name + ": unsafe name: " + std::string(*reason));
    }
    if (!names.insert(platform::FoldName(one.name)).second) {
      return UnsafeName(one.name + ": two files of the cabinet have this name");
    }
  }
  for (const Wanted& one : wanted) {
    for (std::size_t end = one.name.find('\\'); end != std::string::npos; end = one.name.find('\\', end + 1)) {
      if (!names.contains(platform::FoldName(one.name.substr(0, end)))) continue;
      return UnsafeName(one.name + ": a file of the cabinet has the name of its folder");
    }
  }
  return {};
}

Status CheckTarget(const std::vector<Wanted>& wanted, TargetFolder& target, bool overwrite) {
  for (const Wanted& one : wanted) {
    if (Status status = target.CheckFoldersOf(one.name); status.Failed()) return status;
    const std::string path = target.PathOf(one.name);
    if (!overwrite && platform::KindOf(path) != platform::Kind::Missing) {
      return FileError(path + ": it is there already; -o replaces it");
    }
  }
  return {};
}

}  // namespace cabarc
