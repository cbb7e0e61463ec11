// The work folder, external programs, and the copying of files.
#include "work/WorkFolder.h"

#include "unit/Station.h"
#include "work/FileOperations.h"

namespace {

using base::Result;
using MediumFiles = std::map<std::string, std::string>;

// Afterwards a folder of that name is somebody else's.
TEST_F(AppTest, AWorkFolderIsRemovedOnce) {
  const std::string path = host.files.temporaryFolder + "120315093012";
  {
    work::WorkFolder folder(host.files, host.qx32, fakes::kProgramFolder);
    EXPECT_TRUE(folder.Create(host.clock, host.messageLoop).IsDone());
    EXPECT_EQ(folder.Remove(), Result::Done);
    host.disk.MakeFolders(path);
    EXPECT_EQ(folder.Remove(), Result::Done);
  }
  EXPECT_TRUE(host.disk.IsFolder(path));
}

class WorkFolderTest : public AppTest {
 public:
  WorkFolderTest() {
    host.messageLoop.onYield = [this] { ++host.clock.now.second; };
    host.disk.MakeFolders("C:\\T");
    host.files.temporaryFolder = "C:\\T\\";
  }
  std::string& Record() { return host.qx32.texts["BackupUtility\\WorkFolder"]; }
  void StartAnew() { work::RemoveLeftWorkFolders(host.files, host.qx32, application.log); }

  work::WorkFolder folder{host.files, host.qx32, fakes::kProgramFolder};
};

// What stands there may be another user's, or was put there to be written to.
TEST_F(WorkFolderTest, IsMadeInTheNextSecondThatIsFree) {
  host.disk.Write("C:\\T\\120315093012\\theirs.txt", "x");
  host.disk.Write("C:\\T\\120315093013", "a file");
  const MediumFiles theirs = host.disk.Tree("C:\\T");
  EXPECT_TRUE(folder.Create(host.clock, host.messageLoop).IsDone());
  EXPECT_EQ(folder.StagingFolder(), "C:\\T\\120315093014\\");
  EXPECT_EQ(host.calls.CountOf("FileSystem", "MakePrivateFolder"), 3u);
  EXPECT_TRUE(folder.Remove().IsDone());
  EXPECT_EQ(host.disk.Tree("C:\\T"), theirs);
}

TEST_F(WorkFolderTest, IsNotWaitedForForEver) {
  for (int second = 12; second < 30; ++second) host.disk.MakeFolders("C:\\T\\1203150930" + std::to_string(second));
  const base::Outcome made = folder.Create(host.clock, host.messageLoop);
  EXPECT_EQ(made, Result::Failed);
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "C:\\T\\1203150930", made.cause);
  EXPECT_TRUE(host.messageLoop.paused >= 3000 && host.messageLoop.paused <= 10000) << host.messageLoop.paused;
  EXPECT_EQ(folder.StagingFolder() + Record(), "") << "nobody takes it for its own";
}

// A crash leaves the folder and its record as they are while the job is at work.
TEST_F(WorkFolderTest, OfACrashIsRemovedAtTheNextStart) {
  ASSERT_TRUE(folder.Create(host.clock, host.messageLoop).IsDone());
  host.disk.Write(folder.StagingFolder() + "Patient\\image1.dat", "x");
  host.disk.Find(folder.StagingFolder() + "Patient\\image1.dat")->attributes = fakes::kReadOnly;
  StartAnew();
  EXPECT_TRUE(host.disk.Children("C:\\T").empty());
  EXPECT_EQ(Record(), "");
  EXPECT_TRUE(WasWarnedOf("removed: " + folder.StagingFolder()));
}

// Only what a work folder can be called is deleted, whatever the record says.
TEST_F(WorkFolderTest, NothingElseIsRemovedForTheRecordsSake) {
  const Names others = {"C:\\Tarsus\\",
                        "C:\\",
                        "..\\",
                        "C:\\T\\12031509301\\",
                        "C:\\T\\1203150930123\\",
                        "C:\\T\\120315093012\\..\\",
                        "C:\\T\\12031509301x\\"};
  for (const std::string& other : others) host.disk.MakeFolders(other), Record() += other + "|";
  host.disk.Write("C:\\T\\120315093015", "a file of such a name");
  Record() += "|C:\\T\\120315093015\\|C:\\T\\120315093099\\|C:\\T\\120315093012\\";
  MediumFiles files = host.disk.Tree("C:\\");
  StartAnew();
  EXPECT_EQ(Record(), "");
  EXPECT_FALSE(host.disk.IsFolder("C:\\T\\120315093012"));
  for (const std::string& other : others) EXPECT_TRUE(host.disk.IsFolder(other)) << other;
  MediumFiles left = host.disk.Tree("C:\\");
  for (MediumFiles* each : {&files, &left})
    each->erase("Tarsus\\Log\\BackupUtility.log"), each->erase("BackupUtility.log");
  EXPECT_EQ(left, files);
}

TEST_F(WorkFolderTest, ThatStaysIsTriedAgainAtEveryStart) {
  const std::string busy = "C:\\T\\120315093001\\";
  Record() = busy + "|C:\\T\\120315093002\\|";
  host.disk.Write(busy + "open.dat", "x");
  host.disk.Write("C:\\T\\120315093002\\x", "x");
  InUse(busy + "open.dat")(host);
  StartAnew();
  EXPECT_EQ(NamesBelow("C:\\T"), Names{"120315093001\\open.dat"});
  EXPECT_EQ(Record(), busy + "|");
  EXPECT_TRUE(WasWarnedOf("not removed: "));
  host.disk.Find(busy + "open.dat")->readers = 0;
  StartAnew();
  EXPECT_TRUE(host.disk.Children("C:\\T").empty());
  EXPECT_EQ(Record(), "");
}

// However it ended: most callers go on when a program has at least run.
TEST_F(AppTest, AProgramThatFailsWasStarted) {
  const auto run = [&](const char* command) { return work::RunAndWait(work::ToolsOf(application), command); };
  Program("C:\\Tarsus\\fails.bat", [](fakes::Disk&, const fakes::Words&) { return 1u; })(host);
  host.calls.FailFrom("StartedProgram", "Wait");
  EXPECT_EQ(run("C:\\Tarsus\\fails.bat").Started(), Result::Done);
}

TEST_F(JobTest, XcopysExitCodeDecides) {
  const auto expect = [&](Result result, const std::string& why) {
    const base::Outcome copied = work::CopyFileByXcopy(tools, "C:\\a b\\c.txt", "D:\\x\\");
    EXPECT_EQ(copied, result) << why;
    EXPECT_TRUE(
        copied.cause.starts_with(why.empty() ? "" : why + ": CMD /C xcopy \"C:\\a b\\c.txt\" \"D:\\x\\\" /S /Y"))
        << copied.cause;
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

TEST_F(AppTest, TheFolderIsPutBackThoughAnotherWasNotEntered) {
  { const work::CurrentFolderScope scope(host.files, "C:\\Nowhere", "C:\\Tarsus"); }
  EXPECT_EQ(host.disk.CurrentFolder(), "C:\\Tarsus");
}

TEST_F(AppTest, EnsureFolderReportsWhatItCannotMake) {
  for (const char* folder : {"C:\\Tarsus\\Menu\\menu.ini\\a\\b", "Q:\\a"})
    EXPECT_EQ(work::EnsureFolder(host.files, folder), Result::Failed);
}

}  // namespace
