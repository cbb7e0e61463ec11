#include "fakes/CallCounter.h"

#include <algorithm>

namespace fakes {

bool CallCounter::Rule::Covers(const Call& call) const {
  return call.contract == pattern.contract && (pattern.method.empty() || call.method == pattern.method) &&
         (pattern.detail.empty() || call.detail == pattern.detail);
}

bool CallCounter::Fails(const std::string& contract, const std::string& method, const std::string& detail) {
  calls_.push_back({contract, method, detail});
  bool fails = calls_.size() >= failFirst_ && calls_.size() <= failLast_;
  for (Rule& rule : rules_) {
    if (!rule.Covers(calls_.back())) continue;
    if (rule.remaining == 0)
      fails = true;
    else
      --rule.remaining;
  }
  return fails;
}

void CallCounter::FailFrom(const std::string& contract, const std::string& method, std::size_t n,
                           const std::string& detail) {
  rules_.push_back({{contract, method, detail}, n - 1});
}

void CallCounter::Reset() {
  calls_.clear();
  rules_.clear();
  failFirst_ = failLast_ = 0;
}

std::size_t CallCounter::CountOf(const std::string& contract, const std::string& method) const {
  return static_cast<std::size_t>(std::count_if(calls_.begin(), calls_.end(), [&](const Call& call) {
    return call.contract == contract && call.method == method;
  }));
}

}  // namespace fakes
