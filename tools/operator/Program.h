// The program under test, as its operator meets it: a process, its dialogs, its messages.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "app/MessageIds.h"
#include "operator/Window.h"

namespace endtoend {

/// What the operator answers to a message.
enum class Answer { Consent, Refuse };

/// Starts the program and ends it, with all its programs, when it goes out of scope.
/// Calls throw std::runtime_error, which names what is on the screen, when what they
/// wait for does not come in time, and on a machine that is not marked for tests.
class Program {
 public:
  explicit Program(const std::string& commandLine);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  HANDLE Handle() const { return process_.hProcess; }

  /// Waits for the dialog that holds `control` and takes input.
  Window WaitForDialog(int control);
  /// Waits for a message of the host's message dialog.
  Window WaitForMessageWindow();
  static base::MessageId MessageNumber(const Window& message);
  /// Waits for a message, answers it, and returns its number.
  base::MessageId AnswerMessage(Answer answer);
  /// Waits for a plain message box and returns it.
  Window WaitForMessageBox();

  /// Waits for the process to end and returns its exit code.
  DWORD WaitForEnd();

 private:
  bool IsRunning() const { return WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT; }
  std::string WhatIsOnScreen() const;
  Window WaitForActive(const std::string& what, const std::function<bool(const Window&)>& fits);

  PROCESS_INFORMATION process_{};
};

}  // namespace endtoend
