// Floppies of two sets in one pile, and disks that were not changed: the operator is asked again, or the set is
// refused; nothing is restored from two sets, and no disk of a set is written over while it is being made.
#include <algorithm>
#include <iostream>

#include "unit/faults/Route.h"

namespace faults {
namespace {

using enum base::MessageId;

using Disks = std::vector<MediumFiles>;
/// Disks, counted from 0.
using Places = std::deque<std::size_t>;

/// What a set was made of.
struct Origin {
  const char* name;
  std::size_t reportSize;
  unsigned seed;  ///< of the contents, and the day
  const char* menuVersion;
};

/// B differs from A in its contents and its day alone, C has a disk less, D another version.
constexpr std::size_t kForThreeDisks = 2'900'000;
constexpr std::size_t kForTwoDisks = 1'450'000;
constexpr Origin kOrigins[] = {
    {"A", kForThreeDisks, 1, "V2.1"},
    {"B", kForThreeDisks, 2, "V2.1"},
    {"C", kForTwoDisks, 3, "V2.1"},
    {"D", kForThreeDisks, 4, "V2.2"},
};

void Fill(Course& course, const Origin& origin) {
  course.disk.Write("C:\\Tarsus\\Report\\big.dat", Noise(origin.reportSize, origin.seed));
  course.disk.Write("C:\\Tarsus\\Menu\\menu.ini", std::string("menu of ") + origin.name);
  course.clock.now.day += static_cast<int>(origin.seed);
  const std::string versions = std::string(fakes::kSystemFolder) + "BackupVersion.ini";
  const std::string ours = "MenuData=";
  std::string text = course.disk.Read(versions);
  text.replace(text.find(ours) + ours.size(), 4, origin.menuVersion);
  course.disk.Write(versions, text);
}

template <std::size_t kOrigin>
Route Making() {
  return {std::string("Set") + kOrigins[kOrigin].name, Menu::Backup, "A:\\", BackupComplete,
          [](Course& course) { Fill(course, kOrigins[kOrigin]); }};
}
const Route kMaking[] = {Making<0>(), Making<1>(), Making<2>(), Making<3>()};
constexpr std::size_t kSets = std::size(kMaking);

const Disks& DisksOf(std::size_t set) {
  return FlawlessSet(kMaking[set]);
}

const Route kRestoring = {"", Menu::Restore, "A:\\", RestoreComplete, [](Course& course) { DamageData(course); }};

/// The disk of one set that comes in the place of a disk of another.
struct Mistake {
  std::size_t wanted;          ///< set
  std::size_t place;           ///< disk of it
  std::size_t other;           ///< set
  std::size_t disk;            ///< disk of that
  bool isChangedLate = false;  ///< the first disk: after the set was inspected

  /// Whether the program can tell by the disk's descriptor. A first disk that is inspected makes the set its own.
  bool IsVisible() const {
    if (place != disk) return true;
    const bool isAlike = kOrigins[wanted].reportSize == kOrigins[other].reportSize &&
                         kOrigins[wanted].menuVersion == std::string(kOrigins[other].menuVersion);
    return !isAlike && (place > 0 || isChangedLate);
  }
};

std::ostream& operator<<(std::ostream& out, const Mistake& each) {
  return out << kOrigins[each.other].name << each.disk + 1 << " for " << kOrigins[each.wanted].name << each.place + 1
             << (each.isChangedLate ? " at the start" : "");
}

/// A restore whose operator makes one mistake, or none, and puts it right when asked for the right disk; asked once
/// more, they give up.
class MixedRestore {
 public:
  explicit MixedRestore(std::size_t wanted) : MixedRestore(Mistake{wanted, DisksOf(wanted).size(), 0, 0}) {}
  explicit MixedRestore(const Mistake& mistake) : course(kRestoring), mistake_(mistake) {
    course.person.messageHabit = [this](base::MessageId id) { return Answer(id); };
    course.person.Habit<frmRestore>([this](frmRestore& form) {
      for (const Box box : kAllBoxes)
        if (BoxOf(form, box).Enabled()) fakes::Tick(BoxOf(form, box));
      if (mistake_.isChangedLate) course.ChangeDisk(Offered(0));
      fakes::Press(std::exchange(hasStarted_, true) ? form.cmdCancel : form.cmdStart);
    });
    course.ChangeDisk(mistake_.isChangedLate ? DisksOf(mistake_.wanted)[0] : Offered(0));
    course.Travel();
  }

  Course course;
  int prompts = 0;  ///< for the right disk

 private:
  const MediumFiles& Offered(std::size_t place) const {
    return place == mistake_.place ? DisksOf(mistake_.other)[mistake_.disk] : DisksOf(mistake_.wanted)[place];
  }
  host::Answer Answer(base::MessageId id) {
    if (id != AskRightDisk && id != AskNextSourceDisk) return host::Answer::Consented;
    const std::size_t place = course.calls.CountOf("Shell", "CopyWithProgress");
    if (id == AskRightDisk && ++prompts > 1) return host::Answer::Refused;
    if (place >= DisksOf(mistake_.wanted).size()) return host::Answer::Refused;
    course.ChangeDisk(id == AskRightDisk ? DisksOf(mistake_.wanted)[place] : Offered(place));
    return host::Answer::Consented;
  }

