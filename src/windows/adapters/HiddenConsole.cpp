// The console that hidden programs share.
#include "windows/adapters/HiddenConsole.h"

#include <system_error>

namespace windows {
namespace {

// A program that interrupts everything in its console must not end this one.
BOOL WINAPI SurviveInterrupts(DWORD event) {
  return event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
}

}  // namespace

DWORD HiddenConsole::CreationFlags() {
  // A batch file's "chcp" would decide how the next one is read.
  kept_ = kept_ && SetConsoleCP(inputCodePage_) != FALSE && SetConsoleOutputCP(outputCodePage_) != FALSE;
  return kept_ ? 0 : CREATE_NO_WINDOW;
}

std::jthread HiddenConsole::KeepThatOf(HANDLE process, DWORD id) {
  if (kept_) return {};
  try {
    return std::jthread([this, process, id] { KeepUntilEnd(process, id); });
  } catch (const std::system_error&) {
    return {};  // the next program's will do
  }
}

void HiddenConsole::KeepUntilEnd(HANDLE process, DWORD id) {
  constexpr DWORD kTryEvery = 5;  // milliseconds
  constexpr int kTries = 200;     // a program with windows never makes a console
  for (int tries = 0; tries < kTries && !kept_; ++tries) {
    FreeConsole();  // a process can be attached to one console only
    kept_ = AttachConsole(id) != FALSE;
    if (!kept_ && WaitForSingleObject(process, kTryEvery) == WAIT_OBJECT_0) return;
  }
  if (!kept_) return;
  inputCodePage_ = GetConsoleCP();
  outputCodePage_ = GetConsoleOutputCP();
  SetConsoleCtrlHandler(SurviveInterrupts, TRUE);
}

}  // namespace windows
