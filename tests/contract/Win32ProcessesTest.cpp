// Starting programs and waiting for them.
#include "windows/adapters/Win32Processes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "windows/adapters/ApiPath.h"

namespace {

namespace fs = std::filesystem;

double ProcessorSeconds() {
  FILETIME created, ended, kernel, user;
  GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
  return 1e-7 * (kernel.dwLowDateTime + user.dwLowDateTime);
}

class Win32ProcessesTest : public ::testing::Test {
 protected:
  Win32ProcessesTest() {
    fs::create_directory(folder_);
    fs::current_path(folder_);
  }
  ~Win32ProcessesTest() override {
    fs::current_path(home_);
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }

  /// The exit code; nothing when the program does not start or the code cannot be had.
  std::optional<std::uint32_t> Run(const std::string& commandLine, host::Where where = host::Where::ProgramsOnly) {
    const auto program = processes_.Start(commandLine, host::WindowStyle::Hidden, where);
    return program && program->Id() != 0 ? program->Wait() : std::nullopt;
  }
  /// Waits for a program that sleeps, which must use no processor time.
  void RunSleeper(const std::string& milliseconds) {
    const double before = ProcessorSeconds();
    EXPECT_EQ(Run("contract_child sleep " + milliseconds), 0U);
    EXPECT_LT(ProcessorSeconds() - before, 0.1);
  }

