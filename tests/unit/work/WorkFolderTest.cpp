// The work folder: named after the second, and gone with its job.
#include "work/WorkFolder.h"

#include <optional>

#include "unit/Station.h"

namespace {

constexpr const char* kTemporary = "C:\\Users\\Operator\\Temp";

/// A job's work folder with a read-only archive in it, which is the current folder.
class WorkFolderTest : public AppTest {
 public:
  WorkFolderTest() {
    folder.emplace(host.files, fakes::kProgramFolder);
    EXPECT_TRUE(folder->Create(host.clock).IsDone());
    EXPECT_EQ(folder->StagingFolder(), std::string(kTemporary) + "\\120315093012\\");
    const std::string archive = folder->ArchiveFolder() + "a.cab";
    host.disk.Write(archive, "x");
    host.disk.Find(archive)->attributes = fakes::kReadOnly;
    host.disk.SetCurrentFolder(folder->StagingFolder());
  }
  void ExpectGone() {
    EXPECT_TRUE(host.disk.IsFolder(kTemporary) && host.disk.Children(kTemporary).empty());
    EXPECT_EQ(host.disk.CurrentFolder(), fakes::kProgramFolder);
  }

  std::optional<work::WorkFolder> folder;
};

// Once it is removed, a folder of that name is somebody else's.
TEST_F(WorkFolderTest, IsRemovedWhenItIsTold) {
  EXPECT_TRUE(folder->Remove().IsDone());
  ExpectGone();
  EXPECT_EQ(folder->StagingFolder(), "");
  EXPECT_TRUE(folder->Remove().IsDone()) << "nothing is left to remove";
  host.disk.MakeFolders(std::string(kTemporary) + "\\120315093012");
  folder.reset();
  EXPECT_FALSE(host.disk.Children(kTemporary).empty());
}

TEST_F(WorkFolderTest, GoesWithTheObjectOfAJobThatDies) {
  folder.reset();
  ExpectGone();
}

TEST_F(WorkFolderTest, ThatCannotBeRemovedIsTriedAgain) {
  const std::string path = folder->StagingFolder();
  InUse(folder->ArchiveFolder() + "a.cab")(host);
  const base::Outcome removed = folder->Remove();
  EXPECT_EQ(removed, base::Result::Failed);
  EXPECT_PRED_FORMAT2(testing::IsSubstring, path.substr(0, path.size() - 1), removed.cause);
  EXPECT_EQ(folder->StagingFolder(), path);
  host.disk.Find(folder->ArchiveFolder() + "a.cab")->readers = 0;
  folder.reset();
  ExpectGone();
}

// Then there is none to remove, and nothing else goes in its place.
TEST_F(AppTest, WorkFolderThatCannotBeMadeIsNone) {
  host.files.temporaryFolder = "E:\\Temp\\";
  work::WorkFolder folder(host.files, fakes::kProgramFolder);
  const base::Outcome made = folder.Create(host.clock);
  EXPECT_EQ(made, base::Result::Failed);
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "E:\\Temp\\120315093012", made.cause);
  EXPECT_EQ(folder.StagingFolder(), "");
}

}  // namespace
