// Drive states and the preparation of media. The removable drive A: is a folder of the test run.
#include <cstdlib>
#include <map>

#include "HostFixture.h"

namespace {

class Media : public HostTest {
 protected:
  std::int32_t Status(const std::string& drive) {
    const auto media = factory_.CreateMediaComponent();
    media->SetUp("media.exe /x");
    return media->GetDriveStatus(drive);
  }
  std::int32_t Prepare(const std::string& drive) {
    return factory_.CreateMediaComponent()->PrepareDrive(drive, "C:\\", 0, 0);
  }
};

TEST_F(Media, ReportsDriveStates) {
  const std::map<std::int32_t, std::vector<std::string>> states = {
      {3, {"C", "C:", "c:\\", "C:\\Host\\System\\", "C:\\not\\there", "A", "A:\\Folder"}},
      {2, {"Z:\\proc\\sys"}},
      {0, {"X", "X:\\Folder"}},
      {-1, {"", "1", "no drive", "\\\\nowhere\\share"}}};
  for (const auto& [status, drives] : states) {
    for (const std::string& drive : drives) EXPECT_EQ(Status(drive), status) << drive;
  }
}

TEST_F(Media, ReportsAMissingMedium) {
  {
    // The folder behind the drive: Z: is the root of the machine's file system.
    const Without medium(Path("Z:" + std::string(std::getenv("WINEPREFIX")) + ".medium"));
    EXPECT_EQ(Status("A"), 1);
    EXPECT_EQ(Status("A:\\Folder"), 1);
    EXPECT_EQ(Prepare("A"), -1);
  }
  EXPECT_EQ(Status("A"), 3);
}

TEST_F(Media, EmptiesAndLabelsRemovableMediaOnlyAndLeavesNothingElse) {
  WriteFile("A:\\BackupInfo.ini", "x");
  WriteFile("A:\\Deep\\er\\Übung.cab", "x");
  SetFileAttributesW(L"A:\\BackupInfo.ini", FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(Prepare("A:"), 0);
  WriteFile("A:\\kept.txt", "x");
  EXPECT_EQ(Status("A"), 3);
  EXPECT_TRUE(Exists("A:\\kept.txt"));
  // Where Wine keeps a label; what it answers about a volume is from before.
  EXPECT_EQ(ReadFile("A:\\.windows-label"), "TARSUS\n");
  EXPECT_EQ(std::distance(fs::directory_iterator("A:\\"), {}), 2);

  EXPECT_EQ(Prepare("C"), -1);
  EXPECT_TRUE(Exists(kDatabase));
  EXPECT_EQ(Prepare("X"), -1);
  EXPECT_EQ(Prepare(""), -1);
}

}  // namespace
