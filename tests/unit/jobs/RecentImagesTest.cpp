// Images of recent studies: what is copied, and what a fault costs.
#include "jobs/RecentImages.h"

#include "unit/Station.h"

namespace {

using enum base::MessageId;

void CollectImages(JobStation& station) {
  jobs::CopyRecentImages(station.tools, station.application.paths, station.host.components, JobStation::kStaging, 7);
}

TEST(RecentImages, FaultsCostOnlyWhatTheyConcern) {
  const std::tuple<Arrangement, Names, const char*> faults[] = {
      {Fails("StudyDatabaseQuery", "OpenQuery"), {}, "list of recent images"},
      {Fails("StudyDatabaseQuery", "FieldValue", 2), {"Image\\1.ddo"}, "A row of the list"},
      {Fails("FileSystem", "CopyTo", 2), {"Image\\1.ddo"}, "Not copied: C:\\Tarsus\\Image\\2.ddo"}};
  for (const auto& [arrange, staged, warning] : faults) {
    SCOPED_TRACE(warning);
    JobStation station;
    for (const char* const path : {"C:\\Tarsus\\Image\\1.ddo", "C:\\Tarsus\\Image\\2.ddo"}) {
      station.host.Told().studies["SELECT RIGHT(URL,LEN(URL)-7)"].rows.push_back({path, ""});
      station.host.disk.Write(path, "x");
    }
    arrange(station.host);
    CollectImages(station);
    EXPECT_EQ(station.Staged(), staged);
    EXPECT_TRUE(station.WasWarnedOf(warning));
    EXPECT_EQ(station.host.messageLoop.yields, staged.empty() ? 0 : 2) << "one for each row";
  }
}

TEST_F(JobTest, ImagesNeedTheirPathEntry) {
  host.qx32.pathTable.erase("Image");
  host.person.ExpectMessage(PathEntryUnreadable);
  CollectImages(*this);
  EXPECT_TRUE(host.Told().statements.empty());
  host.qx32.pathTable["Image"] = "\\";  // no folder that could stand in a path
  host.Told().studies["SELECT RIGHT(URL,LEN(URL)-7)"].rows.push_back({"C:\\Tarsus\\Image\\1.ddo", ""});
  CollectImages(*this);
  EXPECT_TRUE(WasWarnedOf("Not copied: C:\\Tarsus\\Image\\1.ddo"));
}

}  // namespace
