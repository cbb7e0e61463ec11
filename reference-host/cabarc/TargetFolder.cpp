// The folder that members are extracted into, and the only way to a path below it.
#include "cabarc/TargetFolder.h"

#include "cabarc/Platform.h"

namespace cabinet {

using platform::kSeparator;

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

Status TargetFolder::CreateFoldersOf(std::string_view name) {
  const std::string_view folder = name.substr(0, name.rfind('\\') + 1);
  if (folder == last_) return {};
  for (std::size_t end = folder.find('\\'); end != std::string_view::npos; end = folder.find('\\', end + 1)) {
    const std::string part(folder.substr(0, end));
    if (made_.contains(part)) continue;
    if (Status status = CreateOne(PathOf(part)); status.Failed()) return status;
    made_.insert(part);
  }
  last_ = folder;
  return {};
}

Status TargetFolder::CreateOne(const std::string& path) {
  switch (platform::KindOf(path)) {
    case platform::Kind::Folder:
      return {};
    case platform::Kind::Link:
      return UnsafeName(path + ": it is a link, and may lead out of the target folder");
    case platform::Kind::Missing:
      if (platform::CreateFolder(path)) return {};
      return FileError(path + ": it cannot be made: " + platform::LastError());
    default:
      return FileError(path + ": it is in the way of a folder of that name");
  }
}

}  // namespace cabinet
