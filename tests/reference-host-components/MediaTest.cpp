// Drive states and the preparation of media. The removable drive A: is a folder of the test run.
#include <cstdlib>
#include <map>

#include "HostFixture.h"
#include "operator/Desktop.h"

namespace {

using components::MediaComponent;

class Media : public HostTest {
 protected:
  std::int32_t Status(const std::string& drive) {
    const auto media = factory_.CreateMediaComponent();
    media->SetUp("media.exe /x");
    return static_cast<std::int32_t>(media->GetDriveStatus(drive));
  }
  base::Outcome Prepare(const std::string& drive) {
    return factory_.CreateMediaComponent()->PrepareDrive(drive, "C:\\", 0, 0);
  }
};

TEST_F(Media, ReportsDriveStates) {
  const std::map<std::int32_t, std::vector<std::string>> states = {
      {MediaComponent::kReady, {"C", "C:", "c:\\", "C:\\Host\\System\\", "C:\\not\\there", "A", "A:\\Folder"}},
      {MediaComponent::kNotWritable, {"Z:\\proc\\sys"}},
      {MediaComponent::kNoDrive, {"X", "X:\\Folder"}},
      {MediaComponent::kError, {"", "1", "no drive", "\\\\nowhere\\share"}}};
  for (const auto& [status, drives] : states) {
    for (const std::string& drive : drives) EXPECT_EQ(Status(drive), status) << drive;
  }
}

TEST_F(Media, ReportsAMissingMedium) {
  {
    // The folder behind the drive: Z: is the root of the machine's file system.
    const Fault gone = Altered(Path("Z:" + std::string(std::getenv("WINEPREFIX")) + ".medium"));
    EXPECT_EQ(Status("A"), MediaComponent::kNoMedium);
    EXPECT_EQ(Status("A:\\Folder"), MediaComponent::kNoMedium);
    EXPECT_EQ(Prepare("A"), Failed);
  }
  EXPECT_EQ(Status("A"), MediaComponent::kReady);
}

TEST_F(Media, TellsAMediumThatMustBePreparedFromNone) {
  const std::string device = "\"$WINEPREFIX/dosdevices/a::\"";
  const auto becomes = [&](std::int32_t status) {
    return endtoend::WaitUntil([&] { return Status("A") == status; }, 10000);
  };
  {
    // A device that can be read, and no file system on it. Wine has no program that could format it.
    const Fault gone = Altered(Path("Z:" + std::string(std::getenv("WINEPREFIX")) + ".medium"));
    endtoend::RunNative("truncate -s 1440K \"$WINEPREFIX.blank\" && ln -s \"$WINEPREFIX.blank\" " + device);
    EXPECT_TRUE(becomes(MediaComponent::kNotWritable));
    EXPECT_EQ(Prepare("A"), Failed);
    endtoend::RunNative("rm " + device);
    EXPECT_TRUE(becomes(MediaComponent::kNoMedium));
  }
  EXPECT_EQ(Status("A"), MediaComponent::kReady);
}

TEST_F(Media, EmptiesAndLabelsRemovableMediaOnlyAndLeavesNothingElse) {
  endtoend::RequireTestFolder("A:\\");
  WriteFile("A:\\BackupInfo.ini", "x");
  WriteFile("A:\\Deep\\er\\Übung.cab", "x");
  SetFileAttributesW(L"A:\\BackupInfo.ini", FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(Prepare("A:"), Done);
  WriteFile("A:\\kept.txt", "x");
  EXPECT_EQ(Status("A"), MediaComponent::kReady);
  EXPECT_TRUE(Exists("A:\\kept.txt"));
  // Where Wine keeps a label; what it answers about a volume is from before.
  EXPECT_EQ(ReadFile("A:\\.windows-label"), "TARSUS\n");
  EXPECT_EQ(std::distance(fs::directory_iterator("A:\\"), {}), 2);

  for (const char* drive : {"C", "X", ""}) EXPECT_EQ(Prepare(drive), Failed) << drive;
  EXPECT_TRUE(Exists(kDatabase));
}

}  // namespace
