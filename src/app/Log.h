// The operation log BackupUtility.log.
#pragma once

#include <cstdint>
#include <string>

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

 private:
  host::ComponentFactory& components_;
  host::Clock& clock_;
  host::QX32& pathTable_;
  Messages& messages_;
  std::string& folder_;
};

}  // namespace app
