// Starting programs and waiting for them.
#include "windows/adapters/Win32Processes.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "windows/adapters/Win32FileSystem.h"

namespace {

double ProcessorSeconds() {
  FILETIME created, ended, kernel, user;
  GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
  return 1e-7 * (kernel.dwLowDateTime + user.dwLowDateTime);
}

class Win32ProcessesTest : public ::testing::Test {
 protected:
  Win32ProcessesTest() {
    files_.MakeFolder(folder_);
    home_ = files_.CurrentFolder();
    files_.SetCurrentFolder(folder_);
  }
  ~Win32ProcessesTest() override {
    files_.SetCurrentFolder(home_);
    files_.RemoveFolder(folder_);
  }

  /// The exit code; -1 when the program does not start or the code cannot be had.
  std::int64_t Run(const std::string& commandLine) {
    const auto program = processes_.Start(commandLine, host::WindowStyle::Hidden);
    std::uint32_t code = 0;
    return program != nullptr && program->Id() != 0 && program->Wait(code) == 0 ? std::int64_t{code} : -1;
  }
  void WriteText(const std::string& name, const std::string& text) {
    ASSERT_EQ(files_.CreateText(folder_ + name)->Write(text), 0);
  }

  windows::Win32FileSystem files_;
  windows::Win32MessageLoop loop_;
  windows::Win32Processes processes_{loop_};
  std::string folder_ = files_.TemporaryFolder() + "programs of test " + std::to_string(GetCurrentProcessId()) + "\\";
  std::string home_;
};

// 259 is what the system answers for a program that still runs: a wait that asks for it never ends.
TEST_F(Win32ProcessesTest, ReportsExitCodes) {
  for (const std::int64_t code : {0, 1, 4, 259}) EXPECT_EQ(Run("contract_child exit " + std::to_string(code)), code);
  EXPECT_EQ(Run("contract_child exit -1"), 0xFFFFFFFF);
  EXPECT_EQ(Run("no-such-program.exe"), -1);
  EXPECT_EQ(Run(""), -1);
}

TEST_F(Win32ProcessesTest, RunsBatchFilesWithBlanksInTheirPaths) {
  WriteText("make a file.bat", "@echo off\r\necho %1>\"out put.txt\"\r\nexit /b 5\r\n");
  EXPECT_EQ(Run("\"" + folder_ + "make a file.bat\" word"), 5);
  std::string line;
  const auto output = files_.OpenText(folder_ + "out put.txt");
  ASSERT_NE(output, nullptr);
  EXPECT_TRUE(output->ReadLine(line));
  EXPECT_EQ(line, "word");

  WriteText("plain.bat", "exit 3\r\n");
  EXPECT_EQ(Run("plain.bat"), 3);  // from the current folder
}

TEST_F(Win32ProcessesTest, TheWaitEndsWithTheProgram) {
  unsigned long long shortest = ~0ULL;
  for (int i = 0; i < 5; ++i) {
    ASSERT_EQ(Run("contract_child tick end.txt"), 0);
    const ULONGLONG now = GetTickCount64();
    std::string line;
    ASSERT_TRUE(files_.OpenText("end.txt")->ReadLine(line));
    shortest = std::min(shortest, now - std::stoull(line));
  }
  RecordProperty("shortest_milliseconds", static_cast<int>(shortest));
  EXPECT_LT(shortest, 60U);
}

/// Counts the messages that reach it.
class Counter : public windows::MessageFilter {
 public:
  bool PreTranslate(MSG& message) override {
    if (message.message == WM_TIMER) ++timers;
    return true;
  }
  int timers = 0;
};

TEST_F(Win32ProcessesTest, AWaitServesMessagesAndUsesNoProcessorTime) {
  Counter counter;
  loop_.SetFilter(&counter);
  const UINT_PTR timer = SetTimer(nullptr, 0, 50, nullptr);
  const double before = ProcessorSeconds();
  EXPECT_EQ(Run("contract_child sleep 1500"), 0);
  EXPECT_LT(ProcessorSeconds() - before, 0.1);
  EXPECT_GT(counter.timers, 10);
  KillTimer(nullptr, timer);
}

TEST_F(Win32ProcessesTest, AnEndOfTheProgramAskedForDuringAWaitComesAfterIt) {
  PostQuitMessage(7);
  const double before = ProcessorSeconds();
  EXPECT_EQ(Run("contract_child sleep 1000"), 0);
  EXPECT_LT(ProcessorSeconds() - before, 0.1);
  loop_.Yield();
  MSG message{};
  EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7U);
}

TEST_F(Win32ProcessesTest, SeesWhatRuns) {
  const auto program = processes_.Start("contract_child sleep 2000", host::WindowStyle::Hidden);
  ASSERT_NE(program, nullptr);
  const std::vector<std::string> names = processes_.RunningExecutables();
  EXPECT_EQ(std::count(names.begin(), names.end(), "contract_child.exe"), 1);
  EXPECT_EQ(std::count(names.begin(), names.end(), "contract_win32_tests.exe"), 1);
}

TEST_F(Win32ProcessesTest, ASecondInstanceSeesTheFirst) {
  EXPECT_FALSE(processes_.HasPreviousInstance());
  EXPECT_EQ(Run("contract_child instance"), 1);
}

}  // namespace
