// The operation log BackupUtility.log.
#pragma once

#include <cstdint>
#include <string>

#include "host/Clock.h"

namespace app {

class Application;

enum class LogLevel : std::int32_t { Warning = 0, Question = 1, Exclamation = 2, Information = 3, Error = 9 };

/// One line of the log: time stamp, level tag and text. A level outside the list gets no tag.
std::string FormatLogLine(const host::LocalTime& time, LogLevel level, const std::string& text);

/// Appends one line to the log through a log writer component that lives for this line
/// only. A failing writer is not reported; an unreadable path-table entry "Log" shows
/// message 60326.
/// `mode` is the writer's own; every caller passes 1.
void WriteLog(Application& application, std::int32_t mode, LogLevel level, const std::string& text);

}  // namespace app
