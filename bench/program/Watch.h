// Watches the program from outside while it works: how long its message thread lets others wait, and what its time
// goes into.
#pragma once

#include <windows.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "operator/Program.h"
#include "operator/Workstation.h"

namespace bench {

/// What a backup does at a moment.
enum class Phase { Program, Gather, Pack, Delete, Copy };
const char* NameOf(Phase phase);

/// Waits for the program's work by what it leaves in its staging folder. To look for the next window all the time
/// would cost the program some hundredths of its time, because all of Wine shares one server; a path is looked up
/// without that server.
class StagingWatch {
 public:
  /// Waits until there is a staging folder.
  StagingWatch();
  /// Until `name` is in the folder, or is no longer when `there` is false; the empty name stands for the folder itself.
  /// Gives up after a minute.
  void Wait(const std::string& name, bool there) const;

 private:
  endtoend::fs::path folder_;
};

/// Looks every few milliseconds which external program runs and what is left in the staging folder.
class PhaseWatch {
 public:
  struct Span {
    Phase phase;
    double from;  ///< seconds since the watch began
    double to;
  };

  PhaseWatch();
  ~PhaseWatch();
  PhaseWatch(const PhaseWatch&) = delete;
  PhaseWatch& operator=(const PhaseWatch&) = delete;

  /// From here on what xcopy copies goes to the medium.
  void Copying() { copying_ = true; }
  Phase Now() const { return now_; }
  /// Ends the watch and tells what it has seen.
  const std::vector<Span>& End();

 private:
  void Run();
  Phase Look() const;

  std::atomic<bool> copying_ = false;
  std::atomic<bool> stop_ = false;
  std::atomic<Phase> now_ = Phase::Program;
  std::vector<Span> spans_;
  std::thread thread_;  // last: it uses the others
};

/// Sends a message that asks for nothing to a window every few milliseconds and notes the longest time until the
/// answer.
class AnswerWatch {
 public:
  struct Late {
    double at;  ///< seconds since the watch began
    double milliseconds;
    Phase phase;
  };

  /// `phases`, when given, tells in which phase an answer was late; it outlives this object.
  AnswerWatch(HWND window, const PhaseWatch* phases);
  ~AnswerWatch();
  AnswerWatch(const AnswerWatch&) = delete;
  AnswerWatch& operator=(const AnswerWatch&) = delete;

  /// Ends the watch. The longest time in milliseconds.
  double End();
  /// Answers that took longer than a person notices.
  const std::vector<Late>& LateAnswers() const { return late_; }

 private:
  void Run();

  HWND window_;
  const PhaseWatch* phases_;
  std::atomic<bool> stop_ = false;
  double longest_ = 0;
  std::vector<Late> late_;
  std::thread thread_;  // last: it uses the others
};

/// A window of this process whose thread does nothing but serve messages: what it answers late is the machine's doing.
class IdleWindow {
 public:
  IdleWindow();
  ~IdleWindow();
  IdleWindow(const IdleWindow&) = delete;
  IdleWindow& operator=(const IdleWindow&) = delete;

  HWND Handle() const { return window_; }

 private:
  std::atomic<HWND> window_ = nullptr;
  std::thread thread_;  // last: it sets the other
};

}  // namespace bench
