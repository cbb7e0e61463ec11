#include "acceptance/Running.h"

#include <fstream>
#include <iterator>
#include <sstream>

#include "windows/adapters/Text.h"
#include "windows/adapters/Win32.h"

namespace acceptance {
namespace {

namespace fs = std::filesystem;

/// What is in it ends with it.
windows::Handle MakeJob() {
  windows::Handle job(CreateJobObjectW(nullptr, nullptr));
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
  return job;
}

windows::Handle OpenStream(const fs::path& path, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  return windows::Handle(
      CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable, disposition, 0, nullptr));
}

std::string ReadAll(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The rest of a line behind the mark that GoogleTest begins it with, up to the first blank.
std::optional<std::string> Behind(const std::string& line, const std::string& mark) {
  if (!line.starts_with(mark)) return std::nullopt;
  return line.substr(mark.size(), line.find_first_of(" ,\r", mark.size()) - mark.size());
}

}  // namespace

Ran Run(const std::wstring& command, const fs::path& folder, const fs::path& log, std::chrono::milliseconds patience) {
  const windows::Handle job = MakeJob();
  const windows::Handle input = OpenStream(L"NUL", GENERIC_READ, OPEN_EXISTING);
  const windows::Handle output = OpenStream(log, GENERIC_WRITE, CREATE_ALWAYS);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input.Get();
  startup.hStdOutput = startup.hStdError = output.Get();
  PROCESS_INFORMATION started{};
  std::wstring line = command;
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW | CREATE_SUSPENDED, nullptr,
                      folder.c_str(), &startup, &started))
    return {std::nullopt, windows::Utf8(command) + " does not start (" + std::to_string(GetLastError()) + ")"};
  const windows::Handle process(started.hProcess);
  const windows::Handle thread(started.hThread);
  AssignProcessToJobObject(job.Get(), process.Get());
  ResumeThread(thread.Get());
  const bool ended = WaitForSingleObject(process.Get(), static_cast<DWORD>(patience.count())) == WAIT_OBJECT_0;
  DWORD code = 0;
  if (!ended) TerminateJobObject(job.Get(), 1);
  GetExitCodeProcess(process.Get(), &code);
  return {ended ? std::optional<std::uint32_t>(code) : std::nullopt, ReadAll(log)};
}

std::vector<Case> CasesIn(const std::string& output) {
  std::vector<Case> cases;
  bool open = false;
  std::istringstream lines(output);
  const std::pair<const char*, Case::Result> kEnds[] = {
      {"[       OK ] ", Case::Passed}, {"[  FAILED  ] ", Case::Failed}, {"[  SKIPPED ] ", Case::Skipped}};
  for (std::string line; std::getline(lines, line);) {
    if (const auto name = Behind(line, "[ RUN      ] ")) {
      cases.emplace_back().name = *name;
      open = true;
      continue;
    }
    if (!open) continue;
    bool ends = false;
    for (const auto& [mark, result] : kEnds) {
      if (Behind(line, mark) != cases.back().name) continue;
      cases.back().result = result;
      ends = true;
    }
    open = !ends;
    if (!ends) cases.back().words += line + "\n";
  }
  return cases;
}

}  // namespace acceptance
