// Habits of Windows and of batch files that break a job although everything is there.
#include <algorithm>
#include <cctype>
#include <string_view>

#include "base/Path.h"
#include "base/Text.h"
#include "host-check/Checks.h"
#include "jobs/Items.h"
#include "windows/adapters/Text.h"
#include "windows/adapters/Win32.h"

namespace hostcheck {
namespace {

using jobs::JobKey;

/// The default value of a class; empty where there is none.
std::string ClassValue(const std::string& key) {
  wchar_t text[256] = L"";
  DWORD size = sizeof text;
  RegGetValueW(HKEY_CLASSES_ROOT, windows::Utf16(key).c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text, &size);
  return windows::Utf8(text);
}

/// Whether a line of a batch file has `command` as a word of its own where it may be run.
bool Calls(const std::string& line, const std::string& command) {
  std::string text = base::Trim(line);
  std::ranges::transform(text, text.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  for (const char* const quiet : {"rem ", "::", "echo ", "@echo ", "goto "})
    if (text.starts_with(quiet)) return false;
  const auto stands = [&](std::size_t at, const char* between) {
    return at >= text.size() || std::string_view(between).find(text[at]) != std::string_view::npos;
  };
  for (std::size_t at = text.find(command); at != std::string::npos; at = text.find(command, at + 1)) {
    // Before the first character lies the place -1, which is behind the end, too.
    if (stands(at - 1, " \t@(&|\\") && stands(at + command.size(), " \t./>&|)")) return true;
  }
  return false;
}

/// The first of the commands that `file` calls; empty when it calls none.
std::string CommandThatReadsKeys(host::FileSystem& files, const std::string& file) {
  const auto reader = files.OpenText(file);
  if (!reader) return {};  // told with the job
  for (std::string line; reader->ReadLine(line);)
    for (const char* const command : {"timeout", "choice"})
      if (Calls(line, command)) return command;
  return {};
}

void CheckBatchFiles(Report& report, app::Application& application) {
  for (const std::string_view name : jobs::kJobSections) {
    const std::string section(name);
    jobs::JobDefinitions definitions;
    static_cast<void>(definitions.Load(work::ToolsOf(application), application.state.SystemFolder,
                                       jobs::kJobDefinitionFile, section));  // told with the jobs
    for (std::string item : definitions.FilledItems(JobKey::BatFile, section)) {
      if (!application.paths.ExpandPathVariable(item).IsDone()) continue;
      const std::string command = CommandThatReadsKeys(application.host.files, item);
      report.Expect(command.empty(), "commands of " + item,
                    command.empty() ? "none of them reads the keyboard"
                                    : command + " fails in a job, which has no keyboard; wait with ping -n");
    }
  }
}

}  // namespace

void CheckSurroundings(Report& report, app::Application& application) {
  const UINT codePage = GetACP();
  report.Expect(codePage != CP_UTF8, "code page " + std::to_string(codePage),
                "the host's text files are read in it; UTF-8 (65001) is a setting of Windows for trial");
  report.Expect(ClassValue(ClassValue(".js") + "\\ScriptEngine") == "JScript", "scripts with the ending .js",
                "the maintenance script is run by JScript; another program has taken the ending");
  CheckBatchFiles(report, application);
}

}  // namespace hostcheck
