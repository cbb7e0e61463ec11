// External programs, run hidden, with a line in the operation log where they go wrong.
#include "backup/Programs.h"

#include <algorithm>

#include "app/External.h"
#include "app/Log.h"
#include "app/WindowsPath.h"

namespace backup {
namespace {

bool IsPlain(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || character == '.' || character == '_' || character == '-';
}

std::string Describe(const std::string& command, const ProgramEnd& end) {
  if (!end.started) return "Not started: " + command;
  if (!end.exitCode) return "Exit code unknown: " + command;
  return "Exit code " + std::to_string(*end.exitCode) + ": " + command;
}

}  // namespace

ProgramEnd RunProgram(app::Application& application, const std::string& command, const std::string& category) {
  ProgramEnd end;
  if (const auto program = application.host.processes.Start(command, host::WindowStyle::Hidden)) {
    end.started = true;
    std::uint32_t exitCode = 0;
    if (program->Wait(exitCode) == 0) end.exitCode = exitCode;
  }
  if (!end.Succeeded()) WarnOfLoss(application, Describe(command, end), category);
  return end;
}

ProgramEnd RunInItsFolder(app::Application& application, const std::string& item, const std::string& category) {
  const std::string& staging = application.state.StagingFolder;
  const std::string folder = app::FolderOf(item);
  const app::CurrentFolderScope inFolder(application, folder, staging);
  if (!folder.empty() && inFolder.Entered()) return RunProgram(application, app::FileNameOf(item), category);
  WarnOfLoss(application, "Folder cannot be entered: " + item, category);
  return {};
}

void WarnOfLoss(app::Application& application, const std::string& what, const std::string& category) {
  app::WriteLog(application, 1, app::LogLevel::Warning, category.empty() ? what : what + " (" + category + ")");
}

std::string CommandArgument(const std::string& name) {
  return std::all_of(name.begin(), name.end(), IsPlain) ? name : app::Quoted(name);
}

std::size_t WideLength(const std::string& text) {
  std::size_t length = 0;
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if ((byte & 0xC0u) == 0x80u) continue;  // goes with the byte before it
    length += byte >= 0xF0u ? 2 : 1;        // beyond the first plane: a surrogate pair
  }
  return length;
}

}  // namespace backup
