// How failed expectations show message numbers, results and outcomes. Included by every test that compares them.
#pragma once

#include <ostream>

#include "base/Outcome.h"

namespace base {

inline void PrintTo(MessageId id, std::ostream* out) {
  *out << "message " << static_cast<std::int32_t>(id);
}

inline void PrintTo(Result result, std::ostream* out) {
  switch (result) {
    case Result::Done:
      *out << "Done";
      return;
    case Result::Stopped:
      *out << "Stopped";
      return;
    case Result::Failed:
      *out << "Failed";
      return;
    case Result::StepFailed:
      *out << "StepFailed";
      return;
  }
  *out << "result " << static_cast<std::int32_t>(result);
}

inline void PrintTo(const Outcome& outcome, std::ostream* out) {
  PrintTo(outcome.result, out);
  if (outcome.PendingMessageId != kNoMessage) PrintTo(outcome.PendingMessageId, &(*out << ", "));
  if (!outcome.cause.empty()) *out << ", " << outcome.cause;
}

}  // namespace base
