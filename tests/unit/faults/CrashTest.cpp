// The power goes at any moment of a backup: what then stands at the destination is restored.
#include <iostream>

#include "unit/faults/Route.h"

namespace faults {
namespace {

/// What the destination held at one moment: one folder or medium, or a pile of floppies.
using Moment = std::vector<MediumFiles>;

/// Makes a backup on the route and returns every state that its destination went through.
std::vector<Moment> MomentsOf(Course& course) {
  std::vector<Moment> moments;
  course.disk.afterChange = [&] {
    Moment moment = course.pile;
    moment.push_back(course.disk.Tree(course.route.folder));
    if (moments.empty() || moments.back() != moment) moments.push_back(moment);
  };
  course.Travel();
  course.disk.afterChange = nullptr;
  EXPECT_TRUE(course.ReportedSuccess());
  return moments;
}

enum class Outcome { Refused, Old, New, Mixed };

/// Restores what a crash left onto damaged data, and says what came of it.
Outcome RestoreAfterCrash(const Moment& moment, bool floppies) {
  static const Route kFromFolder = {"", 1, kSetFolder, 65400, [](Course& course) { DamageData(course); }};
  static const Route kFromFloppies = {"", 1, "A:\\", 65400, [](Course& course) { DamageData(course); }};
  static const MediumFiles kNewData = Course(RouteNamed("Folder")).HostFiles();
  Course course(floppies ? kFromFloppies : kFromFolder);
  const MediumFiles before = course.HostFiles();
  course.pile = moment;
  if (floppies) course.InsertDisk(moment.front());
  for (const auto& [name, bytes] : moment.front()) {
    if (!floppies) course.disk.Write(kSetFolder + name, bytes);
  }
  course.Travel();
  int older = 0;
  int fresh = 0;
  for (const auto& [path, bytes] : course.HostFiles()) {
    if (!before.contains(path) || bytes == before.at(path)) continue;
    older += bytes == kOlderData;
    fresh += bytes == kNewData.at(path);
    EXPECT_TRUE(bytes == kOlderData || bytes == kNewData.at(path)) << path << ": " << bytes;
  }
  EXPECT_TRUE(course.ReportedSuccess() || course.offersNothing || !course.person.Messages().empty())
      << "it failed without a word";
  if (older + fresh == 0) return Outcome::Refused;
  if (!course.ReportedSuccess() || older * fresh > 0) return Outcome::Mixed;
  return older > 0 ? Outcome::Old : Outcome::New;
}

class CrashInBackup : public testing::TestWithParam<const char*> {};

TEST_P(CrashInBackup, LeavesTheOldSetTheNewOneOrOneThatIsRefused) {
  Course backup(RouteNamed(GetParam()));
  const std::vector<Moment> moments = MomentsOf(backup);
  std::map<Outcome, int> outcomes;
  for (const Moment& moment : moments) ++outcomes[RestoreAfterCrash(moment, backup.route.UsesFloppies())];
  EXPECT_GT(outcomes[Outcome::New], 0) << "the whole set must be restored";
  EXPECT_EQ(outcomes[Outcome::Mixed], 0);
  std::cout << GetParam() << ": " << moments.size() << " moments; refused " << outcomes[Outcome::Refused]
            << ", old set " << outcomes[Outcome::Old] << ", new set " << outcomes[Outcome::New] << ", mixed "
            << outcomes[Outcome::Mixed] << "\n";
}

INSTANTIATE_TEST_SUITE_P(All, CrashInBackup, testing::Values("Folder", "OlderSet", "Medium", "Floppies"),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
}  // namespace faults
