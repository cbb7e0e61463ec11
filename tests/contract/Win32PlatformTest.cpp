// Drives, the clock, the shell. Copying with a progress window is shown by the demonstration, from floppies.
#include <gtest/gtest.h>

#include "fakes/Printing.h"
#include "windows/adapters/ApiPath.h"
#include "windows/adapters/Text.h"
#include "windows/adapters/Win32Desktop.h"
#include "windows/adapters/Win32FileSystem.h"

namespace {

using enum base::Result;

TEST(Win32Drives, OnlyARealDriveIsReady) {
  constexpr std::int64_t kNotReady = -1;
  windows::Win32Drives drives;
  EXPECT_TRUE(drives.IsReady("C:"));
  EXPECT_GT(drives.FreeSpace("C:"), 0);
  EXPECT_TRUE(drives.VolumeLabel("C:"));
  for (const std::string drive : {"Q:", "", ":", "C:\\nowhere"}) {
    EXPECT_FALSE(drives.IsReady(drive)) << drive;
    EXPECT_EQ(drives.FreeSpace(drive), kNotReady) << drive;
    EXPECT_FALSE(drives.VolumeLabel(drive)) << drive;
    const base::Outcome labelled = drives.SetVolumeLabel(drive, "LABEL");
    EXPECT_EQ(labelled, Failed);
    EXPECT_TRUE(labelled.cause.starts_with(drive) && labelled.cause.ends_with(")")) << labelled.cause;
  }
}

TEST(Win32Clock, FormatsTheGivenTime) {
  windows::Win32Clock clock;
  const base::LocalTime time{2012, 3, 14, 5, 6, 7};
  const std::string text = clock.ShortDate(time) + " " + clock.LongTime(time);
  for (const char* part : {"12", "14", "06", "07"}) EXPECT_NE(text.find(part), std::string::npos) << text;
  EXPECT_GT(clock.Now().year, 2011);
  constexpr std::uint64_t kNoon = 129'762'000'000'000'000;  // of 14 March 2012, universal time; no zone is a day off
  const base::LocalTime local = clock.LocalTimeOf(kNoon);
  EXPECT_TRUE(local.year == 2012 && local.month == 3 && local.day >= 13 && local.day <= 15) << clock.ShortDate(local);
}

// A batch file stands for a document here: it leaves a trace of having been opened.
TEST(Win32Shell, KnowsTheDesktopAndOpensWhatStandsBesideTheProgram) {
  windows::Win32FileSystem files;
  windows::Win32MessageLoop loop;
  windows::Win32Shell shell(loop);
  EXPECT_TRUE(files.FolderExists(shell.DesktopFolder()));
  EXPECT_FALSE(shell.OpenDocument("missing.html"));
  EXPECT_FALSE(shell.PrintDocument("C:\\missing.txt"));

  const std::string document = windows::Utf8(windows::ProgramFolder()) + "shell-test.bat";
  const std::string trace = files.TemporaryFolder() + "shell-test.txt";
  EXPECT_EQ(files.CreateText(document)->Write("@echo opened>\"" + trace + "\"\r\n"), Done);
  EXPECT_TRUE(shell.OpenDocument("shell-test.bat"));
  for (int wait = 0; wait < 500 && files.FileSize(trace) <= 0; ++wait) Sleep(20);
  EXPECT_GT(files.FileSize(trace), 0);
  EXPECT_EQ(files.RemoveFile(document), Done);
  EXPECT_EQ(files.RemoveFile(trace), Done);
}

}  // namespace
