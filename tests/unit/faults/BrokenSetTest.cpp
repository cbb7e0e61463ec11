// Sets that are not as they were meant to be, because the power went or a descriptor is damaged: a restore refuses
// one, or brings back nothing but what was saved.
#include <algorithm>
#include <iostream>
#include <set>

#include "fakes/PowerCut.h"
#include "unit/faults/Route.h"

namespace faults {
namespace {

using enum base::MessageId;

constexpr const char* kDescriptor = "BackupInfo.ini";

/// What a medium held at one moment: one folder, or a pile of floppies.
using Set = std::vector<MediumFiles>;

/// Mixed: of two backups. Spoilt: a file of the host that is of none. BrokenOff: files were replaced, and it failed.
enum class Outcome { Refused, NothingOffered, Older, Whole, Part, Mixed, Spoilt, BrokenOff };
constexpr std::pair<Outcome, const char*> kOutcomes[] = {
    {Outcome::Refused, "refused"}, {Outcome::NothingOffered, "nothing offered"},
    {Outcome::Older, "older set"}, {Outcome::Whole, "whole"},
    {Outcome::Part, "part"},       {Outcome::Mixed, "mixed"},
    {Outcome::Spoilt, "spoilt"},   {Outcome::BrokenOff, "broken off"}};
constexpr Outcome kWrong[] = {Outcome::Part, Outcome::Mixed, Outcome::Spoilt, Outcome::BrokenOff};
using Outcomes = std::map<Outcome, int>;

std::string Listed(const Outcomes& counts) {
  std::string text;
  for (const auto& [outcome, name] : kOutcomes)
    if (counts.contains(outcome)) text += std::string(", ") + name + " " + std::to_string(counts.at(outcome));
  return text;
}

/// What the host's files are after a restore from a set of each age.
struct Reference {
  explicit Reference(const Route& backup) : newer(Course(backup).HostFiles()) {
    older = newer;
    Course course(backup);
    DamageData(course);
    for (const auto& [path, bytes] : course.HostFiles())
      if (bytes == kDamagedData) older[path] = kOlderData;
    if (older.contains(kBigReport)) older[kBigReport] = BigReport(true);
  }
  MediumFiles newer;
  MediumFiles older;
};

/// What a restore that reported success has made of the files.
Outcome Judged(const MediumFiles& before, const MediumFiles& after, const Reference& reference) {
  if (after == reference.newer) return Outcome::Whole;
  if (after == reference.older) return Outcome::Older;
  bool older = false;
  bool newer = false;
  for (const auto& [path, bytes] : after) {
    if (before.contains(path) && bytes == before.at(path)) continue;
    const bool isNewer = reference.newer.contains(path) && bytes == reference.newer.at(path);
    const bool isOlder = reference.older.contains(path) && bytes == reference.older.at(path);
    if (!isNewer && !isOlder) return Outcome::Spoilt;
    newer = newer || (isNewer && !isOlder);
    older = older || (isOlder && !isNewer);
  }
  return older && newer ? Outcome::Mixed : Outcome::Part;
}

/// Restores the set onto damaged data, and says what came of it.
Outcome Restore(const Set& set, bool floppies) {
  static const Route kFromFolder = {"", Menu::Restore, kSetFolder, RestoreComplete,
                                    [](Course& course) { DamageData(course); }};
  static const Route kFromFloppies = {"", Menu::Restore, "A:\\", RestoreComplete,
                                      [](Course& course) { DamageData(course); }};
  static const Reference kReferences[] = {Reference(RouteNamed("Folder")), Reference(RouteNamed("Floppies"))};
  Course course(floppies ? kFromFloppies : kFromFolder);
  course.pile = set;
  if (floppies) course.ChangeDisk(set.front());
  if (!floppies) course.PutSet(set.front());
  course.Travel();
  if (course.offersNothing) return Outcome::NothingOffered;
  if (course.ReportedSuccess()) return Judged(course.before, course.HostFiles(), kReferences[floppies ? 1 : 0]);
  EXPECT_FALSE(course.person.Messages().empty()) << "it failed without a word";
  return course.HostFiles() == course.before ? Outcome::Refused : Outcome::BrokenOff;
}

/// Every state that the destination of a backup goes through, and all that a power cut there can leave: each once.
class Moments {
 public:
  Moments(Course& backup) : backup_(backup), cut_(backup.disk, backup.route.folder) {
    backup.disk.afterChange = [this] { Look(); };
    backup.takeOut = [this] { return cut_.Flushed(); };  // it does not wait for the system's cache
    Look();
  }
  /// A state that comes of two losses stands with the smaller one.
  const std::map<fakes::Loss, std::set<Set>>& All() const { return moments_; }
  int Cuts(fakes::Loss loss) const { return times_.contains(loss) ? times_.at(loss) : 0; }

