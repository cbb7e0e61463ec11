// The operation log BackupUtility.log, and the one place where a failure is shown: it stands in the log as well.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "app/Messages.h"
#include "base/Time.h"
#include "host/Desktop.h"
#include "host/Libraries.h"

namespace app {

enum class LogLevel : std::int32_t { Warning = 0, Question = 1, Exclamation = 2, Information = 3, Error = 9 };

/// One line of the log: time stamp, level tag and text. A level outside the list gets no tag.
std::string FormatLogLine(const base::LocalTime& time, LogLevel level, const std::string& text);

class OperationLog {
 public:
  /// `folder` is the state's `LogFolder`: read from the path table by the first line that finds it empty.
  OperationLog(host::ComponentFactory& components, host::Clock& clock, host::QX32& pathTable, Messages& messages,
               std::string& folder)
      : components_(components), clock_(clock), pathTable_(pathTable), messages_(messages), folder_(folder) {}

  /// Appends one line through a log writer component that lives for this line only. A failing writer is not reported;
  /// an unreadable path-table entry "Log" shows message 60326.
  void WriteLog(LogLevel level, const std::string& text);

  /// Leaves a warning: `what` happened in the job `category`, where one is named. Data may be missing, and the program
  /// goes on.
  void WarnOfLoss(const std::string& what, const std::string& category = {});

  /// Whether it was found where the log stands.
  bool HasFolder() const { return !folder_.empty(); }

  /// The file's path; it has "\\" twice where the folder ends in one.
  std::string FilePath() const { return folder_ + "\\BackupUtility.log"; }

  /// How many warnings were left since the program's start.
  std::size_t Warnings() const { return warnings_; }

 private:
  host::ComponentFactory& components_;
  host::Clock& clock_;
  host::QX32& pathTable_;
  Messages& messages_;
  std::string& folder_;
  std::size_t warnings_ = 0;
};

/// Watches a job, or a part of it, from its making on.
class Watch {
 public:
  explicit Watch(const OperationLog& log)
      : log_(log), before_(log.Warnings()), begun_(std::chrono::steady_clock::now()) {}
  std::size_t Warnings() const { return log_.Warnings() - before_; }
  std::uint64_t Seconds() const;
  /// The same, its seconds counted anew.
  Watch WithNewTime() const;
  /// What has passed, such as "Warnings: 0; 12 s".
  std::string Summary() const;

 private:
  const OperationLog& log_;
  std::size_t before_;
  std::chrono::steady_clock::time_point begun_;
};

/// Warnings of one kind, of which there may be very many: some are named, and of the others the number tells enough.
class NamedWarnings {
 public:
  NamedWarnings(OperationLog& log, std::string category) : log_(log), category_(std::move(category)) {}

  void Add(const std::string& what);
  /// Says how many there were beyond those that were named, such as "Not copied: 7 more".
  void Conclude(const std::string& what);
  std::size_t Count() const { return count_; }

 private:
  OperationLog& log_;
  std::string category_;
  std::size_t count_ = 0;
};

/// Where failures end: here they are told to the operator, and to the log.
class Failures {
 public:
  Failures(Messages& messages, OperationLog& log) : messages_(messages), log_(log) {}

  /// Shows the message that the failed step has left, else `whenNone`. An error line in the log has its number and the
  /// cause.
  void Show(const base::Outcome& failure, MessageId whenNone = MessageId::None);

  /// For what the operator need not be told: `what` and the cause, in an exclamation line of the log alone.
  void Note(const std::string& what, const base::Outcome& failure);

 private:
  Messages& messages_;
  OperationLog& log_;
};

}  // namespace app