  const fs::path home_ = fs::current_path();
  const fs::path folder_ = fs::temp_directory_path() / ("programs of test " + std::to_string(GetCurrentProcessId()));
  windows::Win32MessageLoop loop_;
  windows::Win32Processes processes_{loop_};
};

// Called at the times that it asks for, it must not keep the wait from ending with the program.
TEST_F(Win32ProcessesTest, DoesSomethingElseMeanwhile) {
  int calls = 0;
  const auto program = processes_.Start("contract_child sleep 700", host::WindowStyle::Hidden);
  ASSERT_TRUE(program);
  const ULONGLONG begun = GetTickCount64();
  EXPECT_EQ(program->Wait([&calls] { return std::chrono::milliseconds(++calls < 4 ? 100 : 60'000); }), 0U);
  EXPECT_EQ(calls, 4);
  EXPECT_LT(GetTickCount64() - begun, 10'000U);
}

// 259 is what the system answers for a program that still runs: a wait that asks for it never ends.
TEST_F(Win32ProcessesTest, ReportsExitCodesAndWhyAProgramDoesNotStart) {
  for (const std::uint32_t code : {0U, 1U, 4U, 259U, 0xFFFFFFFFU}) {
    const std::string number = std::to_string(static_cast<std::int32_t>(code));
    EXPECT_EQ(Run("contract_child exit " + number), code);
  }
  for (const std::string commandLine : {"no-such-program.exe x", ""}) {
    const std::string cause = processes_.Start(commandLine, host::WindowStyle::Hidden).Why().cause;
    EXPECT_TRUE(cause.starts_with(commandLine) && cause.ends_with(")")) << cause;
  }
}

TEST_F(Win32ProcessesTest, RunsBatchFilesWithBlanksInTheirPaths) {
  std::ofstream("make a file.bat") << "@echo off\necho %1 %2 %~nx0>\"out put.txt\"\nexit /b 5\n";
  const std::string path = (folder_ / "make a file.bat").string();
  for (const std::string& name : {"\"" + path + "\"", path, std::string("make a file.bat")}) {
    fs::remove("out put.txt");
    EXPECT_EQ(Run(name + " word \"two & three\"", host::Where::CurrentFolder), 5U) << name;
    std::string line;
    std::getline(std::ifstream("out put.txt"), line);
    EXPECT_EQ(line, "word \"two & three\" make a file.bat");
  }
  std::ofstream("plain.CMD") << "exit 3\n";
  EXPECT_EQ(Run("plain", host::Where::CurrentFolder), 3U);
  EXPECT_EQ(Run("plain"), std::nullopt);
}

TEST_F(Win32ProcessesTest, WhatOthersPutIntoTheCurrentFolderIsNotRun) {
  const fs::path child = fs::path(windows::ProgramFolder()) / "contract_child.exe";
  for (const char* tool : {"CMD.exe", "cabarc.exe", "nobodys.exe"}) fs::copy_file(child, tool);
  std::ofstream("xcopy.bat") << "exit 77\n";
  const std::wstring path = _wgetenv(L"PATH");
  SetEnvironmentVariableW(L"PATH", (L";.;\".\";" + path).c_str());
  for (const char* command : {"cabarc exit 77", "xcopy none there", "nobodys exit 77", "cmd exit 77"}) {
    EXPECT_NE(Run(command), 77U) << command;
    EXPECT_EQ(Run(command, host::Where::CurrentFolder), 77U) << command;
  }
  EXPECT_EQ(Run("CMD /C exit 5"), 5U);
  // The interpreter looks for programs of its own.
  const std::string isLimited = "if defined NoDefaultCurrentDirectoryInExePath exit 6";
  EXPECT_EQ(Run("CMD /C " + isLimited), 6U);
  std::ofstream("own.bat") << isLimited << "\nexit 7\n";
  EXPECT_EQ(Run("own.bat", host::Where::CurrentFolder), 7U) << "a host's batch file may start what stands beside it";
  SetEnvironmentVariableW(L"PATH", path.c_str());
}

TEST_F(Win32ProcessesTest, TheWaitEndsWithTheProgram) {
  ULONGLONG shortest = ~0ULL;
  for (int i = 0; i < 5; ++i) {
    ASSERT_EQ(Run("contract_child tick end.txt"), 0U);
    const ULONGLONG now = GetTickCount64();
    ULONGLONG end = 0;
    ASSERT_TRUE(std::ifstream("end.txt") >> end);
    shortest = std::min(shortest, now - end);
  }
  EXPECT_LT(shortest, 60U);
}

/// Counts the messages that reach it.
class Counter : public windows::Dialogs {
 public:
  bool PreTranslate(MSG& message) override {
    if (message.message == WM_TIMER) ++timers;
    return true;
  }
  HWND FrontWindow() const override { return nullptr; }
  int timers = 0;
};

TEST_F(Win32ProcessesTest, AWaitServesMessagesAndUsesNoProcessorTime) {
  Counter counter;
  loop_.SetDialogs(&counter);
  const UINT_PTR timer = SetTimer(nullptr, 0, 50, nullptr);
  RunSleeper("1500");
  EXPECT_GT(counter.timers, 10);
  KillTimer(nullptr, timer);
}

TEST_F(Win32ProcessesTest, AnEndOfTheProgramAskedForDuringAWaitComesAfterIt) {
  PostQuitMessage(7);
  RunSleeper("1000");
  loop_.Yield();
  MSG message{};
  EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7U);
}

TEST_F(Win32ProcessesTest, HiddenProgramsShareOneConsoleThatEachFindsAsNew) {
  ASSERT_EQ(Run("contract_child sleep 1000"), 0U);
  EXPECT_EQ(Run("contract_child companions"), 2U);  // itself and this process
  const auto codePage = Run("contract_child codepage");
  EXPECT_EQ(Run("contract_child codepage"), codePage);
  Run("contract_child interrupt");
  EXPECT_EQ(Run("contract_child companions"), 2U);

  FreeConsole();  // as when somebody ends the process behind it
  ASSERT_EQ(Run("contract_child sleep 1000"), 0U);
  EXPECT_EQ(Run("contract_child companions"), 2U);
}

TEST_F(Win32ProcessesTest, AnInstanceIsSeenInEverySessionAndGoesWithItsProcess) {
  EXPECT_FALSE(processes_.HasPreviousInstance());
  {
    windows::Win32Processes next{loop_};
    EXPECT_TRUE(next.HasPreviousInstance());
  }
  const windows::Handle mark(OpenMutexW(SYNCHRONIZE, FALSE, L"Global\\QXBackupUtility.Instance"));
  EXPECT_TRUE(mark);
}

TEST_F(Win32ProcessesTest, AProgramThatDiesLeavesADumpAndDiesAllTheSame) {
  const fs::path dump = folder_ / "BackupUtility.dmp";
  for (const auto& [way, code] : {std::pair("fault", 0xC0000005U), {"throw", 0xE0515842U}}) {
    SCOPED_TRACE(way);
    EXPECT_EQ(Run(std::string("contract_child ") + way + " \"" + folder_.string() + "\""), code);
    std::ifstream file(dump, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_TRUE(bytes.starts_with("MDMP"));
    file.close();
    EXPECT_TRUE(fs::remove(dump));
  }
}

TEST_F(Win32ProcessesTest, SeesWhatRuns) {
  const auto program = processes_.Start("contract_child sleep 2000", host::WindowStyle::Hidden);
  ASSERT_TRUE(program);
  const std::vector<std::string> names = processes_.RunningExecutables();
  for (const char* name : {"contract_child.exe", "contract_win32_tests.exe"})
    EXPECT_EQ(std::ranges::count(names, name), 1) << name;
}

}  // namespace
