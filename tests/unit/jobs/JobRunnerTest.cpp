// Running a section, from its items to its archive.
#include "jobs/JobRunner.h"

#include "unit/Station.h"

namespace {

using enum base::MessageId;

const std::string kUnknown = "CommonFile=%X%\\a";
constexpr const char* kDump = "BatFile=%System%\\DumpPatients.bat";

struct SectionRun {
  const char* name;
  bool maintenance;
  Names lines;
  int kinds;  ///< the personal-information filter's counts too, unless it fails
  Arrangement arrange = Nothing;
};

const SectionRun kRuns[] = {
    {"batch files do not count", false, {kDump, "Folder=User", "RegFile="}, 3},
    {"nothing gathered", false, {"Folder=None", "PersonalInfo=None"}, 0},
    {"failure abandons it", false, {"Folder=User", kUnknown}, 0},
    {"personal info fails", false, {"Folder=User"}, 0, NoEntry("DeleteListDB")},
    {"archive not made", false, {"Folder=User"}, 0, Gone(kArchiver)},
    {"maintenance counts batch files", true, {kDump, "Folder=User"}, 3},
    {"maintenance survives a failure", true, {"Folder=User", kUnknown}, 1, NoEntry("DeleteListDB")},
    {"maintenance without anything to pack", true, {"Folder=None"}, 0},
};

// Nothing may leak into the next category.
TEST(JobRunner, SectionsAreGatheredAndPacked) {
  for (const SectionRun& each : kRuns) {
    SCOPED_TRACE(each.name);
    JobStation station;
    station.host.disk.MakeFolders(JobStation::kStaging + std::string("BCP"));
    if (each.maintenance) station.job.maintenance.emplace();
    station.host.Told().filterAnswers = {5};
    EXPECT_TRUE(station.LoadSection("USER_BACKUP", each.lines).IsDone());
    each.arrange(station.host);
    if (each.lines.back() == kUnknown) station.host.person.ExpectMessage(PathEntryUnreadable);
    const jobs::SectionResult result = jobs::RunSectionItems(station.job, "USER_BACKUP", "UserData");
    EXPECT_EQ(result.kinds, each.kinds);
    EXPECT_EQ(result.archive.name, each.kinds > 0 ? "UserData.cab" : "");
    EXPECT_EQ(result.PersonalInfoResult, station.host.Told().filterCalls.empty() ? 0 : 5);
    EXPECT_EQ(station.Staged(), each.kinds > 0 ? Names{"CABFILE\\UserData.cab"} : Names{});
    // A maintenance log has the host's script around it, the last time after packing.
    EXPECT_EQ(station.host.processes.CountStarted("cscript "), !each.maintenance ? 0 : each.kinds > 0 ? 3 : 2);
  }
}

}  // namespace
