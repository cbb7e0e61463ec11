// Extracts the members of a cabinet into a folder.
#include <algorithm>
#include <string_view>
#include <tuple>

#include "cabarc/CabinetReader.h"
#include "cabarc/Selection.h"

namespace cabarc {

namespace {

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

// A method that is not supported is found before anything is written.
Status CheckMethods(const CabinetReader& reader, const std::vector<Wanted>& wanted) {
  Status status;
  for (const Wanted& one : wanted) {
    if (!status.Failed()) status = reader.CheckMethod(one.member->folder);
  }
  return status;
}

}  // namespace

Status MalformedName(const Member& member) {
  return BrokenCabinet(member.name + ": its name is not the UTF-8 that it is marked as");
}

Status Extract(CabinetReader& reader, const ExtractOptions& options, std::size_t& extracted) {
  std::vector<Wanted> wanted;
  TargetFolder target(options.target);
  if (reader.Records().members.empty()) return BrokenCabinet("it holds no files");
  Status status = SelectMembers(reader.Records(), options, wanted);
  if (!status.Failed()) status = CheckNames(wanted);
  if (!status.Failed()) status = CheckMethods(reader, wanted);
  if (!status.Failed()) status = reader.CheckGuards();
  if (!status.Failed()) status = CheckTarget(wanted, target, options.overwrite);
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
    Status written;
    status = reader.ReadFolder(folder, options.read, [&](const std::uint8_t* data, std::size_t size) {
      if (options.progress != nullptr) options.progress->Add(size);
      written = sink.Take(data, size);
      return !written.Failed();
    });
    if (written.Failed()) return written;
    if (!status.Failed()) status = sink.End();
    if (status.Failed()) return status;
    first = last;
  }
  return {};
}

}  // namespace cabarc
