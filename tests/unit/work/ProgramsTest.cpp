// External programs, the current folder, and folders made on the way.
#include "unit/Station.h"
#include "work/FileOperations.h"

namespace {

using base::Result;

// However it ended: most callers go on when a program has at least run.
TEST_F(AppTest, AProgramThatFailsWasStarted) {
  const auto run = [&](const char* command) { return work::RunAndWait(host.processes, command); };
  Program("C:\\Tarsus\\fails.bat", [](fakes::Disk&, const fakes::Words&) { return 1u; })(host);
  EXPECT_EQ(run("C:\\Tarsus\\fails.bat").Started(), Result::Done);
  EXPECT_EQ(run("C:\\Tarsus\\missing.bat").Started().cause, "Not started: C:\\Tarsus\\missing.bat");
  host.calls.FailFrom("StartedProgram", "Wait");
  EXPECT_EQ(run("C:\\Tarsus\\fails.bat").Started(), Result::Done);
}

TEST_F(AppTest, TheFolderIsPutBackWhetherItWasEnteredOrNot) {
  for (const std::string folder : {"D:\\", "C:\\Nowhere"}) {
    host.disk.SetCurrentFolder("C:\\");
    {
      const work::CurrentFolderScope scope(host.files, folder, "C:\\Tarsus");
      EXPECT_EQ(scope.Entered().IsDone(), folder == "D:\\");
      EXPECT_EQ(host.disk.CurrentFolder(), scope.Entered().IsDone() ? "D:\\" : "C:\\");
    }
    EXPECT_EQ(host.disk.CurrentFolder(), "C:\\Tarsus");
  }
}

TEST_F(AppTest, EnsureFolderReportsWhatItCannotMake) {
  for (const char* folder : {"C:\\Tarsus\\Menu\\menu.ini\\a\\b", "Q:\\a"})
    EXPECT_EQ(work::EnsureFolder(host.files, folder), Result::Failed);
}

}  // namespace
