// A program for the process tests to start: "exit CODE", "sleep MILLISECONDS", "tick FILE" (sleeps, then writes the
// time of its end), "companions" (exits with the number of processes in its console), "codepage" (exits with that of
// its console, and sets another), "interrupt" (everything in its console).
#include <windows.h>

#include <cstdlib>
#include <fstream>
#include <string>

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
  if (verb == "interrupt") GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
  Sleep(verb == "sleep" ? std::strtoul(words[2], nullptr, 10) : 200);
  if (verb == "tick") std::ofstream(words[2]) << GetTickCount64();
  return 0;
}
