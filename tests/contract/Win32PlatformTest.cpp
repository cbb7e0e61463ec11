// Drives, the clock, the shell.
#include <gtest/gtest.h>

#include "windows/adapters/ApiPath.h"
#include "windows/adapters/Text.h"
#include "windows/adapters/Win32Clock.h"
#include "windows/adapters/Win32Drives.h"
#include "windows/adapters/Win32FileSystem.h"
#include "windows/adapters/Win32Shell.h"

namespace {

TEST(Win32Drives, OnlyARealDriveIsReady) {
  windows::Win32Drives drives;
  std::string label = "before";
  EXPECT_TRUE(drives.IsReady("C:"));
  EXPECT_GT(drives.FreeSpace("C:"), 0);
  EXPECT_EQ(drives.VolumeLabel("C:", label), 0);
  label = "before";
  for (const char* drive : {"Q:", "", ":", "C:\\nowhere"}) {
    EXPECT_FALSE(drives.IsReady(drive)) << drive;
    EXPECT_EQ(drives.FreeSpace(drive), -1) << drive;
    EXPECT_EQ(drives.VolumeLabel(drive, label), -1) << drive;
    EXPECT_EQ(drives.SetVolumeLabel(drive, "LABEL"), -1) << drive;
  }
  EXPECT_EQ(label, "before");
}

TEST(Win32Clock, FormatsTheGivenTime) {
  windows::Win32Clock clock;
  const host::LocalTime time{2012, 3, 14, 5, 6, 7};
  const std::string text = clock.ShortDate(time) + " " + clock.LongTime(time);
  for (const char* part : {"12", "14", "06", "07"}) EXPECT_NE(text.find(part), std::string::npos) << text;
  EXPECT_GT(clock.Now().year, 2011);
}

TEST(Win32Shell, CopiesIntoAFolder) {
  windows::Win32FileSystem files;
  windows::Win32Shell shell;
  EXPECT_TRUE(files.FolderExists(shell.DesktopFolder()));

  const std::string folder = files.TemporaryFolder() + "shell-test";
  ASSERT_EQ(files.MakeFolder(folder), 0);
  ASSERT_EQ(files.MakeFolder(folder + "\\to"), 0);
  EXPECT_EQ(files.CreateText(folder + "\\FDDivide001")->Write("piece"), 0);
  EXPECT_EQ(shell.CopyWithProgress(folder + "\\\\FDDivide001", folder + "\\to\\", "Copying"), 0);
  EXPECT_EQ(files.FileSize(folder + "\\to\\FDDivide001"), 5);
  EXPECT_EQ(files.RemoveFolder(folder), 0);
}

// A batch file stands for a document here: it leaves a trace of having been opened.
TEST(Win32Shell, OpensWhatStandsBesideTheProgram) {
  windows::Win32FileSystem files;
  windows::Win32Shell shell;
  EXPECT_FALSE(shell.OpenDocument("missing.html"));

  const std::string document = windows::Utf8(windows::ProgramFolder()) + "shell-test.bat";
  const std::string trace = files.TemporaryFolder() + "shell-test.txt";
  files.RemoveFile(trace);
  EXPECT_EQ(files.CreateText(document)->Write("@echo opened>\"" + trace + "\"\r\n"), 0);
  EXPECT_TRUE(shell.OpenDocument("shell-test.bat"));
  for (int wait = 0; wait < 500 && files.FileSize(trace) <= 0; ++wait) Sleep(20);
  EXPECT_GT(files.FileSize(trace), 0);
  EXPECT_EQ(files.RemoveFile(document), 0);
  EXPECT_EQ(files.RemoveFile(trace), 0);
}

}  // namespace
