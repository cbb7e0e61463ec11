// The operation log BackupUtility.log.
#include "app/Log.h"

#include "app/Application.h"
#include "app/External.h"
#include "app/Messages.h"
#include "app/TextFormat.h"

namespace app {
namespace {

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

std::string FormatLogLine(const host::LocalTime& time, LogLevel level, const std::string& text) {
  return "[" + FormatLogTime(time) + "]" + LevelTag(level) + text;
}

void WriteLog(Application& application, std::int32_t mode, LogLevel level, const std::string& text) {
  const std::unique_ptr<host::LogWriter> writer = application.host.components.CreateLogWriter();
  std::string& folder = application.state.LogFolder;
  if (folder.empty() && GetPathEntry(application, "Log", folder) != kDone) {
    ShowMessage(application, kPathEntryUnreadable);
  }
  if (!writer) return;
  writer->SetFilePath(folder + "\\BackupUtility.log");
  writer->SetMode(mode);
  writer->WriteLine(FormatLogLine(application.host.clock.Now(), level, text));
}

}  // namespace app
