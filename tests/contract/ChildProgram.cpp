// A program for the process tests to start: "exit CODE", "sleep MILLISECONDS",
// "tick FILE" (sleeps, then writes the time of its end), "instance" (1 when another instance ran).
#include <cstdlib>
#include <fstream>
#include <string>

#include "windows/adapters/Win32Processes.h"

int main(int count, char** words) {
  const std::string verb = count > 1 ? words[1] : "";
  const std::string value = count > 2 ? words[2] : "";
  if (verb == "exit") return std::atoi(value.c_str());
  if (verb == "sleep") Sleep(static_cast<DWORD>(std::atoi(value.c_str())));
  if (verb == "tick") {
    Sleep(200);
    std::ofstream(value) << GetTickCount64();
  }
  if (verb == "instance") {
    windows::Win32MessageLoop loop;
    return windows::Win32Processes(loop).HasPreviousInstance() ? 1 : 0;
  }
  return 0;
}
