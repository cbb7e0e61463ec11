// External programs, run hidden.
#include "work/Programs.h"

#include <algorithm>
#include <utility>

#include "base/Path.h"
#include "base/Text.h"

namespace work {
namespace {

bool IsPlain(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || character == '.' || character == '_' || character == '-';
}

}  // namespace

ProgramEnd RunAndWait(const Tools& tools, const std::string& command, host::Where where, const Sight& sight) {
  const auto program = tools.processes.Start(command, host::WindowStyle::Hidden, where);
  if (!program) return {false, std::nullopt, "Not started: " + command, program.Why().cause};
  Observation observation(tools.clock, tools.progress, sight);
  host::Meanwhile look;
  if (sight && tools.progress.IsShown()) look = [&observation] { return observation.Look(); };
  ProgramEnd end{true, program->Wait(look), {}, {}};
  if (!end.exitCode) {
    end.description = "Exit code unknown: " + command;
  } else if (!end.Succeeded()) {
    end.description = "Exit code " + std::to_string(*end.exitCode) + ": " + command;
  }
  return end;
}

ProgramEnd RunProgram(const Tools& tools, const std::string& command, const std::string& category, host::Where where,
                      const Sight& sight) {
  ProgramEnd end = RunAndWait(tools, command, where, sight);
  if (!end.Succeeded()) tools.log.WarnOfLoss(end.description, category);
  return end;
}

ProgramEnd RunInItsFolder(const Tools& tools, const std::string& item, const std::string& back,
                          const std::string& category) {
  const std::string folder = base::FolderOf(item);
  const CurrentFolderScope inFolder(tools.files, folder, back);
  if (!folder.empty() && inFolder.Entered().IsDone()) {
    const app::Progress::Part part(tools.progress, app::Work::Exporting, item);
    const Sight written = [&] { return BytesIn(tools.files, folder); };
    return RunProgram(tools, base::FileNameOf(item), category, host::Where::CurrentFolder, written);
  }
  ProgramEnd end{false, std::nullopt, "Folder cannot be entered: " + item, inFolder.Entered().cause};
  tools.log.WarnOfLoss(end.description, category);
  return end;
}

std::string CommandArgument(const std::string& name) {
  return std::all_of(name.begin(), name.end(), IsPlain) ? name : base::Quoted(name);
}

CurrentFolderScope::CurrentFolderScope(host::FileSystem& files, const std::string& folder, std::string back)
    : files_(files), back_(std::move(back)), entered_(files.SetCurrentFolder(folder)) {}

CurrentFolderScope::~CurrentFolderScope() {
  static_cast<void>(files_.SetCurrentFolder(back_));  // a destructor has nobody to tell
}

}  // namespace work
