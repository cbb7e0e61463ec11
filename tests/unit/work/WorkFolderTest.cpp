// The work folder, external programs, and the copying of files.
#include "work/WorkFolder.h"

#include "unit/Station.h"
#include "work/FileOperations.h"

namespace {

using base::Result;

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

// However it ended: most callers go on when a program has at least run.
TEST_F(AppTest, AProgramThatFailsWasStarted) {
  const auto run = [&](const char* command) { return work::RunAndWait(host.processes, command); };
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
