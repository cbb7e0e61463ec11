// Ten thousand sets, each damaged in one place: whatever a restore would refuse or get wrong is found, and no sound set
// is called bad. What is sound is told without the checker: by the bytes that were packed, and by a second reader of
// descriptors.
#include <gtest/gtest.h>

#include "base/Text.h"
#include "fakes/Cabinet.h"
#include "set-check/MemorySet.h"
#include "set-check/SetCheck.h"

namespace {

using setcheck::Restorable;

std::string Value(const std::string& file, const std::string& key) {
  for (std::string line : base::Split(file, '\n')) {
    if (line.ends_with('\r')) line.pop_back();
    if (line.starts_with(key + "=")) return base::Trim(line.substr(key.size() + 1));
  }
  return {};
}

/// Whether a restore offers all of this set, and gets out of it what went in.
bool IsRight(const Files& set, const Files& original) {
  const auto found = set.find(kDescriptor);
  if (found == set.end()) return false;
  const std::string& descriptor = found->second;
  if (Value(descriptor, "AppType") != "Tarsus" || !Value(descriptor, "AppVersion").starts_with("3.") ||
      Value(descriptor, "Date").empty()) {
    return false;
  }
  return std::ranges::all_of(kKinds, [&](const std::string& kind) {
    const auto archive = set.find(kind + ".cab");
    return Value(descriptor, kind) == "V2.1" && archive != set.end() && archive->second == original.at(kind + ".cab");
  });
}

class Sweep : public testing::Test {
 protected:
  Sweep() { EXPECT_TRUE(workstation_.Open(system_).IsDone()); }

  std::size_t Random(std::size_t below) { return random_() % below; }

  const std::string& AnyFile(const Files& set) {
    return std::next(set.begin(), std::ptrdiff_t(Random(set.size())))->first;
  }
  std::string AnyArchive() { return kKinds[Random(kKinds.size())] + ".cab"; }

  /// One damage, or a change that costs nothing.
  void Change(Files& set) {
    std::string& bytes = set[AnyFile(set)];
    const std::size_t at = Random(bytes.size());
    switch (Random(10)) {
      case 0:
      case 1:
      case 2:
        bytes[at] = static_cast<char>(bytes[at] ^ 1 << Random(8));
        break;
      case 3:
        bytes.resize(at);
        break;
      case 4:
        bytes.replace(at, 1 + Random(600), Random(600), '\0');
        break;
      case 5:
        bytes.insert(at, bytes, Random(bytes.size()), 1 + Random(50));
        break;
      case 6:
        std::swap(set[AnyArchive()], set[AnyArchive()]);
        break;
      case 7:
        set.erase(AnyFile(set));
        break;
      case 8:
        set[AnyArchive()] = Random(2) == 0 ? stranger_ : other_.at(AnyArchive());
        break;
      default:
        set["Readme.txt"] = "beside the set";
        set[kDescriptor] = base::Replaced(set[kDescriptor], "\r\n", "\n") + "Further=1\n";
    }
  }

