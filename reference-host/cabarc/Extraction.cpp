// Extracts the members of a cabinet into a folder.
#include <algorithm>
#include <string_view>
#include <tuple>
#include <unordered_set>

#include "cabarc/CabinetReader.h"
#include "cabarc/MemberNames.h"

namespace cabarc {

using platform::kSeparator;

namespace {

/// The folder that members are extracted into, and the only way to a path below it.
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

struct Wanted {
  const Member* member;
  std::string name;  // below the target folder, parts separated by "\"
};

Status SelectMembers(const Structure& structure, const ExtractOptions& options, std::vector<Wanted>& wanted) {
  std::vector<bool> used(options.names.size());
  for (const Member& member : structure.members) {
    bool chosen = options.names.empty();
    for (std::size_t i = 0; i < options.names.size(); ++i) {
      if (!Matches(options.names[i], member.name) && !Matches(options.names[i], BaseName(member.name))) continue;
      used[i] = true;
      chosen = true;
    }
    if (chosen && member.nameIsMalformed) return MalformedName(member);
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
    // The whole name counts, even if only its last part is used: an honest cabinet has no such name at all.
    if (const auto reason = WhyUnsafe(one.member->name)) {
      return UnsafeName(one.member->name + ": unsafe name: " + std::string(*reason));
    }
    if (!names.insert(platform::FoldName(one.name)).second) {
      return UnsafeName(one.name + ": two files of the cabinet have this name");
    }
  }
  return {};
}

Status CheckNothingIsReplaced(const std::vector<Wanted>& wanted, const TargetFolder& target) {
  for (const Wanted& one : wanted) {
    const std::string path = target.PathOf(one.name);
    if (platform::KindOf(path) != platform::Kind::Missing) {
      return FileError(path + ": it is there already; -o replaces it");
    }
  }
  return {};
}

// Cuts the data of one folder into its files.
class FolderSink {
 public:
  FolderSink(std::vector<Wanted>::const_iterator first, std::vector<Wanted>::const_iterator last, TargetFolder& target,
             std::size_t& extracted)
      : next_(first), last_(last), target_(target), extracted_(extracted) {}

  Status Take(const std::uint8_t* data, std::size_t size) {
    const std::uint64_t end = at_ + size;
    while (next_ != last_ && next_->member->at < end) {
      const std::uint64_t memberEnd = std::uint64_t{next_->member->at} + next_->member->size;
      const std::uint64_t from = std::max<std::uint64_t>(at_, next_->member->at);
      const std::uint64_t to = std::min(end, memberEnd);
      Status status = Write(data + (from - at_), static_cast<std::size_t>(to - from));
      if (status.Failed()) return status;
      if (memberEnd > end) break;
      if (status = Finish(); status.Failed()) return status;
    }
    at_ = end;
    return {};
  }

  // To be called after the last data: empty files may stand behind them.
  Status End() {
    while (next_ != last_) {
      if (next_->member->size > 0) return BrokenCabinet(next_->name + ": its data are missing");
      Status status = Write(nullptr, 0);
      if (!status.Failed()) status = Finish();
      if (status.Failed()) return status;
    }
    return {};
  }

 private:
  Status Write(const std::uint8_t* data, std::size_t size) {
    Status status;
    if (!file_.IsOpen()) {
      status = target_.CreateFoldersOf(next_->name);
      if (!status.Failed()) status = file_.Create(target_.PathOf(next_->name), next_->member->attributes);
    }
    return status.Failed() || size == 0 ? status : file_.Write(data, size);
  }

  Status Finish() {
    Status status = file_.SetAttributes(next_->member->attributes, next_->member->stamp);
    if (!status.Failed()) status = file_.Commit();
    if (status.Failed()) return status;
    ++next_;
    ++extracted_;
    return {};
  }

  std::vector<Wanted>::const_iterator next_;  // the file being written, or to come
  const std::vector<Wanted>::const_iterator last_;
  TargetFolder& target_;
  std::size_t& extracted_;
  NewFile file_;
  std::uint64_t at_ = 0;  // how much of the folder was taken
};

}  // namespace

Status MalformedName(const Member& member) {
  return BrokenCabinet(member.name + ": its name is not the UTF-8 that it is marked as");
}

Status Extract(CabinetReader& reader, const ExtractOptions& options, std::size_t& extracted) {
  std::vector<Wanted> wanted;
  TargetFolder target(options.target);
  Status status = SelectMembers(reader.Records(), options, wanted);
  if (!status.Failed()) status = CheckNames(wanted);
  const Status whole = reader.CheckGuards();
  if (!status.Failed() && !options.salvage) status = whole;
  if (!status.Failed() && !options.overwrite) status = CheckNothingIsReplaced(wanted, target);
  if (!status.Failed()) status = target.Create();
  if (status.Failed()) return status;

  std::sort(wanted.begin(), wanted.end(), [](const Wanted& a, const Wanted& b) {
    return std::tie(a.member->folder, a.member->at, a.member->size) <
           std::tie(b.member->folder, b.member->at, b.member->size);
  });
  for (auto first = wanted.cbegin(); first != wanted.cend();) {
    const std::size_t folder = first->member->folder;
    const auto last =
        std::find_if(first, wanted.cend(), [folder](const Wanted& one) { return one.member->folder != folder; });
    FolderSink sink(first, last, target, extracted);
    status = reader.ReadFolder(folder, options.read,
                               [&](const std::uint8_t* data, std::size_t size) { return sink.Take(data, size); });
    if (!status.Failed()) status = sink.End();
    if (status.Failed()) return status;
    first = last;
  }
  return whole;
}

}  // namespace cabarc
