// Drive states and the preparation of media. The removable drive A: is a folder of the test run.

#include <windows.h>

#include <cstdlib>

#include "HostFixture.h"
#include "common/Text.h"

namespace components_test {
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
  // What is in a folder, but for the label's file, which Wine keeps on the medium.
  static std::vector<std::string> Names(const std::string& folder) {
    std::vector<std::string> names;
    WIN32_FIND_DATAW entry = {};
    const HANDLE search = FindFirstFileW(reference::Utf16(folder + "*").c_str(), &entry);
    do {
      if (entry.cFileName[0] != L'.') names.push_back(reference::Utf8(entry.cFileName));
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    return names;
  }
};

// Takes the medium out of A: by renaming the folder behind the drive.
class MediumTakenOut {
 public:
  MediumTakenOut() { EXPECT_TRUE(MoveFileW(medium_.c_str(), away_.c_str())); }
  ~MediumTakenOut() { EXPECT_TRUE(MoveFileW(away_.c_str(), medium_.c_str())); }

 private:
  // Wine's own prefix, seen from inside: Z: is the root of the machine's file system.
  const std::wstring medium_ = L"Z:" + reference::Utf16(std::getenv("WINEPREFIX")) + L".medium";
  const std::wstring away_ = medium_ + L".away";
};

TEST_F(Media, ReportsDriveStates) {
  struct Case {
    const char* drive;
    std::int32_t status;
  };
  for (const Case& check : {Case{"C", 3},
                            {"C:", 3},
                            {"c:\\", 3},
                            {"C:\\Host\\System\\", 3},
                            {"C:\\not\\there", 3},
                            {"A", 3},
                            {"A:\\Folder", 3},
                            {"X", 0},
                            {"X:\\Folder", 0},
                            {"Z:\\proc\\sys", 2},
                            {"", -1},
                            {"1", -1},
                            {"no drive", -1},
                            {"\\\\nowhere\\share", -1}}) {
    EXPECT_EQ(Status(check.drive), check.status) << check.drive;
  }
}

TEST_F(Media, ReportsAMissingMedium) {
  {
    const MediumTakenOut out;
    EXPECT_EQ(Status("A"), 1);
    EXPECT_EQ(Status("A:\\Folder"), 1);
    EXPECT_EQ(Prepare("A"), -1);
  }
  EXPECT_EQ(Status("A"), 3);
}

TEST_F(Media, LeavesNothingOnTheMedium) {
  ASSERT_EQ(Prepare("A"), 0);
  WriteFile("A:\\kept.txt", "x");
  Status("A");
  EXPECT_EQ(Names("A:\\"), std::vector<std::string>{"kept.txt"});
}

TEST_F(Media, EmptiesAndLabelsRemovableMediaOnly) {
  WriteFile("A:\\BackupInfo.ini", "x");
  WriteFile("A:\\Deep\\er\\Übung.cab", "x");
  SetFileAttributesW(L"A:\\BackupInfo.ini", FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(Prepare("A:"), 0);
  EXPECT_FALSE(Exists("A:\\BackupInfo.ini"));
  EXPECT_FALSE(Exists("A:\\Deep"));
  // Where Wine keeps a label; what it answers about a volume is from before.
  EXPECT_EQ(ReadFile("A:\\.windows-label"), "TARSUS\n");

  EXPECT_EQ(Prepare("C"), -1);
  EXPECT_TRUE(Exists("C:\\Host\\Host.db"));
  EXPECT_EQ(Prepare("X"), -1);
  EXPECT_EQ(Prepare(""), -1);
}

}  // namespace
}  // namespace components_test
