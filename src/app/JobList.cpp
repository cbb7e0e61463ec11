// The list of past jobs.
#include "app/JobList.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <string_view>

namespace app {
namespace {

constexpr char kEnd[] = "\r\n";
// Spreadsheets take the file for UTF-8 by these three bytes alone.
constexpr char kHeading[] =
    "\xEF\xBB\xBF"
    "Time,Kind,Result,Message,User,Folder,Categories,Files,Bytes,Warnings,Seconds";
constexpr std::size_t kColumns = 11;
constexpr std::int64_t kNewest = 64 * 1024;  // bytes: some hundreds of jobs

/// In the order of JobKind.
constexpr std::array<std::string_view, 3> kKinds = {"Backup", "Restore", "MaintenanceLog"};

constexpr std::string_view kDone = "done";
constexpr std::string_view kStopped = "stopped";
constexpr std::string_view kFailed = "failed";

std::string_view WordOf(base::Result result) {
  if (result == base::Result::Done) return kDone;
  return result == base::Result::Stopped ? kStopped : kFailed;
}

/// A value between two commas: in quotes where it holds what would end it.
std::string Field(std::string value) {
  std::ranges::replace_if(
      value, [](char c) { return c == '\r' || c == '\n'; }, ' ');
  if (value.find_first_of(",\"") == std::string::npos) return value;
  std::string quoted = "\"";
  for (const char c : value) quoted += c == '"' ? "\"\"" : std::string(1, c);
  return quoted + "\"";
}

std::vector<std::string> FieldsOf(std::string_view line) {
  std::vector<std::string> fields(1);
  bool quoted = false;
  for (const char c : line) {
    if (c == '"') quoted = !quoted;
    if (c == ',' && !quoted) {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  for (std::string& field : fields) {
    if (field.size() < 2 || field.front() != '"' || field.back() != '"') continue;
    std::string bare;
    for (std::size_t i = 1; i + 1 < field.size(); ++i) {
      bare += field[i];
      if (field[i] == '"') ++i;  // the second of two
    }
    field = bare;
  }
  return fields;
}

template <class Number>
bool Take(std::string_view text, Number& number) {
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end;
}

/// "2026-11-22 13:30:36".
bool TakeTime(std::string_view text, base::LocalTime& time) {
  constexpr std::string_view kForm = "dddd-dd-dd dd:dd:dd";
  const auto fits = [](char c, char form) { return form == 'd' ? c >= '0' && c <= '9' : c == form; };
  if (!std::ranges::equal(text, kForm, fits)) return false;
  return Take(text.substr(0, 4), time.year) && Take(text.substr(5, 2), time.month) &&
         Take(text.substr(8, 2), time.day) && Take(text.substr(11, 2), time.hour) &&
         Take(text.substr(14, 2), time.minute) && Take(text.substr(17, 2), time.second);
}

std::string FormatTime(const base::LocalTime& time) {
  std::string text = base::FormatLogTime(time);
  std::ranges::replace(text, '/', '-');
  return text;
}

std::optional<PastJob> Parse(std::string_view line) {
  const std::vector<std::string> fields = FieldsOf(line);
  if (fields.size() != kColumns) return std::nullopt;
  PastJob job;
  const auto kind = std::ranges::find(kKinds, fields[1]);
  std::int32_t message = 0;
  const bool whole = TakeTime(fields[0], job.ended) && kind != kKinds.end() && Take(fields[3], message) &&
                     Take(fields[7], job.files) && Take(fields[8], job.bytes) && Take(fields[9], job.warnings) &&
                     Take(fields[10], job.seconds);
  if (!whole) return std::nullopt;
  job.kind = static_cast<JobKind>(kind - kKinds.begin());
  job.result = fields[2] == kDone      ? base::Result::Done
               : fields[2] == kStopped ? base::Result::Stopped
                                       : base::Result::Failed;
  job.message = MessageId{message};
  job.user = fields[4];
  job.folder = fields[5];
  job.categories = fields[6];
  return job;
}

/// What is read from `from` on; empty where nothing can be.
std::string ReadFrom(host::FileSystem& files, const std::string& path, std::int64_t from, std::int64_t size) {
  std::string bytes(static_cast<std::size_t>(size - from), '\0');
  const auto file = files.OpenBinary(path);
  if (!file || !file->Seek(static_cast<std::uint64_t>(from))) return {};
  const std::int64_t got = file->Read(reinterpret_cast<std::byte*>(bytes.data()), bytes.size());
  bytes.resize(static_cast<std::size_t>(std::max<std::int64_t>(got, 0)));
  return bytes;
}

}  // namespace

std::string FormatPastJob(const PastJob& job) {
  const auto kind = static_cast<std::size_t>(job.kind);
  std::string line = FormatTime(job.ended);
  for (const std::string& value : {std::string(kKinds[kind]), std::string(WordOf(job.result)),
                                   std::to_string(static_cast<std::int32_t>(job.message)), job.user, job.folder,
                                   job.categories, std::to_string(job.files), std::to_string(job.bytes),
                                   std::to_string(job.warnings), std::to_string(job.seconds)}) {
    line += "," + Field(value);
  }
  return line;
}

std::vector<PastJob> ParsePastJobs(const std::string& lines) {
  std::vector<PastJob> jobs;
  for (std::size_t begin = 0; begin < lines.size();) {
    const std::size_t end = lines.find('\n', begin);
    if (end == std::string::npos) break;  // half a line may say something else than the whole one
    std::string_view line(lines.data() + begin, end - begin);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (auto job = Parse(line)) jobs.push_back(std::move(*job));
    begin = end + 1;
  }
  return jobs;
}

base::Outcome JobList::Write(const std::string& lines) {
  const std::string path = FilePath();
  const std::int64_t size = files_.FileSize(path);
  std::string text = size > 0 ? lines : kHeading + std::string(kEnd) + lines;
  // A line that a full disk has cut stays alone.
  if (size > 0 && ReadFrom(files_, path, size - 1, size) != "\n") text = kEnd + text;
  const auto file = files_.AppendBinary(path);
  if (!file) return file.Why();
  base::Outcome written = file->Write(reinterpret_cast<const std::byte*>(text.data()), text.size());
  const base::Outcome closed = file->Close();
  return written.IsDone() ? closed : written;
}

void JobList::Append(const PastJob& job) {
  unwritten_ += FormatPastJob(job) + kEnd;
  const base::Outcome written = Write(unwritten_);
  if (written.IsDone()) {
    unwritten_.clear();
  } else {
    log_.WriteLog(LogLevel::Exclamation, "Job not listed: " + written.cause);
  }
}

std::vector<PastJob> JobList::Read() const {
  const std::string path = FilePath();
  const std::int64_t size = files_.FileSize(path);
  if (size <= 0) return {};
  return ParsePastJobs(ReadFrom(files_, path, std::max<std::int64_t>(size - kNewest, 0), size));
}

}  // namespace app
