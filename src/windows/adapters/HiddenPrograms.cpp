// The shared console and the empty streams of hidden programs.
#include "windows/adapters/HiddenPrograms.h"

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

NoStreams::NoStreams() {
  SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  nothing_ = Handle(CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                                OPEN_EXISTING, 0, nullptr));
  SIZE_T size = 0;
  InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
  memory_.resize(size);
  auto* list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory_.data());
  if (nothing_ && InitializeProcThreadAttributeList(list, 1, 0, &size) != FALSE) list_ = list;
}

NoStreams::~NoStreams() {
  if (list_) DeleteProcThreadAttributeList(list_);
}

bool NoStreams::GiveTo(STARTUPINFOEXW& startup) {
  stream_ = nothing_.Get();
  if (!list_ || UpdateProcThreadAttribute(list_, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, &stream_, sizeof stream_,
                                          nullptr, nullptr) == FALSE)
    return false;
  startup.lpAttributeList = list_;
  startup.StartupInfo.dwFlags |= STARTF_USESTDHANDLES;
  startup.StartupInfo.hStdInput = stream_;
  startup.StartupInfo.hStdOutput = stream_;
  startup.StartupInfo.hStdError = stream_;
  return true;
}

}  // namespace windows
