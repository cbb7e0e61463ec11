// Waiting for those who hold a file for a moment: a virus scanner looks into each new one, an indexer too.
#pragma once

#include <functional>
#include <utility>

#include "windows/adapters/Win32.h"

namespace windows {

/// One for a file system. A file that is in use for good costs its seconds once: afterwards others that are refused are
/// waited for only a little, so that a folder full of them does not hold up a job.
class Patience {
 public:
  /// `meanwhile` is called all the while, so that others can be served.
  explicit Patience(std::function<void()> meanwhile) : meanwhile_(std::move(meanwhile)) {}

  /// Repeats `step`, which answers an error of the system, while that says that the file is in use.
  template <class Step>
  DWORD WhileInUse(Step step) {
    return Repeat(step, [](DWORD error) { return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION; });
  }

  /// Repeats `step` while `mayPass` is true of what it answers. The last answer.
  template <class Step, class MayPass>
  auto Repeat(Step step, MayPass mayPass) {
    const ULONGLONG begun = GetTickCount64();
    const ULONGLONG end = begun + (begun < disappointedUntil_ ? kShort : kLong);
    for (;;) {
      auto answer = step();
      if (!mayPass(answer)) return answer;
      const ULONGLONG now = GetTickCount64();
      if (now >= end) {
        disappointedUntil_ = now + kRemembered;
        return answer;
      }
      Sleep(kPause);
      meanwhile_();
    }
  }

  /// For steps that take long themselves.
  const std::function<void()>& Meanwhile() const { return meanwhile_; }

 private:
  // Milliseconds.
  static constexpr ULONGLONG kLong = 3000;
  static constexpr ULONGLONG kShort = 100;
  static constexpr ULONGLONG kRemembered = 30000;
  static constexpr DWORD kPause = 25;

  std::function<void()> meanwhile_;
  ULONGLONG disappointedUntil_ = 0;
};

}  // namespace windows
