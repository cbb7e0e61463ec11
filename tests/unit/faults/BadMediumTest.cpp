// A medium that takes everything, says that all is well, and keeps something else: no set is made of it.
#include <algorithm>
#include <iostream>

#include "fakes/PowerCut.h"
#include "unit/faults/Oracle.h"

namespace faults {
namespace {

using enum base::MessageId;
using fakes::MediumFlaw;

constexpr const char* kDescriptor = "BackupInfo.ini";

/// Files that a flawless backup leaves at its destination; of floppies, on any of the disks.
Names FilesOf(const Route& route) {
  Names names;
  for (const MediumFiles& medium : FlawlessSet(route))
    for (const auto& [name, bytes] : medium)
      if (std::ranges::find(names, name) == names.end()) names.push_back(name);
  return names;
}

/// Whether one is there, or comes back when the power goes now. An empty one is none.
bool CanHaveDescriptor(const fakes::PowerCut& cut) {
  return std::ranges::any_of(cut.Now(), [](const fakes::Remains& remains) {
    const auto found = remains.files.find(kDescriptor);
    return found != remains.files.end() && !found->second.empty();
  });
}

class BadMedium : public testing::TestWithParam<const char*> {};

TEST_P(BadMedium, IsToldAndKeepsNoSet) {
  const Route& route = RouteNamed(GetParam());
  const Flawless flawless(route);
  int tried = 0;
  for (const std::string& name : FilesOf(route)) {
    for (const MediumFlaw flaw : {MediumFlaw::OtherBytes, MediumFlaw::EndsInTheMiddle}) {
      SCOPED_TRACE(name + (flaw == MediumFlaw::OtherBytes ? " has other bytes" : " cannot be read"));
      Course course(route);
      course.disk.Spoil(route.folder + name, flaw);
      const fakes::PowerCut cut(course.disk, route.folder);
      course.Travel();
      ++tried;
      EXPECT_EQ(Judge(course, flawless), "");
      EXPECT_FALSE(course.ReportedSuccess());
      EXPECT_TRUE(course.person.WasShown(BackupNotWritten) ||
                  (route.UsesFloppies() && course.person.WasShown(MaintenanceDriveError)));
      EXPECT_FALSE(CanHaveDescriptor(cut));
      EXPECT_TRUE(course.HostFiles() == course.before) << "logs were deleted";
      EXPECT_FALSE(course.IsBackupDated());
    }
  }
  std::cout << route.name << ": " << tried << " files that the medium spoils\n";
}

INSTANTIATE_TEST_SUITE_P(All, BadMedium, testing::Values("Folder", "OlderSet", "Medium", "Floppies"),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
}  // namespace faults
