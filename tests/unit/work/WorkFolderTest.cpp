// The work folder, and the copying of files.
#include "work/WorkFolder.h"

#include <optional>

#include "unit/Station.h"
#include "work/FileOperations.h"

namespace {

using base::Result;

/// A job's work folder with a read-only archive in it; it is the current folder.
class WorkFolderTest : public AppTest {
 public:
  WorkFolderTest() {
    EXPECT_TRUE(folder->Create(host.clock).IsDone());
    EXPECT_EQ(folder->StagingFolder(), temporary + path);
    host.disk.Write(archive, "x");
    host.disk.Find(archive)->attributes = fakes::kReadOnly;
    host.disk.SetCurrentFolder(temporary + path);
  }
  bool IsGone() { return host.disk.Children(temporary).empty() && host.disk.CurrentFolder() == fakes::kProgramFolder; }

  const std::string temporary = "C:\\Users\\Operator\\Temp\\";
  const std::string path = "120315093012\\";
  const std::string archive = temporary + path + "CABFILE\\a.cab";
  std::optional<work::WorkFolder> folder{std::in_place, host.files, fakes::kProgramFolder};
};

TEST_F(WorkFolderTest, GoesWithTheObjectOfAJobThatDies) {
  folder.reset();
  EXPECT_TRUE(IsGone());
}

// Afterwards a folder of that name is somebody else's.
TEST_F(WorkFolderTest, IsRemovedOnce) {
  EXPECT_EQ(folder->Remove(), Result::Done);
  EXPECT_TRUE(IsGone());
  host.disk.MakeFolders(temporary + path);
  EXPECT_EQ(folder->Remove(), Result::Done);
  folder.reset();
  EXPECT_FALSE(IsGone());
}

TEST_F(WorkFolderTest, ThatCannotBeRemovedIsTriedAgain) {
  InUse(archive)(host);
  const base::Outcome removed = folder->Remove();
  EXPECT_EQ(removed, Result::Failed);
  EXPECT_EQ(removed.cause, temporary + "120315093012: in use");
  host.disk.Find(archive)->readers = 0;
  EXPECT_EQ(folder->Remove(), Result::Done);
  EXPECT_TRUE(IsGone());
}

TEST_F(AppTest, WorkFolderThatCannotBeMadeIsNone) {
  host.files.temporaryFolder = "E:\\Temp";
  work::WorkFolder folder(host.files, fakes::kProgramFolder);
  EXPECT_EQ(folder.Create(host.clock).cause, "E:\\Temp\\120315093012\\: not found");
  EXPECT_EQ(folder.StagingFolder(), "");
}

TEST_F(JobTest, XcopysExitCodeDecides) {
  const auto expect = [&](Result result, const std::string& why) {
    const base::Outcome copied = work::CopyFileByXcopy(tools, "C:\\a b\\c.txt", "D:\\x\\");
    EXPECT_EQ(copied, result) << why;
    EXPECT_EQ(copied.cause, why.empty() ? "" : why + ": CMD /C xcopy \"C:\\a b\\c.txt\" \"D:\\x\\\" /S /Y");
  };
  Program(kInterpreter, DoNothing)(host);
  expect(Result::Done, "");
  for (const auto& [exit, result] :
       {std::pair(1u, Result::StepFailed), {2u, Result::StepFailed}, {4u, Result::Failed}, {5u, Result::StepFailed}}) {
    Program(kInterpreter, [code = exit](auto&, auto&) { return code; })(host);
    expect(result, "Exit code " + std::to_string(exit));
  }
  host.calls.FailFrom("StartedProgram", "Wait");
  expect(Result::Failed, "Exit code unknown");
  host.disk.Remove(kInterpreter);
  expect(Result::Failed, "Not started");
}

}  // namespace
