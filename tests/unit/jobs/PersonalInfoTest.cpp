// The host's filter: what it is handed, and which of its answers counts.
#include "jobs/PersonalInfo.h"

#include "unit/Station.h"

namespace {

using base::Result;
using enum base::MessageId;

struct Filtering {
  const char* name;
  std::string line;
  Names calls;
  std::string range = {};  ///< contents of range.txt
  Result result = Result::Done;
};

const Filtering kFilterings[] = {
    {"no key", "", {}},
    {"empty value", "PersonalInfo=", {"files|C:\\Tarsus\\"}},
    {"below the root", "PersonalInfo=Report", {"files|C:\\Tarsus\\Report"}},
    {"images of all days", "PersonalInfo=%Image%\\a", {"images|C:\\Tarsus\\Image\\a"}},
    {"images of some days", "PersonalInfo=%Image%\\a", {"images|C:\\Tarsus\\Image\\a"}, "-30"},
    {"the last variable holds on",
     "PersonalInfo=%Image%\\a;Report;%Data%\\b;Menu",
     {"images|C:\\Tarsus\\Image\\a", "images|C:\\Tarsus\\Report", "files|C:\\Tarsus\\Data\\b",
      "files|C:\\Tarsus\\Menu"}},
    {"unknown variable", "PersonalInfo=Menu;%X%\\a;Report", {"files|C:\\Tarsus\\Menu"}, "", Result::Failed},
};

TEST(PersonalInfo, HandsEveryItemToTheFilter) {
  for (const Filtering& each : kFilterings) {
    SCOPED_TRACE(each.name);
    JobStation station;
    station.job.maintenance = {.CollectImages = each.range.empty() ? 0 : 1, .ImageRangeDays = 30};
    station.host.Told().filterAnswers = {0, 5, 6};
    for (const std::string folder : {"Report", "Data\\b", "Image\\a"})
      station.host.disk.MakeFolders("C:\\Tarsus\\" + folder);
    EXPECT_EQ(station.LoadSection("MAINTENANCE", {each.line}), Result::Done);
    if (each.result != Result::Done) station.host.person.ExpectMessage(PathEntryUnreadable);
    std::int32_t code = 77;
    EXPECT_EQ(jobs::ApplyPersonalInfoList(station.job, "MAINTENANCE", code), each.result);
    EXPECT_EQ(station.host.Told().filterCalls, each.calls);
    EXPECT_EQ(station.host.disk.Read("C:\\Tarsus\\Image\\range.txt"), each.range);
    EXPECT_EQ(code, each.calls.size() > 1 ? 5 : 0) << "the first that is not 0";
  }
}

TEST(PersonalInfo, NeedsTheFilterItsListAndTheRange) {
  const std::pair<Arrangement, const char*> faults[] = {
      {Fails("FileSystem", "CreateText"), "Image range not written: C:\\Tarsus\\Image\\a: "},
      {NoEntry("DeleteListDB"), "no list of patients: path-table entry \"DeleteListDB\": "},
      {Fails("ComponentFactory", "CreatePersonalInfoFilter"), "no list of patients: the personal-information filter"}};
  for (const auto& [fault, line] : faults) {
    JobStation station;
    station.job.maintenance = {.CollectImages = 1};
    EXPECT_EQ(station.LoadSection("MAINTENANCE", {"PersonalInfo=%Image%\\a"}), Result::Done);
    fault(station.host);
    std::int32_t code = 0;
    EXPECT_EQ(jobs::ApplyPersonalInfoList(station.job, "MAINTENANCE", code), Result::Failed);
    EXPECT_TRUE(station.host.Told().filterCalls.empty());
    EXPECT_TRUE(station.WasWarnedOf(line)) << line;
  }
}

}  // namespace