 private:
  void Look() {
    for (fakes::Remains& remains : cut_.Now()) {
      ++times_[remains.loss];
      Set set = backup_.pile;
      set.push_back(std::move(remains.files));
      set.insert(set.end(), backup_.material.begin(), backup_.material.end());
      const bool isNew = std::ranges::none_of(moments_, [&](const auto& each) { return each.second.contains(set); });
      if (isNew) moments_[remains.loss].insert(std::move(set));
    }
  }

  Course& backup_;
  fakes::PowerCut cut_;
  std::map<fakes::Loss, std::set<Set>> moments_;
  std::map<fakes::Loss, int> times_;
};

constexpr std::pair<fakes::Loss, const char*> kLosses[] = {{fakes::Loss::None, "in order"},
                                                           {fakes::Loss::Unflushed, "unflushed lost"},
                                                           {fakes::Loss::AllButOne, "one change alone"}};

class CrashInBackup : public testing::TestWithParam<const Route*> {};

TEST_P(CrashInBackup, LeavesTheOldSetTheNewOneOrOneThatIsRefused) {
  const Route& route = *GetParam();
  Course backup(route);
  const Moments moments(backup);
  backup.Travel();
  EXPECT_TRUE(backup.ReportedSuccess());
  Outcomes all;
  for (const auto& [loss, name] : kLosses) {
    Outcomes counts;
    const auto& sets = moments.All().contains(loss) ? moments.All().at(loss) : std::set<Set>();
    for (const Set& set : sets) ++counts[Restore(set, route.UsesFloppies())];
    std::cout << route.name << ", " << name << ": " << moments.Cuts(loss) << " cuts, " << sets.size() << " new states"
              << Listed(counts) << "\n";
    for (const auto& [outcome, count] : counts) all[outcome] += count;
  }
  const bool hadSet = route.name.starts_with("Older");
  for (const Outcome wrong : kWrong) EXPECT_EQ(all[wrong], 0) << Listed(all);
  EXPECT_TRUE((all[Outcome::Older] > 0) == hadSet && all[Outcome::Whole] > 0) << Listed(all);
}

// Once the program has said that all is done, nothing is lost any more.
TEST_P(CrashInBackup, TakesNothingFromAFinishedSet) {
  Course backup(*GetParam());
  fakes::PowerCut cut(backup.disk, backup.route.folder);
  backup.takeOut = [&] { return cut.Flushed(); };
  backup.Travel();
  ASSERT_TRUE(backup.ReportedSuccess());
  for (fakes::Remains& remains : cut.Now()) {
    Set set = backup.pile;
    set.push_back(std::move(remains.files));
    EXPECT_EQ(Restore(set, backup.route.UsesFloppies()), Outcome::Whole);
  }
}

INSTANTIATE_TEST_SUITE_P(All, CrashInBackup,
                         testing::Values(&RouteNamed("Folder"), &RouteNamed("OlderSet"), &RouteNamed("Medium"),
                                         &OntoOlderMedium(), &RouteNamed("Floppies"), &OntoOlderFloppies()),
                         [](const auto& test) { return test.param->name; });

/// Restores all of these, and prints and returns how often what came of it.
Outcomes RestoreEach(const char* name, const std::vector<Set>& sets) {
  Outcomes counts;
  for (const Set& set : sets) ++counts[Restore(set, false)];
  std::cout << name << ": " << sets.size() << " sets" << Listed(counts) << "\n";
  EXPECT_EQ(counts[Outcome::Mixed] + counts[Outcome::Spoilt] + counts[Outcome::BrokenOff], 0);
  return counts;
}

/// A whole set, but for its descriptor.
Set WithDescriptor(const std::string& descriptor) {
  Set set = FlawlessSet(RouteNamed("Folder"));
  set.front()[kDescriptor] = descriptor;
  return set;
}

// Its archives tell how many versions there must be. Of the last one a piece passes for another version, which is not
// offered, and that is shown.
TEST(DamagedDescriptor, EveryTruncationIsRefusedOrOffersNothing) {
  const std::string whole = FlawlessSet(RouteNamed("Folder")).front().at(kDescriptor);
  const std::size_t lastVersion = whole.rfind('=') + 1;
  const std::size_t end = whole.find("\r\n", lastVersion);
  std::vector<Set> cut;
  std::vector<Set> cutInLastVersion;
  for (std::size_t length = 0; length < whole.size(); ++length)
    (length > lastVersion && length < end ? cutInLastVersion : cut).push_back(WithDescriptor(whole.substr(0, length)));
  EXPECT_EQ(RestoreEach("truncated", cut)[Outcome::Part], 0);
  RestoreEach("truncated within the last version", cutInLastVersion);
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
