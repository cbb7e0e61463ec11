// Counts the program's calls to the outside and decides which of them fail, and with what words.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "base/Outcome.h"

namespace fakes {

/// A failure that was ordered from the counter. `subject` is what the real adapter would name: a path, an entry.
inline base::Outcome InjectedFault(const std::string& subject) {
  return base::Failure(subject + ": injected fault");
}

/// One call that the program made, such as {"FileSystem", "RemoveFile", "C:\a.txt"}.
struct Call {
  std::string contract;
  std::string method;
  std::string detail;  ///< the argument that tells the call from its like

  bool operator==(const Call&) const = default;
};

/// Shared by all fakes of one FakeHost. A fake asks Fails() at the head of every call that
/// its contract allows to fail, and then answers as the contract says of a failure.
class CallCounter {
 public:
  /// Records a call that can fail; true when it is to fail now.
  bool Fails(const std::string& contract, const std::string& method, const std::string& detail = {}) {
    calls_.push_back({contract, method, detail});
    bool fails = false;
    for (Rule& rule : rules_) {
      if (!rule.Covers(calls_.back())) continue;
      ++rule.seen;
      fails = fails || (rule.seen >= rule.first && rule.seen <= rule.last);
    }
    return fails;
  }

  /// Of all calls from now on, counted from 1, the `n`-th fails; none for 0.
  void FailCall(std::size_t n) { rules_.push_back({{}, n, n}); }
  /// Of the calls of `contract` and `method` from now on, counted from 1, the `n`-th fails and every one after it.
  /// What is empty stands for all; where `detail` is given, only calls that carry it count.
  void FailFrom(const std::string& contract, const std::string& method, std::size_t n = 1,
                const std::string& detail = {}) {
    rules_.push_back({{contract, method, detail}, n});
  }
  /// Forgets the calls and the faults.
  void Reset() { *this = {}; }

  /// All calls so far, in order.
  const std::vector<Call>& Calls() const { return calls_; }
  std::size_t Count() const { return calls_.size(); }
  std::size_t CountOf(const std::string& contract, const std::string& method) const {
    const Rule wanted{{contract, method, {}}, 0};
    return static_cast<std::size_t>(
        std::count_if(calls_.begin(), calls_.end(), [&](const Call& call) { return wanted.Covers(call); }));
  }

 private:
  struct Rule {
    Call pattern;  ///< what is empty fits everything
    std::size_t first;
    std::size_t last = SIZE_MAX;
    std::size_t seen = 0;

    bool Covers(const Call& call) const {
      const auto fits = [](const std::string& part, const std::string& wanted) {
        return wanted.empty() || part == wanted;
      };
      return fits(call.contract, pattern.contract) && fits(call.method, pattern.method) &&
             fits(call.detail, pattern.detail);
    }
  };

  std::vector<Call> calls_;
  std::vector<Rule> rules_;
};

/// The calls of one contract.
class ContractCalls {
 public:
  ContractCalls(CallCounter& calls, std::string contract) : calls_(calls), contract_(std::move(contract)) {}

  bool Fails(const std::string& method, const std::string& detail = {}) {
    return calls_.Fails(contract_, method, detail);
  }

  /// Does `work`, which tells whether all went well, unless the call is to fail now. `subject` is the call's detail and
  /// what the words of a failure begin with; without one that is the method. `refusal` says what `work` met.
  template <class Work>
  base::Outcome Do(const std::string& method, const std::string& subject, Work work,
                   const std::string& refusal = "refused") {
    const std::string named = subject.empty() ? contract_ + "." + method : subject;
    if (Fails(method, subject)) return InjectedFault(named);
    return work() ? base::Outcome() : base::Failure(named + ": " + refusal);
  }

 private:
  CallCounter& calls_;
  std::string contract_;
};

}  // namespace fakes
