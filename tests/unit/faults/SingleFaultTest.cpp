// Every call that leaves the program fails once, and then for good: on every road, at every call.
#include <algorithm>
#include <iostream>

#include "unit/faults/Oracle.h"

namespace faults {
namespace {

enum class Persistence { Once, ForGood };

/// Calls whose failure takes the program's voice: nothing can be shown then.
bool SilencesMessages(const fakes::Call& call) {
  return call.contract == "MessageDialog" || call.method == "CreateMessageDialog";
}

Voice VoiceLeft(const fakes::Call& fault, Persistence persistence) {
  if (persistence == Persistence::ForGood) return Voice::CallsFailForGood;
  return SilencesMessages(fault) ? Voice::CannotShowMessages : Voice::Whole;
}

/// What of a route its sibling shows, whose every call fails too. Runs with floppies and media are the same as those
/// with a folder up to the choice of the drive, and later call much in the same words.
class Sibling {
 public:
  explicit Sibling(const Route& route) {
    if (!route.UsesFloppies() && route.name != "Medium") return;
    Course sibling(RouteNamed(route.IsRestore() ? "RestoreFolder" : "Folder"));
    sibling.Travel();
    calls_ = sibling.calls.Calls();
  }
  /// The first call that is not the sibling's.
  std::size_t FirstOther(const std::vector<fakes::Call>& calls) const {
    return static_cast<std::size_t>(std::ranges::mismatch(calls, calls_).in1 - calls.begin());
  }
  bool Makes(const fakes::Call& call) const { return std::ranges::find(calls_, call) != calls_.end(); }

 private:
  std::vector<fakes::Call> calls_;
};

class SingleFault : public testing::TestWithParam<std::tuple<std::size_t, Persistence>> {};

TEST_P(SingleFault, IsToldAndLosesNothing) {
  const Route& route = Routes()[std::get<0>(GetParam())];
  const Persistence persistence = std::get<1>(GetParam());
  Flawless flawless(route);
  ASSERT_TRUE(flawless.course.ReportedSuccess());
  const std::vector<fakes::Call>& calls = flawless.course.calls.Calls();
  const Sibling sibling(route);
  const std::size_t first = sibling.FirstOther(calls);
  std::size_t runs = 0;
  // What fails for good from one call on fails from the next one on as well, but for that call alone.
  const std::size_t step = persistence == Persistence::Once ? 1 : 3;
  for (std::size_t n = first + 1; n <= calls.size(); n += step) {
    if (persistence == Persistence::Once && sibling.Makes(calls[n - 1])) continue;
    ++runs;
    Course course(route);
    persistence == Persistence::Once ? course.calls.FailCall(n) : course.calls.FailFrom("", "", n);
    course.Travel();
    const fakes::Call& fault = calls[n - 1];
    const std::string wrong = Judge(course, flawless, VoiceLeft(fault, persistence));
    EXPECT_EQ(wrong, "") << n << ": " << fault.contract << "." << fault.method << "(" << fault.detail << ")";
  }
  std::cout << route.name << ": " << calls.size() << " calls, " << runs
            << (step == 1 ? " failed once\n" : " failed with all after it\n");
}

std::string NameOf(const testing::TestParamInfo<SingleFault::ParamType>& test) {
  const bool once = std::get<1>(test.param) == Persistence::Once;
  return Routes()[std::get<0>(test.param)].name + (once ? "Once" : "ForGood");
}

INSTANTIATE_TEST_SUITE_P(All, SingleFault,
                         testing::Combine(testing::Range<std::size_t>(0, Routes().size()),
                                          testing::Values(Persistence::Once, Persistence::ForGood)),
                         NameOf);

}  // namespace
}  // namespace faults
