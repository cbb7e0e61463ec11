// A finished set whose descriptor is damaged: a restore refuses it, or brings back nothing but what was saved.
#include <gtest/gtest.h>

#include <iostream>

#include "unit/faults/Route.h"

namespace faults {
namespace {

constexpr const char* kDescriptor = "BackupInfo.ini";

enum class Outcome { Refused, NothingOffered, Part, Whole };

Outcome RestoreWith(const std::string& descriptor) {
  static const MediumFiles kSaved = Course(RouteNamed("Folder")).HostFiles();
  static const MediumFiles kWhole = [] {
    Course course(RouteNamed("RestoreFolder"));
    course.Travel();
    return course.HostFiles();
  }();
  Course course(RouteNamed("RestoreFolder"));
  course.disk.Write(std::string(kSetFolder) + kDescriptor, descriptor);
  const MediumFiles before = course.HostFiles();
  course.Travel();
  const MediumFiles after = course.HostFiles();
  for (const auto& [path, bytes] : after)
    EXPECT_TRUE(bytes == before.at(path) || bytes == kSaved.at(path)) << path << ": " << bytes;
  if (course.offersNothing) return Outcome::NothingOffered;
  if (!course.ReportedSuccess()) {
    EXPECT_EQ(after, before);
    EXPECT_FALSE(course.person.Messages().empty());
    return Outcome::Refused;
  }
  return after == kWhole ? Outcome::Whole : Outcome::Part;
}

void Print(const char* what, std::map<Outcome, int>& counts) {
  std::cout << what << ": refused " << counts[Outcome::Refused] << ", nothing offered "
            << counts[Outcome::NothingOffered] << ", part offered " << counts[Outcome::Part] << ", whole "
            << counts[Outcome::Whole] << "\n";
}

TEST(DamagedDescriptor, EveryTruncationIsRefusedOrOffersWhatIsLeft) {
  const std::string whole = FlawlessSet("Folder").front().at(kDescriptor);
  std::map<Outcome, int> counts;
  for (std::size_t length = 0; length < whole.size(); ++length) ++counts[RestoreWith(whole.substr(0, length))];
  Print("truncated", counts);
  EXPECT_GT(counts[Outcome::Refused], 0);
  EXPECT_EQ(RestoreWith(whole), Outcome::Whole);
}

TEST(DamagedDescriptor, EveryFlippedBitIsRefusedOrRestoresNothingButWhatWasSaved) {
  const std::string whole = FlawlessSet("Folder").front().at(kDescriptor);
  std::map<Outcome, int> counts;
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (const int bit : {0x01, 0x20, 0x80}) {
      std::string flipped = whole;
      flipped[at] = static_cast<char>(flipped[at] ^ bit);
      ++counts[RestoreWith(flipped)];
    }
  }
  Print("flipped", counts);
  EXPECT_GT(counts[Outcome::Refused], 0);
}

}  // namespace
}  // namespace faults
