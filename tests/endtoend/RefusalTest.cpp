// Nothing that tests and tools would disturb is touched without the marks that prove it to be made for tests.
#include <cstdlib>
#include <stdexcept>

#include "EndToEndTest.h"

namespace endtoend {
namespace {

fs::path WindowsFolder() {
  wchar_t folder[MAX_PATH] = L"";
  GetSystemWindowsDirectoryW(folder, MAX_PATH);
  return folder;
}

/// Another mark, or none, stands in the place of this one: what a drive out of another test machine has, and a real
/// one.
class Unmarked {
 public:
  Unmarked(fs::path mark, bool foreign) : mark_(std::move(mark)), word_(ReadBytes(mark_)) {
    EXPECT_FALSE(word_.empty()) << mark_;
    fs::remove(mark_);
    if (foreign) WriteBytes(mark_, "00000000000000000000000000000000\n");
  }
  ~Unmarked() { WriteBytes(mark_, word_); }
  Unmarked(const Unmarked&) = delete;
  Unmarked& operator=(const Unmarked&) = delete;

 private:
  fs::path mark_;
  std::string word_;
};

/// Everything that a test could take away, but for the marks.
std::vector<std::map<std::string, std::string>> Everything() {
  std::vector<std::map<std::string, std::string>> all;
  for (const fs::path& folder : {kTarsus, kMedium, kForeignMedium, fs::temp_directory_path()})
    all.push_back(Snapshot(folder));
  for (auto& files : all) files.erase(Utf8(kFolderMark));
  return all;
}

class Refusal : public EndToEndTest {
 protected:
  void SetUp() override {
    EndToEndTest::SetUp();
    for (const fs::path& folder : {kMedium, kForeignMedium, fs::temp_directory_path()})
      WriteBytes(folder / "somebody's.txt", "irreplaceable");
    WriteBytes(kTarsus / "Log" / "BackupUtility.log", "irreplaceable");
  }
};

TEST_F(Refusal, OfEachPlaceWithoutItsMark) {
  const fs::path machine = WindowsFolder() / kMachineMark;
  const fs::path profile = fs::temp_directory_path() / "..";
  const auto before = Everything();
  for (const bool foreign : {false, true}) {
    for (const fs::path& mark :
         {machine, kTarsus / kFolderMark, kMedium / kFolderMark, kForeignMedium / kFolderMark, profile / kFolderMark}) {
      SCOPED_TRACE(mark);
      const Unmarked unmarked(mark, foreign);
      EXPECT_THROW(TidyUp(), std::runtime_error);
    }
  }
  {
    const Unmarked unmarked(kTarsus / kFolderMark, true);
    EXPECT_THROW(static_cast<void>(Altered(kTarsus / "Program" / "QX32.dll")), std::runtime_error);
  }
  {
    Program runs("cmd /c pause");
    const Unmarked unmarked(machine, false);
    EXPECT_THROW(EndAll(L"cmd.exe"), std::runtime_error);
    EXPECT_EQ(WaitForSingleObject(runs.Handle(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_THROW(static_cast<void>(WithoutValue(kHostKey, L"PathAppl")), std::runtime_error);
    EXPECT_THROW(Program("cmd /c exit"), std::runtime_error);
  }
  EXPECT_TRUE(Everything() == before);
}

/// Whole programs as somebody might start them by mistake.
TEST_F(Refusal, OfEachProgram) {
  wchar_t self[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  const fs::path own = fs::path(self).parent_path();
  const fs::path contract = own.parent_path() / "tests" / "contract" / "host" / "contract_win32_tests.exe";
  const auto runs = [](const fs::path& program, const wchar_t* argument = L"1") {
    EXPECT_TRUE(fs::exists(program)) << program;
    // Not through Program, which refuses by itself; and what they say of themselves is not said of this test.
    return _wsystem((L"\"\"" + program.wstring() + L"\" " + argument + L" >nul 2>&1\"").c_str()) == 0;
  };
  const auto before = Everything();
  // The packages want a machine without a host, whatever its marks.
  EXPECT_FALSE(runs(own / "qx_installer_tests.exe"));
  const Unmarked unmarked(kTarsus / kFolderMark, true);
  EXPECT_FALSE(runs(own / "qx_endtoend_tests.exe", L"--gtest_filter=SignIn.*"));
  for (const fs::path& program : {own / "reference_host_tests.exe", own / "reference_components_tests.exe", contract})
    EXPECT_FALSE(runs(program)) << program;
  const Unmarked machine(WindowsFolder() / kMachineMark, false);
  for (const char* program : {"operator.exe", "looks.exe", "soak.exe"}) EXPECT_FALSE(runs(own / program)) << program;
  EXPECT_FALSE(runs(contract));
  EXPECT_TRUE(Everything() == before);
}

}  // namespace
}  // namespace endtoend
