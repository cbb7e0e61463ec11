// How failed expectations show message numbers, results and outcomes. Included by every test that compares them.
#pragma once

#include <map>
#include <ostream>

#include "base/Outcome.h"

namespace base {

inline void PrintTo(MessageId id, std::ostream* out) {
  *out << "message " << static_cast<std::int32_t>(id);
}

inline void PrintTo(Result result, std::ostream* out) {
  static const std::map<Result, const char*> kNames = {{Result::Done, "Done"},
                                                       {Result::Stopped, "Stopped"},
                                                       {Result::Failed, "Failed"},
                                                       {Result::StepFailed, "StepFailed"}};
  *out << kNames.at(result);
}

inline void PrintTo(const Outcome& outcome, std::ostream* out) {
  PrintTo(outcome.result, out);
  if (outcome.PendingMessageId != kNoMessage) PrintTo(outcome.PendingMessageId, &(*out << ", "));
  if (!outcome.cause.empty()) *out << ", " << outcome.cause;
}

}  // namespace base
