// What strangers leave where the program works: programs with the names of its tools, and folders with the names of its
// own.
#include <iostream>
#include <set>
#include <utility>

#include "unit/faults/Oracle.h"

namespace faults {
namespace {

constexpr const char* kPlantedNames[] = {"CMD.exe",   "CMD.com",   "cabarc.exe", "cabarc.bat",  "Reg.exe",
                                         "xcopy.com", "xcopy.bat", "copy.bat",   "cscript.exe", "cscript.bat"};

/// A workstation where somebody puts such programs into every folder that is made current, as soon as it is.
class Planter {
 public:
  explicit Planter(Course& course) : course_(course) {
    course.disk.afterEntering = [this](const std::string& folder) { Plant(folder); };
  }

  const std::set<std::string>& Folders() const { return folders_; }
  /// Those that were started.
  const Names& Ran() const { return ran_; }
  /// The programs of this folder work from now on wherever they come from.
  void Register(const std::string& folder) {
    for (const char* name : kPlantedNames) {
      Install(folder + "\\" + name);
      course_.disk.Remove(folder + "\\" + name);
    }
  }

 private:
  void Plant(const std::string& folder) {
    if (folder == fakes::kProgramFolder || !folders_.insert(folder).second) return;
    for (const char* name : kPlantedNames) Install(folder + "\\" + name);
  }
  void Install(const std::string& path) {
    course_.processes.Install(path, [this, path](fakes::Disk&, const fakes::Words&) {
      ran_.push_back(path);
      return 0u;
    });
  }

  Course& course_;
  std::set<std::string> folders_;
  Names ran_;
};

class PlantedPrograms : public testing::TestWithParam<std::size_t> {};

TEST_P(PlantedPrograms, AreNotStarted) {
  Course course(Routes()[GetParam()]);
  const Planter planter(course);
  course.Travel();
  EXPECT_EQ(planter.Ran(), Names());
  EXPECT_TRUE(course.ReportedSuccess());
  EXPECT_GT(planter.Folders().size(), 2u);
  std::cout << course.route.name << ": " << planter.Folders().size() << " folders with " << std::size(kPlantedNames)
            << " planted programs each\n";
}

INSTANTIATE_TEST_SUITE_P(All, PlantedPrograms, testing::Range<std::size_t>(0, Routes().size()),
                         [](const auto& test) { return Routes()[test.param].name; });

/// A pile whose joined archive holds programs besides its archives.
std::vector<MediumFiles> PileWithPrograms(const std::vector<MediumFiles>& pile) {
  std::string joined;
  for (std::size_t i = 0; i < pile.size(); ++i) joined += pile[i].at("FDDivide00" + std::to_string(i + 1));
  fakes::CabinetMembers members = fakes::ReadCabinetMembers(joined).value();
  for (const char* name : kPlantedNames) {
    members.push_back({std::string(name) + ".tmp", "planted"});
    members.push_back({name, "planted"});
  }
  joined = fakes::MakeCabinetOf(members);
  constexpr std::size_t kPiece = 1'400'000;
  std::vector<MediumFiles> changed = pile;
  for (std::size_t i = 0; i < pile.size(); ++i)
    changed[i]["FDDivide00" + std::to_string(i + 1)] = joined.substr(i * kPiece, kPiece);
  return changed;
}

// The set is restored or refused; its programs stay where they are.
TEST(PlantedInASet, DoNotComeOutOfAJoinedArchive) {
  Course course(RouteNamed("RestoreFloppies"));
  course.pile = PileWithPrograms(course.pile);
  course.ChangeDisk(course.pile.front());
  Planter planter(course);
  for (const std::string below : {"", "\\CABFILE"}) planter.Register(kStagingFolder + below);
  course.disk.afterEntering = nullptr;
  bool cameOut = false;
  course.disk.afterChange = [&] {
    for (const char* name : kPlantedNames)
      cameOut = cameOut || course.disk.IsFile(kStagingFolder + std::string("\\") + name);
  };
  course.Travel();
  EXPECT_EQ(planter.Ran(), Names());
  EXPECT_FALSE(cameOut);
}

class StrangersFolder : public testing::TestWithParam<const char*> {};

// The name of the work folder is taken: the program waits for another one, and touches nothing in there.
TEST_P(StrangersFolder, IsNotUsed) {
  Course course(RouteNamed(GetParam()));
  const std::string stranger = std::string(kStagingFolder) + "\\stranger.txt";
  course.disk.Write(stranger, "not ours");
  course.messageLoop.onYield = [&, paused = 0]() mutable {
    if (std::exchange(paused, course.messageLoop.paused) != paused) course.clock.now.second = 13;
  };
  bool wasUsed = false;
  course.disk.afterChange = [&] { wasUsed = wasUsed || course.disk.Tree(kStagingFolder).size() != 1; };
  course.Travel();
  EXPECT_TRUE(course.ReportedSuccess());
  EXPECT_FALSE(wasUsed);
  EXPECT_EQ(course.disk.Read(stranger), "not ours");
}

INSTANTIATE_TEST_SUITE_P(All, StrangersFolder,
                         testing::Values("Folder", "Floppies", "RestoreFolder", "RestoreFloppies", "ProtectedBundle"),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
}  // namespace faults
