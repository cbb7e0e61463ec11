// The path table, INI files and external programs.
#include "app/External.h"

#include <memory>
#include <utility>

#include "app/Application.h"
#include "app/Log.h"
#include "app/TextFormat.h"
#include "app/WindowsPath.h"

namespace app {

ResultCode GetPathEntry(Application& application, const std::string& name, std::string& value) {
  std::string entry;
  if (application.host.qx32.GetString(name, host::QX32::kPathEntrySize, entry) != kDone) return kFailed;
  value = CutAtNul(entry);
  return kDone;
}

std::string CutAtNul(const std::string& text, bool stripPrefix) {
  const std::size_t colon = stripPrefix ? text.find(':') : std::string::npos;
  const std::size_t first = colon == std::string::npos ? 0 : colon + 1;
  return text.substr(first, text.find('\0', first) - first);
}

std::string ReadIniValue(Application& application, const std::string& folder, const std::string& fileName,
                         const std::string& key) {
  const std::string path = WithTrailingBackslash(Trim(folder)) + fileName;
  const std::unique_ptr<host::TextReader> reader = application.host.files.OpenText(path);
  const std::string pattern = Trim(key) + "=*";
  std::string line;
  while (reader && reader->ReadLine(line)) {
    application.host.messageLoop.Yield();
    if (MatchesPattern(line, pattern)) return Trim(std::string_view(line).substr(line.find('=') + 1));
  }
  if (!reader || reader->Failed()) {
    WriteLog(application, 1, LogLevel::Warning, "Not readable: " + path + " (" + key + ")");
  }
  return {};
}

std::uint32_t RunAndWait(Application& application, const std::string& command) {
  const std::unique_ptr<host::StartedProgram> program =
      application.host.processes.Start(command, host::WindowStyle::Hidden);
  if (!program) return 0;
  std::uint32_t exitCode = 0;
  return program->Wait(exitCode) == kDone ? program->Id() : 0;
}

CurrentFolderScope::CurrentFolderScope(Application& application, const std::string& folder, std::string back)
    : application_(application),
      back_(std::move(back)),
      entered_(application.host.files.SetCurrentFolder(folder) == kDone) {}

CurrentFolderScope::~CurrentFolderScope() {
  application_.host.files.SetCurrentFolder(back_);
}

}  // namespace app
