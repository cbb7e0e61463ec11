// Which keys mean a dialog that can replace data.
#include "forms/KeyGuard.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr std::uint32_t kMoment = forms::KeyGuard::kMoment;

TEST(KeyGuard, TakesAKeyAfterAMomentWithoutOne) {
  for (const std::uint32_t shown : {5000U, std::numeric_limits<std::uint32_t>::max() - 100}) {  // also as it runs over
    forms::KeyGuard guard;
    guard.Shown(shown);
    EXPECT_FALSE(guard.Takes(shown - 200, false)) << "it was pressed before there was the dialog";
    EXPECT_FALSE(guard.Takes(shown + 350, false)) << "the second Enter";
    EXPECT_FALSE(guard.Takes(shown + 1200, false)) << "and a third: hammering is no answer";
    EXPECT_TRUE(guard.Takes(shown + 1200 + kMoment, false));
    guard.Shown(shown + 9000);
    EXPECT_FALSE(guard.Takes(shown + 9100, false)) << "it has come back from behind another one";
    EXPECT_TRUE(guard.Takes(shown + 9100 + kMoment, false));
  }
}

TEST(KeyGuard, DropsAKeyThatIsHeldDown) {
  forms::KeyGuard guard;
  guard.Shown(0);
  for (std::uint32_t at = 30; at < 5000; at += 30) EXPECT_FALSE(guard.Takes(at, true)) << at;
  EXPECT_FALSE(guard.Takes(5100, false)) << "let go and pressed again at once";
  EXPECT_TRUE(guard.Takes(5100 + kMoment, false));
}

}  // namespace
