// The result codes that the program's routines return.
#pragma once

#include <cstdint>

namespace app {

using ResultCode = std::int32_t;

inline constexpr ResultCode kDone = 0;
/// Stopped by the operator, or nothing to do; whatever had to be said was said.
inline constexpr ResultCode kStopped = 1;
/// The message to show is `PendingMessageId`, or the caller's own when that is 0.
inline constexpr ResultCode kFailed = -1;
/// A step of a job failed; the message likewise.
inline constexpr ResultCode kStepFailed = -99;

/// What the message display answers in a two-choice prompt.
inline constexpr std::int16_t kRefused = 1;
inline constexpr std::int16_t kConsented = 2;

}  // namespace app
