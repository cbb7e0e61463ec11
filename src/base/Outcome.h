// The one language of failure: what came of a step, which message tells the operator, and why it failed.
//
// The step that fails makes the outcome; callers pass it on as it is, and only whoever shows the message looks at it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace base {

enum class Result : std::int32_t {
  Done = 0,
  Stopped = 1,      ///< by the operator, or nothing to do; whatever had to be said was said
  Failed = -1,      ///< the step itself
  StepFailed = -99  ///< a step of a job
};

/// A number of the host's message catalogue. The numbers have their names in app/MessageIds.h.
enum class MessageId : std::int32_t;

/// Stands where there is nothing to show.
inline constexpr MessageId kNoMessage{};

struct [[nodiscard]] Outcome {
  Outcome(Result code = Result::Done) : result(code) {}  // NOLINT: a result is an outcome without further words
  Outcome(Result code, std::string words) : result(code), cause(std::move(words)) {}
  Outcome(Result code, MessageId message, std::string words = {})
      : result(code), PendingMessageId(message), cause(std::move(words)) {}

  Result result;
  MessageId PendingMessageId = kNoMessage;  ///< what the failed step wants shown; none: its caller's own message
  std::string cause;                        ///< for the log: archive, path, the system's error; empty where unknown

  bool IsDone() const { return result == Result::Done; }

  /// The same; a failure that has no message yet gets this one. So the message of the step that failed wins over
  /// those of its callers.
  Outcome OrSay(MessageId message) && {
    const bool open = result == Result::Failed || result == Result::StepFailed;
    if (open && PendingMessageId == kNoMessage) PendingMessageId = message;
    return std::move(*this);
  }

  friend bool operator==(const Outcome& outcome, Result code) { return outcome.result == code; }
};

/// A step that failed for `cause`, and has no message of its own.
inline Outcome Failure(std::string cause) {
  return {Result::Failed, std::move(cause)};
}

/// An object that had to be had from outside, or why there is none.
template <class T>
class [[nodiscard]] Obtained {
 public:
  template <class Derived>
  Obtained(std::unique_ptr<Derived> object)  // NOLINT: what was had is the answer
      : object_(std::move(object)), why_(object_ ? Result::Done : Result::Failed) {}
  Obtained(Outcome why) : why_(std::move(why)) {}  // NOLINT: and so is the failure

  explicit operator bool() const { return object_ != nullptr; }
  T* operator->() const { return object_.get(); }
  T& operator*() const { return *object_; }
  T* Get() const { return object_.get(); }
  std::unique_ptr<T> Take() { return std::move(object_); }

  /// The failure; Done where the object was had.
  const Outcome& Why() const { return why_; }

 private:
  std::unique_ptr<T> object_;
  Outcome why_;
};

}  // namespace base
