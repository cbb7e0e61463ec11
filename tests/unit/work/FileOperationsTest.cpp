// The shared file operations.
#include "work/FileOperations.h"

#include "unit/Station.h"

namespace {

using base::Result;

TEST_F(JobTest, XcopysExitCodeDecides) {
  const std::string command = "CMD /C xcopy \"C:\\a b\\c.txt\" \"D:\\x\\\" /S /Y";
  const auto expect = [&](Result result, const std::string& why) {
    const base::Outcome copied = work::CopyFileByXcopy(tools, "C:\\a b\\c.txt", "D:\\x\\");
    EXPECT_EQ(copied, result) << why;
    EXPECT_EQ(copied.cause, why.empty() ? "" : why + ": " + command);
  };
  for (const auto& [exit, result] : {std::pair(0u, Result::Done),
                                     {1u, Result::StepFailed},
                                     {2u, Result::StepFailed},
                                     {4u, Result::Failed},
                                     {5u, Result::StepFailed}}) {
    host.processes.Install(kInterpreter, [code = exit](fakes::Disk&, const fakes::Words&) { return code; });
    expect(result, exit == 0 ? "" : "Exit code " + std::to_string(exit));
  }
  host.calls.FailFrom("StartedProgram", "Wait");
  expect(Result::Failed, "Exit code unknown");
  host.disk.Remove(kInterpreter);
  expect(Result::Failed, "Not started");
}

TEST_F(JobTest, FolderSizeCountsTheFilesDirectlyInIt) {
  host.disk.Write("C:\\Work\\a", std::string(1000, 'x'));
  host.disk.Write("C:\\Work\\b", std::string(234, 'x'));
  host.disk.Write("C:\\Work\\Sub\\c", std::string(5000, 'x'));
  EXPECT_EQ(work::GetFolderSize(tools, "C:\\Work\\", fakes::kProgramFolder), 1234u);
  EXPECT_EQ(host.disk.CurrentFolder(), fakes::kProgramFolder);
}

}  // namespace
