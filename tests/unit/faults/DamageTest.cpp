// A finished set whose descriptor is damaged: a restore refuses it, or brings back nothing but what was saved.
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

/// Tries all of these descriptors.
void RestoreWithEach(const char* damage, const std::vector<std::string>& descriptors) {
  std::map<Outcome, int> counts;
  for (const std::string& descriptor : descriptors) ++counts[RestoreWith(descriptor)];
  std::cout << damage << ": refused " << counts[Outcome::Refused] << ", nothing offered "
            << counts[Outcome::NothingOffered] << ", part offered " << counts[Outcome::Part] << ", whole "
            << counts[Outcome::Whole] << "\n";
  EXPECT_GT(counts[Outcome::Refused], 0);
}

TEST(DamagedDescriptor, EveryTruncationIsRefusedOrOffersWhatIsLeft) {
  const std::string whole = FlawlessSet("Folder").front().at(kDescriptor);
  std::vector<std::string> truncated;
  for (std::size_t length = 0; length < whole.size(); ++length) truncated.push_back(whole.substr(0, length));
  RestoreWithEach("truncated", truncated);
  EXPECT_EQ(RestoreWith(whole), Outcome::Whole);
}

TEST(DamagedDescriptor, EveryFlippedBitIsRefusedOrRestoresNothingButWhatWasSaved) {
  const std::string whole = FlawlessSet("Folder").front().at(kDescriptor);
  std::vector<std::string> flipped;
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (const int bit : {0x01, 0x20, 0x80}) {
      flipped.push_back(whole);
      flipped.back()[at] = static_cast<char>(whole[at] ^ bit);
    }
  }
  RestoreWithEach("flipped", flipped);
}

}  // namespace
}  // namespace faults
