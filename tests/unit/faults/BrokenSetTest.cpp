// Sets that are not as they were meant to be, because the power went or a descriptor is damaged: a restore refuses
// one, or brings back nothing but what was saved.
#include <iostream>

#include "unit/faults/Route.h"

namespace faults {
namespace {

using enum base::MessageId;

constexpr const char* kDescriptor = "BackupInfo.ini";

/// What a medium held at one moment: one folder, or a pile of floppies.
using Set = std::vector<MediumFiles>;

/// Mixed: of two backups.
enum class Outcome { Refused, NothingOffered, OlderData, Part, Whole, Mixed };

/// Restores the set onto damaged data, and says what came of it.
Outcome Restore(const Set& set, bool floppies) {
  static const Route kFromFolder = {"", Menu::Restore, kSetFolder, RestoreComplete,
                                    [](Course& course) { DamageData(course); }};
  static const Route kFromFloppies = {"", Menu::Restore, "A:\\", RestoreComplete,
                                      [](Course& course) { DamageData(course); }};
  static const MediumFiles kSaved[] = {Course(RouteNamed("Folder")).HostFiles(),
                                       Course(RouteNamed("Floppies")).HostFiles()};
  const MediumFiles& saved = kSaved[floppies ? 1 : 0];
  Course course(floppies ? kFromFloppies : kFromFolder);
  const MediumFiles before = course.HostFiles();
  course.pile = set;
  if (floppies) course.InsertDisk(set.front());
  if (!floppies) course.PutSet(set.front());
  course.Travel();
  const MediumFiles after = course.HostFiles();
  bool older = false;
  bool fresh = false;
  for (const auto& [path, bytes] : after) {
    if (before.contains(path) && bytes == before.at(path)) continue;
    older = older || bytes == kOlderData;
    fresh = fresh || bytes == saved.at(path);
    EXPECT_TRUE(bytes == kOlderData || bytes == saved.at(path)) << path << ": " << bytes;
  }
  if (course.offersNothing) return Outcome::NothingOffered;
  if (!course.ReportedSuccess()) {
    EXPECT_EQ(after, before);
    EXPECT_FALSE(course.person.Messages().empty()) << "it failed without a word";
    return Outcome::Refused;
  }
  if (older) return fresh ? Outcome::Mixed : Outcome::OlderData;
  return after == saved ? Outcome::Whole : Outcome::Part;
}

/// Restores all of these, and prints and returns how often what came of it.
std::map<Outcome, int> RestoreEach(const char* name, const std::vector<Set>& sets, bool floppies = false) {
  std::map<Outcome, int> counts;
  for (const Set& set : sets) ++counts[Restore(set, floppies)];
  std::cout << name << ": " << sets.size() << " sets; refused " << counts[Outcome::Refused] << ", nothing offered "
            << counts[Outcome::NothingOffered] << ", older data " << counts[Outcome::OlderData] << ", part "
            << counts[Outcome::Part] << ", whole " << counts[Outcome::Whole] << ", mixed " << counts[Outcome::Mixed]
            << "\n";
  EXPECT_EQ(counts[Outcome::Mixed], 0);
  return counts;
}

class CrashInBackup : public testing::TestWithParam<const char*> {};

// Every state that the destination goes through.
TEST_P(CrashInBackup, LeavesTheOldSetTheNewOneOrOneThatIsRefused) {
  Course backup(RouteNamed(GetParam()));
  std::vector<Set> moments;
  backup.disk.afterChange = [&] {
    Set moment = backup.pile;
    moment.push_back(backup.disk.Tree(backup.route.folder));
    if (moments.empty() || moments.back() != moment) moments.push_back(moment);
  };
  backup.Travel();
  EXPECT_TRUE(backup.ReportedSuccess());
  EXPECT_GT(RestoreEach(GetParam(), moments, backup.route.UsesFloppies())[Outcome::Whole], 0);
}

INSTANTIATE_TEST_SUITE_P(All, CrashInBackup, testing::Values("Folder", "OlderSet", "Medium", "Floppies"),
                         [](const auto& test) { return std::string(test.param); });

/// A whole set, but for its descriptor.
Set WithDescriptor(const std::string& descriptor) {
  Set set = FlawlessSet(RouteNamed("Folder"));
  set.front()[kDescriptor] = descriptor;
  return set;
}

TEST(DamagedDescriptor, EveryTruncationIsRefusedOrOffersWhatIsLeft) {
  const std::string whole = FlawlessSet(RouteNamed("Folder")).front().at(kDescriptor);
  std::vector<Set> truncated;
  for (std::size_t length = 0; length < whole.size(); ++length)
    truncated.push_back(WithDescriptor(whole.substr(0, length)));
  EXPECT_GT(RestoreEach("truncated", truncated)[Outcome::Refused], 0);
}

TEST(DamagedDescriptor, EveryFlippedBitIsRefusedOrRestoresNothingButWhatWasSaved) {
  const std::string whole = FlawlessSet(RouteNamed("Folder")).front().at(kDescriptor);
  std::vector<Set> flipped;
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (const int bit : {0x01, 0x20, 0x80}) {
      std::string damaged = whole;
      damaged[at] = static_cast<char>(damaged[at] ^ bit);
      flipped.push_back(WithDescriptor(damaged));
    }
  }
  EXPECT_GT(RestoreEach("flipped", flipped)[Outcome::Refused], 0);
}

}  // namespace
}  // namespace faults
