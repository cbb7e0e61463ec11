// A program for the process tests to start: "exit CODE", "sleep MILLISECONDS", "tick FILE" (sleeps, then writes the
// time of its end), "companions" (exits with the number of processes in its console), "codepage" (exits with that of
// its console, and sets another), "interrupt" (everything in its console), "fault FOLDER" and
// "throw FOLDER" (dies, with a report in the folder).
#include <windows.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>

#include "windows/adapters/CrashReport.h"

namespace {

[[noreturn]] void Die(const std::string& way, const std::string& folder) {
  SetErrorMode(SEM_NOGPFAULTERRORBOX);
  windows::ReportCrashes(folder);
  if (way == "throw") throw std::runtime_error("nobody catches this");
  RaiseException(EXCEPTION_ACCESS_VIOLATION, 0, 0, nullptr);
  std::abort();
}

}  // namespace

int main(int, char** words) {
  const std::string verb = words[1];
  if (verb == "exit") return std::atoi(words[2]);
  if (verb == "companions") {
    DWORD processes[8];
    return static_cast<int>(GetConsoleProcessList(processes, 8));
  }
  if (verb == "codepage") {
    const UINT found = GetConsoleOutputCP();
    SetConsoleOutputCP(found == CP_UTF8 ? 1252 : CP_UTF8);
    return static_cast<int>(found);
  }
  if (verb == "fault" || verb == "throw") Die(verb, words[2]);
  if (verb == "interrupt") GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
  Sleep(verb == "sleep" ? std::strtoul(words[2], nullptr, 10) : 200);
  if (verb == "tick") std::ofstream(words[2]) << GetTickCount64();
  return 0;
}
