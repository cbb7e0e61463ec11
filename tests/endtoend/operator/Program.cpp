#include "operator/Program.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "MessageDialogIds.h"

namespace endtoend {
namespace {

// Long, because a busy machine makes every program under Wine slow; a test that passes never waits for it.
constexpr unsigned kPatience = 60000;

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = L"";
  GetClassNameW(window, name, 64);
  return name;
}

struct Search {
  DWORD process;
  std::vector<HWND> found;
};

BOOL CALLBACK NoteWindowTakingInput(HWND window, LPARAM parameter) {
  auto* search = reinterpret_cast<Search*>(parameter);
  DWORD owner = 0;
  GetWindowThreadProcessId(window, &owner);
  if (owner == search->process && IsWindowVisible(window) && IsWindowEnabled(window)) search->found.push_back(window);
  return TRUE;
}

// Every window of the process that a person could work now: on the screen and taking input.
std::vector<HWND> WindowsTakingInput(DWORD process) {
  Search search{process, {}};
  EnumWindows(NoteWindowTakingInput, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

}  // namespace

Program::Program(const std::string& commandLine) {
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
  for (HWND handle : WindowsTakingInput(Id())) {
    const Window window(handle);
    text += " [" + Utf8(ClassOf(handle)) + " \"" + window.Title() + "\"";
    if (ClassOf(handle) == L"" TARSUS_MESSAGE_CLASS) text += ": " + window.Text(TARSUS_MESSAGE_TEXT);
    text += "]";
  }
  return text;
}

Window Program::WaitForActive(const std::string& what, const std::function<bool(const Window&)>& fits) {
  Window result;
  const bool came = WaitUntil(
      [&] {
        for (HWND handle : WindowsTakingInput(Id())) {
          if (fits(Window(handle))) {
            result = Window(handle);
            return true;
          }
        }
        return !IsRunning();
      },
      kPatience);
  if (!came || !result.Handle()) throw std::runtime_error("waited for " + what + "; " + WhatIsOnScreen());
  return result;
}

Window Program::WaitForDialog(int control) {
  return WaitForActive("the dialog with control " + std::to_string(control),
                       [=](const Window& window) { return window.Has(control); });
}

Window Program::WaitForMessageWindow() {
  return WaitForActive("a message",
                       [](const Window& window) { return ClassOf(window.Handle()) == L"" TARSUS_MESSAGE_CLASS; });
}

// The window shows "ID 60326".
int Program::MessageNumber(const Window& message) {
  const std::string text = message.Text(TARSUS_MESSAGE_ID);
  return std::stoi(text.substr(std::min(text.find_first_of("0123456789"), text.size() - 1)));
}

Program::Message Program::AnswerMessage(Answer answer) {
  const Window window = WaitForMessageWindow();
  const Message message{MessageNumber(window), window.Text(TARSUS_MESSAGE_TEXT)};
  window.Press(answer == Answer::Consent ? TARSUS_MESSAGE_CONSENT : TARSUS_MESSAGE_REFUSE);
  if (!WaitUntil([&] { return !window.IsOpen(); }))
    throw std::runtime_error("message " + std::to_string(message.id) + " does not close");
  return message;
}

Window Program::WaitForMessageBox() {
  return WaitForActive("a message box", [](const Window& window) { return ClassOf(window.Handle()) == L"#32770"; });
}

DWORD Program::WaitForEnd() {
  if (WaitForSingleObject(process_.hProcess, kPatience) != WAIT_OBJECT_0)
    throw std::runtime_error("the program does not end; " + WhatIsOnScreen());
  DWORD code = 0;
  GetExitCodeProcess(process_.hProcess, &code);
  return code;
}

}  // namespace endtoend
