// The shared file operations and the staging folder.
#include "backup/FileOperations.h"

#include "backup/StagingFolder.h"
#include "unit/Station.h"

namespace {

using base::Result;

TEST_F(JobTest, XcopysExitCodeDecides) {
  for (const auto& [exit, result] : {std::pair(0u, Result::Done),
                                     {1u, Result::StepFailed},
                                     {2u, Result::StepFailed},
                                     {4u, Result::Failed},
                                     {5u, Result::StepFailed}}) {
    host.processes.Install(kInterpreter, [code = exit](fakes::Disk&, const fakes::Words&) { return code; });
    EXPECT_EQ(backup::CopyFileByXcopy(application, "C:\\a b\\c.txt", "D:\\x\\"), result) << exit;
    EXPECT_EQ(host.processes.started.back().commandLine, "CMD /C xcopy \"C:\\a b\\c.txt\" \"D:\\x\\\" /S /Y");
  }
  host.calls.FailFrom("StartedProgram", "Wait");
  EXPECT_EQ(backup::CopyFileByXcopy(application, "C:\\a", "D:\\"), Result::Failed);
  host.disk.Remove(kInterpreter);
  EXPECT_EQ(backup::CopyFileByXcopy(application, "C:\\a", "D:\\"), Result::Failed);
}

TEST_F(JobTest, FolderSizeCountsTheFilesDirectlyInIt) {
  host.disk.Write("C:\\Work\\a", std::string(1000, 'x'));
  host.disk.Write("C:\\Work\\b", std::string(234, 'x'));
  host.disk.Write("C:\\Work\\Sub\\c", std::string(5000, 'x'));
  EXPECT_EQ(backup::GetFolderSize(application, kStaging), 1234u);
  EXPECT_EQ(host.disk.CurrentFolder(), fakes::kProgramFolder);
}

TEST_F(JobTest, StagingFolderIsNamedAfterTheSecondAndGoesEvenWhenItIsCurrent) {
  EXPECT_EQ(backup::CreateStagingFolder(application), "C:\\Users\\Operator\\Temp\\120315093012\\");
  EXPECT_TRUE(host.disk.IsFolder(application.state.StagingFolder));
  host.disk.Write(application.state.StagingFolder + "CABFILE\\a.cab", "x");
  host.disk.Find(application.state.StagingFolder + "CABFILE\\a.cab")->attributes = fakes::kReadOnly;
  host.disk.SetCurrentFolder(application.state.StagingFolder);
  EXPECT_EQ(backup::RemoveStagingFolder(application), Result::Done);
  EXPECT_TRUE(host.disk.Children("C:\\Users\\Operator\\Temp").empty());
  EXPECT_EQ(backup::RemoveStagingFolder(application), Result::Done) << "nothing is left to remove";
  EXPECT_TRUE(host.disk.IsFolder("C:\\Users\\Operator\\Temp"));
}

}  // namespace
