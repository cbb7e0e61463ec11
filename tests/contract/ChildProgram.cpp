// A program for the process tests to start: "exit CODE", "sleep MILLISECONDS",
// "tick FILE" (sleeps, then writes the time of its end).
#include <windows.h>

#include <cstdlib>
#include <fstream>
#include <string>

int main(int, char** words) {
  const std::string verb = words[1];
  if (verb == "exit") return std::atoi(words[2]);
  Sleep(verb == "sleep" ? std::strtoul(words[2], nullptr, 10) : 200);
  if (verb == "tick") std::ofstream(words[2]) << GetTickCount64();
  return 0;
}
