// Starts the program, and finds what it shows.
#include "operator/Program.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "MessageDialogIds.h"
#include "operator/TestMachine.h"

namespace endtoend {
namespace {

// Long, because a busy machine makes every program under Wine slow; a test that passes never waits for it.
constexpr unsigned kPatience = 60000;

// Every window of the process that a person could work now: on the screen and taking input.
std::vector<Window> WindowsTakingInput(DWORD process) {
  std::vector<Window> found;
  for (HWND window = GetTopWindow(nullptr); window; window = GetWindow(window, GW_HWNDNEXT)) {
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == process && IsWindowVisible(window) && IsWindowEnabled(window)) found.emplace_back(window);
  }
  return found;
}

bool IsMessage(const Window& window) {
  return window.ClassName() == TARSUS_MESSAGE_CLASS;
}

}  // namespace

Program::Program(const std::string& commandLine) {
  RequireTestMachine();
  std::wstring command = Utf16(commandLine);
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process_))
    throw std::runtime_error("cannot start " + commandLine);
}

Program::~Program() {
  if (IsRunning()) TerminateProcess(process_.hProcess, 99);
  WaitForSingleObject(process_.hProcess, kPatience);
  CloseHandle(process_.hThread);
  CloseHandle(process_.hProcess);
}

std::string Program::WhatIsOnScreen() const {
  if (!IsRunning()) return "the program has ended";
  std::string text = "on the screen:";
  for (const Window& window : WindowsTakingInput(process_.dwProcessId)) {
    text += " [" + window.ClassName() + " \"" + window.Title() + "\"";
    if (IsMessage(window)) text += ": " + window.Text(TARSUS_MESSAGE_TEXT);
    text += "]";
  }
  return text;
}

Window Program::WaitForActive(const std::string& what, const std::function<bool(const Window&)>& fits) {
  Window result;
  WaitUntil(
      [&] {
        const std::vector<Window> windows = WindowsTakingInput(process_.dwProcessId);
        const auto found = std::ranges::find_if(windows, fits);
        if (found != windows.end()) result = *found;
        return result.Handle() || !IsRunning();
      },
      kPatience);
  if (!result.Handle()) throw std::runtime_error("waited for " + what + "; " + WhatIsOnScreen());
  return result;
}

Window Program::WaitForDialog(int control) {
  return WaitForActive("the dialog with control " + std::to_string(control),
                       [=](const Window& window) { return window.Has(control); });
}

Window Program::WaitForMessageWindow() {
  return WaitForActive("a message", IsMessage);
}

// The window shows "ID" and the number.
base::MessageId Program::MessageNumber(const Window& message) {
  const std::string text = message.Text(TARSUS_MESSAGE_ID);
  return base::MessageId{std::stoi(text.substr(text.find(' ') + 1))};
}

base::MessageId Program::AnswerMessage(Answer answer) {
  const Window window = WaitForMessageWindow();
  const base::MessageId id = MessageNumber(window);
  window.Press(answer == Answer::Consent ? TARSUS_MESSAGE_CONSENT : TARSUS_MESSAGE_REFUSE);
  if (!WaitUntil([&] { return !window.IsOpen(); }))
    throw std::runtime_error("message " + window.Text(TARSUS_MESSAGE_ID) + " does not close");
  return id;
}

Window Program::WaitForMessageBox() {
  return WaitForActive("a message box", [](const Window& window) { return window.ClassName() == "#32770"; });
}

DWORD Program::WaitForEnd() {
  if (WaitForSingleObject(process_.hProcess, kPatience) != WAIT_OBJECT_0)
    throw std::runtime_error("the program does not end; " + WhatIsOnScreen());
  DWORD code = 0;
  GetExitCodeProcess(process_.hProcess, &code);
  return code;
}

}  // namespace endtoend
