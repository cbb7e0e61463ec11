// Programs of the system, and what Windows grants those that run: what is assumed of them where Wine has none, or
// others.
#include "questions/Scene.h"
#include "windows/adapters/Text.h"
#include "windows/adapters/Win32Processes.h"
// After windows.h, on which it rests.
#include <objbase.h>

namespace questions {
namespace {

class Programs : public ::testing::Test {
 protected:
  Scene scene_;
};

// A host's batch file reads from nowhere; the manual tells integrators which questions it may not ask.
TEST_F(Programs, QuestionsOfBatchFilesEndAtOnce) {
  WriteFile("pause.bat", "@pause\r\n@exit /b 3\r\n");
  WriteFile("timeout.bat", "@timeout /t 20\r\n@exit /b %errorlevel%\r\n");
  WriteFile("choice.bat", "@choice /c yn\r\n@exit /b %errorlevel%\r\n");
  EXPECT_EQ(scene_.Run("CMD /C pause.bat"), 3U);
  EXPECT_EQ(scene_.Run("CMD /C timeout.bat"), 1U);
  EXPECT_EQ(scene_.Run("CMD /C choice.bat"), 255U);
}

TEST_F(Programs, TheInterpreterCanBeKeptFromTheCurrentFolder) {
  WriteFile("xcopy.bat", "@exit /b 77\r\n");
  SetEnvironmentVariableW(L"NoDefaultCurrentDirectoryInExePath", L"1");
  EXPECT_NE(scene_.Run("CMD /C xcopy none there"), 77U);
  SetEnvironmentVariableW(L"NoDefaultCurrentDirectoryInExePath", nullptr);
}

// What the program exports with, in the words that the host's job file has.
TEST_F(Programs, TheRegistryIsSavedWithAdministratorsRights) {
  EXPECT_EQ(scene_.Run("Reg.exe save HKLM\\SOFTWARE\\Microsoft\\Notepad saved.reg"), 0U);
  EXPECT_TRUE(fs::exists("saved.reg"));
}

TEST_F(Programs, AnEventLogIsExported) {
  const HANDLE log = OpenEventLogW(nullptr, L"System");
  ASSERT_NE(log, nullptr);
  EXPECT_TRUE(BackupEventLogW(log, (scene_.Folder() / "System.evt").c_str()));
  CloseEventLog(log);
  EXPECT_GT(fs::file_size("System.evt"), 0U);
}

TEST_F(Programs, TheScriptHostTellsOfAnErrorNobodyCatches) {
  WriteFile("good.js", "WScript.Quit(5);");
  WriteFile("bad.js", "nothing.at.all();");
  EXPECT_EQ(scene_.Run("cscript //B good.js"), 5U);
  EXPECT_NE(scene_.Run("cscript //B bad.js"), 0U);
}

// Two people at one workstation, one behind the other: the instance's mark must be seen from both sessions.
TEST_F(Programs, AMarkIsSeenFromAnotherSession) {
  windows::Win32MessageLoop loop;
  const windows::Win32Processes instance(loop);
  const std::string answer = windows::Utf8((scene_.Folder() / "seen").wstring());
  wchar_t self[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  const std::string command = "\\\"" + windows::Utf8(self) + "\\\" --look-for-mark \\\"" + answer + "\\\"";
  const auto run = [&](const std::string& verb, const std::string& rest) {
    return scene_.Run("schtasks /" + verb + " /tn QXBackupUtilityQuestion " + rest);
  };
  ASSERT_EQ(run("create", "/f /ru SYSTEM /sc once /st 00:00 /tr \"" + command + "\""), 0U);
  EXPECT_EQ(run("run", ""), 0U);
  for (int tries = 0; tries < 100 && !fs::exists("seen"); ++tries) Sleep(100);
  Sleep(100);
  run("delete", "/f");
  EXPECT_EQ(ReadFile("seen"), "seen from session 0");
}

// No sleep while a job runs, and a reason at shutdown.
TEST_F(Programs, TheSystemTakesAReasonNotToShutDown) {
  const HWND window = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  ASSERT_NE(window, nullptr);
  EXPECT_TRUE(ShutdownBlockReasonCreate(window, L"A question"));
  EXPECT_TRUE(ShutdownBlockReasonDestroy(window));
  EXPECT_NE(SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED), 0U);
  EXPECT_NE(SetThreadExecutionState(ES_CONTINUOUS), 0U);
  DestroyWindow(window);
}

// The host's data access, in this program's bitness.
TEST_F(Programs, TheDataAccessClassesAreThere) {
  ASSERT_GE(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), 0);
  for (const wchar_t* name : {L"ADODB.Connection", L"ADODB.Recordset"}) {
    CLSID id{};
    ASSERT_GE(CLSIDFromProgID(name, &id), 0) << windows::Utf8(name);
    void* object = nullptr;
    EXPECT_GE(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &object), 0) << windows::Utf8(name);
    if (object != nullptr) static_cast<IUnknown*>(object)->Release();
  }
  CoUninitialize();
}

}  // namespace
}  // namespace questions