  TemporaryFolder folder_;
  setcheck::NoHost noHost_;
  MemoryFolder system_{MakeSystem()};
  setcheck::Workstation workstation_{noHost_};
  setcheck::SetCheck check_{noHost_, &workstation_, {{"Tarsus", "3.00"}, false}, [](std::uint64_t) {}};
  const Files original_ = MakeSet(1);
  const Files other_ = MakeSet(50);
  const std::string stranger_ = fakes::MakeCabinet({{"Elsewhere\\a.txt", "not of this set"}});
  std::mt19937 random_{1};
};

TEST_F(Sweep, FindsEveryDamageAndCallsNoSoundSetBad) {
  constexpr int kCases = 10'000;
  int sound = 0;
  for (int i = 0; i < kCases; ++i) {
    Files set = original_;
    Change(set);
    // Nothing tells an archive of another set of the same version from the right one.
    const bool exchanged = std::ranges::any_of(kKinds, [&](const std::string& kind) {
      const auto archive = set.find(kind + ".cab");
      return archive != set.end() && archive->second == other_.at(kind + ".cab");
    });
    if (exchanged) continue;
    const bool right = IsRight(set, original_);
    sound += right ? 1 : 0;
    MemoryFolder folder(set);
    const setcheck::SetReport report = check_.Check(folder);
    ASSERT_EQ(report.Verdict() == Restorable::Wholly, right) << "case " << i << '\n' << setcheck::InWords(report);
  }
  EXPECT_GT(sound, kCases / 20);
  EXPECT_LT(sound, kCases / 3);
}

class FloppySweep : public Sweep {
 protected:
  /// The worst of what the piles are that these disks make.
  Restorable Judge(const std::vector<Files>& disks) {
    std::vector<setcheck::Disk> read;
    for (const Files& disk : disks) {
      read.push_back(setcheck::ReadDisk(noHost_, std::make_unique<MemoryFolder>(disk)));
    }
    Restorable worst = Restorable::Wholly;
    for (const setcheck::Pile& pile : setcheck::SortDisks(std::move(read), "pile")) {
      worst = std::max(worst, check_.Check(pile).Verdict());
    }
    return worst;
  }
};

TEST_F(FloppySweep, FindsDisksThatAreMixedMissingDoubledOrDamaged) {
  constexpr std::size_t kReport = 2'900'000;  // for three disks
  const std::vector<Files> pile = MakePile(MakeSet(1, kReport));
  const std::vector<Files> alike = MakePile(MakeSet(2, kReport));
  ASSERT_EQ(pile.size(), 3u);
  EXPECT_EQ(Judge(pile), Restorable::Wholly);
  EXPECT_EQ(Judge({pile[2], pile[0], pile[1]}), Restorable::Wholly) << "disks lie as they lie";
  for (std::size_t i = 0; i < pile.size(); ++i) {
    std::vector<Files> disks = pile;
    disks[i] = alike[i];
    EXPECT_EQ(Judge(disks), Restorable::NotAtAll) << "a disk of a set that was made alike: " << i;
    disks = pile;
    disks.erase(disks.begin() + std::ptrdiff_t(i));
    EXPECT_EQ(Judge(disks), Restorable::NotAtAll) << "missing: " << i;
    disks = pile;
    disks.push_back(pile[i]);
    EXPECT_EQ(Judge(disks), Restorable::NotAtAll) << "doubled: " << i;
    for (int k = 0; k < 12; ++k) {
      disks = pile;
      std::string& piece = disks[i].rbegin()->second;
      const std::size_t at = Random(piece.size());
      if (k % 4 == 0) {
        piece.resize(at);
      } else {
        piece[at] = static_cast<char>(piece[at] ^ 1 << Random(8));
      }
      EXPECT_EQ(Judge(disks), Restorable::NotAtAll) << "damaged: " << i << " at " << at;
    }
  }
}

/// A size that is a multiple of the pieces' declares a disk more, which holds a descriptor alone.
TEST_F(FloppySweep, TheSurplusDiskOfFullPiecesIsLawful) {
  std::vector<Files> pile;
  std::size_t size = 2'700'000;
  for (std::size_t last = 1; last > 0;) {
    pile = MakePile(MakeSet(1, size));
    last = pile.back().rbegin()->second.size();
    constexpr std::size_t kNear = 10'000;
    size = last < kNear ? size - last : size + backupset::kPieceSize - last;
    ASSERT_LT(size, 5'000'000u);
  }
  pile.back().erase(backupset::PieceName(static_cast<std::int32_t>(pile.size())));
  EXPECT_EQ(Judge(pile), Restorable::Wholly);
  pile[pile.size() - 2].rbegin()->second.pop_back();
  EXPECT_EQ(Judge(pile), Restorable::NotAtAll) << "the piece before it must be full";
}

}  // namespace
