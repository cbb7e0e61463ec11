// The operation log BackupUtility.log.
#include "app/Log.h"

#include "app/PathTable.h"

namespace app {
namespace {

/// The writer's own mode; no other was ever asked for.
constexpr std::int32_t kWriterMode = 1;

constexpr std::size_t kNamed = 20;

/// All of one length, so that the texts line up. The misspelling is part of the format:
/// tools that read the log look for it.
std::string LevelTag(LogLevel level) {
  switch (level) {
    case LogLevel::Warning:
      return " [Warning]     ";
    case LogLevel::Question:
      return " [Question]    ";
    case LogLevel::Exclamation:
      return " [Exclamation] ";
    case LogLevel::Information:
      return " [Informatin]  ";
    case LogLevel::Error:
      return " [Error]       ";
  }
  return {};
}

}  // namespace

std::string FormatLogLine(const base::LocalTime& time, LogLevel level, const std::string& text) {
  return "[" + base::FormatLogTime(time) + "]" + LevelTag(level) + text;
}

void OperationLog::WriteLog(LogLevel level, const std::string& text) {
  if (level == LogLevel::Warning) ++warnings_;
  const auto writer = components_.CreateLogWriter();
  if (folder_.empty() && !GetPathEntry(pathTable_, "Log", folder_).IsDone()) {
    messages_.ShowMessage(MessageId::PathEntryUnreadable);
  }
  if (!writer) return;
  writer->SetFilePath(FilePath());
  writer->SetMode(kWriterMode);
  static_cast<void>(writer->WriteLine(FormatLogLine(clock_.Now(), level, text)));  // there is no other place to say so
}

void OperationLog::WarnOfLoss(const std::string& what, const std::string& category) {
  WriteLog(LogLevel::Warning, category.empty() ? what : what + " (" + category + ")");
}

Watch Watch::WithNewTime() const {
  Watch anew = *this;
  anew.begun_ = std::chrono::steady_clock::now();
  return anew;
}

std::uint64_t Watch::Seconds() const {
  const auto passed = std::chrono::steady_clock::now() - begun_;
  return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::seconds>(passed).count());
}

std::string Watch::Summary() const {
  return "Warnings: " + std::to_string(Warnings()) + "; " + std::to_string(Seconds()) + " s";
}

void NamedWarnings::Add(const std::string& what) {
  if (++count_ <= kNamed) log_.WarnOfLoss(what, category_);
}

void NamedWarnings::Conclude(const std::string& what) {
  if (count_ > kNamed) log_.WarnOfLoss(what + ": " + std::to_string(count_ - kNamed) + " more", category_);
}

void Failures::Show(const base::Outcome& failure, MessageId whenNone) {
  const bool own = failure.PendingMessageId != MessageId::None;
  const MessageId message = own ? failure.PendingMessageId : whenNone;
  const std::string line = "Message " + std::to_string(static_cast<std::int32_t>(message));
  // A log that has not found its folder would only show a message of its own.
  if (log_.HasFolder()) log_.WriteLog(LogLevel::Error, failure.cause.empty() ? line : line + ": " + failure.cause);
  messages_.ShowMessage(message);
}

void Failures::Note(const std::string& what, const base::Outcome& failure) {
  log_.WriteLog(LogLevel::Exclamation, failure.cause.empty() ? what : what + ": " + failure.cause);
}

}  // namespace app
