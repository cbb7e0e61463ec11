// Writes files that appear under their names only when they are complete.
#include "cabarc/FileAccess.h"

#include <algorithm>

namespace cabarc {

namespace {

constexpr std::string_view kUnfinishedStart = "~cab";
constexpr std::string_view kUnfinishedEnd = ".part";

}  // namespace

Status FileSource::Open(const std::string& path) {
  if (!file_.OpenForReading(path)) return FileError("it cannot be opened: " + platform::LastError());
  const std::optional<platform::FileInfo> info = file_.Info();
  if (!info || info->kind != platform::Kind::File) return FileError("it is not a file");
  size_ = info->size;
  return {};
}

bool IsUnfinishedName(std::string_view name) {
  if (!name.starts_with(kUnfinishedStart) || !name.ends_with(kUnfinishedEnd)) return false;
  name.remove_prefix(kUnfinishedStart.size());
  name.remove_suffix(std::min(name.size(), kUnfinishedEnd.size()));
  return name.find_first_not_of("0123456789-") == std::string_view::npos;
}

Status NewFile::Create(const std::string& path, std::uint8_t attributes) {
  Discard();
  constexpr int kAttempts = 100;  // a killed process of the same number may have left such names
  path_ = path;
  const std::string start = path.substr(0, path.rfind(platform::kSeparator) + 1).append(kUnfinishedStart) +
                            std::to_string(platform::ProcessNumber()) + "-";
  Status failure;
  for (int i = 0; i < kAttempts; ++i) {
    temporary_ = start + std::to_string(number_++) + std::string(kUnfinishedEnd);
    if (file_.CreateNew(temporary_, attributes)) return {};
    failure = Failure();
    if (platform::KindOf(temporary_) == platform::Kind::Missing) break;
  }
  return failure;
}

Status NewFile::Write(const void* data, std::size_t size) {
  return file_.Write(data, size) ? Status{} : Failure();
}

Status NewFile::Seek(std::uint64_t position) {
  return file_.Seek(position) ? Status{} : Failure();
}

Status NewFile::SetAttributes(std::uint8_t attributes, DosStamp stamp) {
  return file_.SetAttributes(attributes, stamp) ? Status{} : Failure();
}

Status NewFile::Commit() {
  if (file_.CloseAs(temporary_, path_)) return {};
  Status failure = Failure();
  platform::Remove(temporary_);
  return failure;
}

void NewFile::Discard() {
  if (!file_.IsOpen()) return;
  file_.Close();
  platform::Remove(temporary_);
}

Status NewFile::Failure() const {
  return FileError(path_ + ": it cannot be written: " + platform::LastError());
}

}  // namespace cabarc