  const Mistake mistake_;
  bool hasStarted_ = false;
};

std::vector<Mistake> EveryMistake() {
  std::vector<Mistake> all;
  for (std::size_t wanted = 0; wanted < kSets; ++wanted) {
    for (std::size_t other = 0; other < kSets; ++other) {
      for (std::size_t place = 0; place < DisksOf(wanted).size(); ++place) {
        for (std::size_t disk = 0; disk < DisksOf(other).size(); ++disk) {
          if (wanted == other && place == disk) continue;
          all.push_back({wanted, place, other, disk});
          if (place == 0) all.push_back({wanted, place, other, disk, true});
        }
      }
    }
  }
  return all;
}

TEST(MixedDisks, AreAskedForAgainOrRefused) {
  std::map<std::size_t, MediumFiles> whole;
  for (std::size_t set = 0; set < kSets; ++set) {
    MixedRestore restore(set);
    ASSERT_TRUE(restore.course.ReportedSuccess() && restore.prompts == 0) << kOrigins[set].name;
    whole[set] = restore.course.HostFiles();
  }
  int prompted = 0;
  int restored = 0;
  int refused = 0;
  const std::vector<Mistake> mistakes = EveryMistake();
  for (const Mistake& mistake : mistakes) {
    SCOPED_TRACE(testing::Message() << mistake);
    MixedRestore restore(mistake);
    const bool succeeded = restore.course.ReportedSuccess();
    EXPECT_TRUE(restore.course.HostFiles() == (succeeded ? whole[mistake.wanted] : restore.course.before));
    EXPECT_TRUE(restore.prompts > 0 || !mistake.IsVisible()) << "no prompt for the right disk";
    EXPECT_TRUE(succeeded || !restore.course.person.Messages().empty());
    prompted += restore.prompts > 0 ? 1 : 0;
    (succeeded ? restored : refused) += 1;
  }
  std::cout << "disks of other sets or places: " << mistakes.size() << "; asked for the right one " << prompted
            << ", then restored " << restored << ", refused " << refused << "\n";
  EXPECT_TRUE(restored > 0 && refused > 0);
}

/// Disks that come, before the right one, when disk `place` is asked for.
struct Slip {
  std::size_t place;
  Places disks;
  bool givesUp = false;  ///< then, instead of changing the disk at last
};

/// A backup to three disks, whose operator has them in a box.
class SlippingBackup {
 public:
  SlippingBackup(const Slip& slip, const Disks& box) : course(kMaking[0]), disks(box), slip_(slip) {
    course.person.messageHabit = [this](base::MessageId id) { return Answer(id); };
    course.ChangeDisk(disks[0]);
    course.Travel();
    Take(inDrive_);
  }

  Course course;
  Disks disks;
  std::size_t prompts = 0;

 private:
  void Take(std::size_t disk) {
    disks[inDrive_] = course.disk.Tree("A:\\");
    course.ChangeDisk(disks[disk]);
    inDrive_ = disk;
  }
  host::Answer Answer(base::MessageId id) {
    if (id != AskNextBackupDisk) return host::Answer::Consented;
    ++prompts;
    const std::size_t wanted = course.calls.CountOf("Shell", "CopyWithProgress");
    const bool slips = wanted == slip_.place && !slip_.disks.empty();
    if (wanted == slip_.place && !slips && slip_.givesUp) return host::Answer::Refused;
    const std::size_t next = slips ? slip_.disks.front() : wanted;
    if (slips) slip_.disks.pop_front();
    if (next != inDrive_) Take(next);
    return host::Answer::Consented;
  }

  Slip slip_;
  std::size_t inDrive_ = 0;
};

const Slip kSlips[] = {
    {1, {0}},    {1, {0, 0, 0}}, {2, {1}},       {2, {1, 1}},    {2, {0}},
    {2, {0, 1}}, {2, {1, 0, 0}}, {1, {0}, true}, {2, {1}, true}, {2, {0, 0}, true},
};

TEST(MixedDisks, ADiskOfThisRunIsNeverErased) {
  const Disks& made = DisksOf(0);
  const Disks kBoxes[] = {Disks(made.size()), DisksOf(1)};  // blank ones, and those of an older set
  int backups = 0;
  std::size_t askedAgain = 0;
  for (const Disks& box : kBoxes) {
    for (const Slip& slip : kSlips) {
      SCOPED_TRACE(testing::Message() << "disk " << slip.place + 1 << ", " << slip.disks.size() << " slips");
      SlippingBackup backup(slip, box);
      ++backups;
      EXPECT_EQ(backup.course.ReportedSuccess(), !slip.givesUp);
      const std::size_t written = slip.givesUp ? slip.place : made.size();
      for (std::size_t i = 0; i < written; ++i) EXPECT_TRUE(backup.disks[i] == made[i]) << "disk " << i + 1;
      const std::size_t again = slip.disks.size();
      EXPECT_EQ(backup.prompts, again + (slip.givesUp ? slip.place : made.size() - 1));
      askedAgain += again;
    }
  }
  std::cout << "disks not changed: " << backups << " backups, asked again " << askedAgain << " times, erased 0\n";
}

}  // namespace
}  // namespace faults
