// What a maintenance log is collected from: script, images, study list, client archives.
#include "maintenance/ClientLogs.h"
#include "maintenance/Collectors.h"
#include "maintenance/RecentImages.h"
#include "maintenance/StudyList.h"
#include "unit/backup/JobFixture.h"

namespace {

constexpr const char* kImageQuery =
    "SELECT RIGHT(URL,LEN(URL)-7),STUDY_DATETIME FROM T_TSTUDY INNER JOIN T_TDATA_FILE ON T_TSTUDY.STUDY_SEQ = "
    "T_TDATA_FILE.STUDY_SEQ WHERE URL LIKE '%.ddo' AND STUDY_DATETIME >= DATEADD(day,-7,GETDATE())";

TEST_F(JobTest, ScriptIsToldThePhaseTheFoldersAndTheRange) {
  application.state.CollectImages = 1;
  application.state.ImageRangeDays = 30;
  maintenance::Collectors room(application, definitions);
  room.RunMaintenanceScript(backup::ScriptPhase::BeforePacking);
  ASSERT_EQ(host.processes.started.size(), 1u);
  EXPECT_EQ(host.processes.started[0].commandLine,
            "cscript \"C:\\Tarsus\\System\\Maintenance.js\" 2 \"C:\\Work\\\" \"C:\\Tarsus\\User\\\" 1 30");
  EXPECT_TRUE(host.processes.started[0].waitedFor);
  host.disk.Remove("C:\\Windows\\System32\\cscript.exe");
  room.RunMaintenanceScript(backup::ScriptPhase::AfterPacking);
  EXPECT_TRUE(host.person.Messages().empty());
}

struct Image {
  const char* path;  ///< as the database has it
  bool exists;
  const char* staged;  ///< path below the staging folder; nullptr when it stays
};

const Image kImages[] = {
    {"C:\\Tarsus\\Image\\1\\2\\a.ddo", true, "Image\\1\\2\\a.ddo"},
    {"\\\\ARCHIVE\\Image\\b.ddo", false, nullptr},
    {"C:\\Tarsus\\IMAGE\\c.ddo", true, nullptr},
    {"C:\\Tarsus\\Image\\gone.ddo", false, nullptr},
    {"C:\\Other\\d.ddo", true, nullptr},
    {"C:\\Tarsus\\Image\\e.ddo", true, "Image\\e.ddo"},
};

TEST(RecentImages, AreCopiedAsTheyStandBelowTheImageFolder) {
  for (const char* const entry : {"C:\\Tarsus\\Image", " C:\\Tarsus\\Image\\ "}) {
    JobStation station;
    station.host.qx32.pathTable["Image"] = entry;
    station.application.state.ImageRangeDays = 7;
    std::map<std::string, std::string> expected;
    auto& rows = station.host.Told().studies[kImageQuery].rows;
    for (const Image& image : kImages) {
      rows.push_back({image.path, "2012-03-14"});
      if (image.exists) station.host.disk.Write(image.path, image.path);
      if (image.staged != nullptr) expected[image.staged] = image.path;
    }
    station.host.disk.Write("C:\\Work\\Image\\e.ddo", "of an earlier try");
    maintenance::CopyRecentImages(station.application, JobStation::kStaging);
    EXPECT_EQ(station.host.disk.Tree("C:\\Work"), expected);
    for (const Image& image : kImages) {
      EXPECT_EQ(station.host.disk.Read(image.path), image.exists ? image.path : "");
      const bool isRemote = std::string(image.path).starts_with("\\\\");
      const bool isLost = image.staged == nullptr && !isRemote;
      EXPECT_EQ(station.WasWarnedOf(std::string("Not copied: ") + image.path), isLost) << image.path;
    }
    EXPECT_GE(station.host.messageLoop.yields, static_cast<int>(std::size(kImages)));
  }
}

struct ImageFault {
  const char* name;
  const char* contract;
  const char* method;
  Names staged;
  const char* warning;
};

const ImageFault kImageFaults[] = {
    {"no component", "ComponentFactory", "CreateStudyDatabaseQuery", {}, "list of recent images"},
    {"query", "StudyDatabaseQuery", "OpenQuery", {}, "list of recent images"},
    {"count", "StudyDatabaseQuery", "RecordCount", {}, "list of recent images"},
    {"second row", "StudyDatabaseQuery", "FieldValue", {"Image\\1.ddo"}, "A row of the list"},
    {"second copy", "FileSystem", "CopyTo", {"Image\\1.ddo"}, "Not copied: C:\\Tarsus\\Image\\2.ddo"},
};

TEST(RecentImages, FaultsCostOnlyWhatTheyConcern) {
  for (const ImageFault& fault : kImageFaults) {
    SCOPED_TRACE(fault.name);
    JobStation station;
    for (const char* const path : {"C:\\Tarsus\\Image\\1.ddo", "C:\\Tarsus\\Image\\2.ddo"}) {
      station.host.Told().studies["SELECT RIGHT(URL,LEN(URL)-7)"].rows.push_back({path, ""});
      station.host.disk.Write(path, "x");
    }
    station.host.calls.FailFrom(fault.contract, fault.method, fault.staged.empty() ? 1 : 2);
    maintenance::CopyRecentImages(station.application, JobStation::kStaging);
    EXPECT_EQ(station.Staged(), fault.staged);
    EXPECT_TRUE(station.WasWarnedOf(fault.warning));
  }
}

TEST_F(JobTest, ImagesNeedTheirPathEntry) {
  host.qx32.pathTable.erase("Image");
  host.person.ExpectMessage(60326);
  maintenance::CopyRecentImages(application, kStaging);
  EXPECT_TRUE(host.Told().statements.empty());
}

TEST_F(JobTest, EnsureFolderMakesWhatIsMissingAndReportsWhatItCannot) {
  EXPECT_EQ(maintenance::EnsureFolder(application, "C:\\Work\\a\\b\\c\\"), app::kDone);
  EXPECT_TRUE(host.disk.IsFolder("C:\\Work\\a\\b\\c"));
  EXPECT_EQ(maintenance::EnsureFolder(application, "C:\\Work\\a"), app::kDone);
  EXPECT_EQ(maintenance::EnsureFolder(application, ""), app::kDone);
  host.disk.Write("C:\\Work\\file", "x");
  EXPECT_EQ(maintenance::EnsureFolder(application, "C:\\Work\\file\\a\\b"), app::kFailed);
  EXPECT_EQ(maintenance::EnsureFolder(application, "Q:\\a"), app::kFailed);
}

TEST(StudyList, FallsBackToTheSystemDriveWithoutADesktop) {
  JobStation station;
  station.application.state.ProtectPersonalInfo = true;
  station.host.shell.desktop.clear();
  EXPECT_EQ(maintenance::ExportStudyList(station.application), app::kDone);
  EXPECT_EQ(station.host.disk.Read("C:\\T_TSTUDY.txt"), "studies without names");
  EXPECT_EQ(station.Staged(), Names{"T_TSTUDY.txt"});
  EXPECT_FALSE(station.host.disk.IsFile("C:\\Tarsus\\Temp\\StudyDB\\BCP\\T_TSTUDY.txt"));
}

// An archive that cannot be unpacked is consumed like the others, so that it does not come again for ever.
TEST_F(JobTest, BrokenClientArchivesDoNotStopTheImport) {
  host.disk.Write("C:\\Tarsus\\Update\\Maintenance_A.cab", "no cabinet");
  host.disk.Write("C:\\Tarsus\\Update\\Maintenance_B.cab",
                  fakes::MakeCabinet({{"Maintenance_B_120314101010\\c.log", "x"}}));
  EXPECT_EQ(maintenance::ImportClientLogs(application), app::kDone);
  EXPECT_EQ(NamesBelow("C:\\Tarsus\\ClientLog"), Names{"Maintenance_B_120314101010\\c.log"});
  EXPECT_TRUE(NamesBelow("C:\\Tarsus\\Update").empty());
  EXPECT_TRUE(WasWarnedOf("Exit code 1: cabarc -r -p X Maintenance_A.cab"));
}

}  // namespace
