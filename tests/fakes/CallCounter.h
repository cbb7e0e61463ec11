// Counts the program's calls to the outside and decides which of them fail.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace fakes {

/// One call that the program made, such as {"FileSystem", "RemoveFile", "C:\a.txt"}.
struct Call {
  std::string contract;
  std::string method;
  std::string detail;  ///< the argument that tells the call from its like
};

/// Shared by all fakes of one FakeHost. A fake asks Fails() at the head of every call that
/// its contract allows to fail, and then answers as the contract says of a failure.
class CallCounter {
 public:
  /// Records a call that can fail; true when it is to fail now.
  bool Fails(const std::string& contract, const std::string& method, const std::string& detail = {});

  /// The call number `n`, counted from 1 over all contracts, fails; 0 for none.
  void FailCall(std::size_t n) { failFirst_ = failLast_ = n; }
  /// The call number `n` fails, and every one after it.
  void FailEveryCallFrom(std::size_t n) {
    failFirst_ = n;
    failLast_ = SIZE_MAX;
  }
  /// Calls of `contract` and `method` fail from their `n`-th one on, `n` counted from now and from 1; an
  /// empty method stands for all of the contract. Where `detail` is given, only calls that carry it count.
  void FailFrom(const std::string& contract, const std::string& method, std::size_t n = 1,
                const std::string& detail = {});
  /// Forgets the calls and the faults.
  void Reset();

  /// All calls so far, in order.
  const std::vector<Call>& Calls() const { return calls_; }
  std::size_t Count() const { return calls_.size(); }
  std::size_t CountOf(const std::string& contract, const std::string& method) const;

 private:
  struct Rule {
    Call pattern;
    std::size_t remaining;  ///< matching calls that still succeed
    bool Covers(const Call& call) const;
  };

  std::vector<Call> calls_;
  std::vector<Rule> rules_;
  std::size_t failFirst_ = 0;
  std::size_t failLast_ = 0;
};

}  // namespace fakes
