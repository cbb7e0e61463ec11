// The packages, installed, used, upgraded and removed on a machine that has nothing of ours. They stand in the
// folder that the environment variable PACKAGES names, beside the folder bin of their build; an older package
// of the program is in its folder older.

#include <algorithm>
#include <cstdlib>
#include <set>
#include <stdexcept>

#include "EndToEndTest.h"
// After windows.h, on which it rests.
#include <objbase.h>

namespace endtoend {
namespace {

constexpr wchar_t kDriver[] = L"SOFTWARE\\ODBC\\ODBCINST.INI\\SQLite3";
constexpr wchar_t kEventSource[] = L"SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\QXBackupUtility";
constexpr wchar_t kUninstall[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";
/// What an installer answers.
enum : DWORD {
  kInstalled = 0,
  kAborted = 2,
  kInUse = ERROR_SHARING_VIOLATION,
  kWrongOption = ERROR_INVALID_PARAMETER,
  kAnotherHost = ERROR_ALREADY_EXISTS
};

const fs::path kAlone = L"C:\\Program Files\\QXBackupUtility";
const fs::path kBesideHost = kTarsus / "Program";
const fs::path kFolders[] = {kAlone, kTarsus, L"C:\\Elsewhere"};
const fs::path kShortcut = L"C:\\ProgramData\\Microsoft\\Windows\\Start Menu\\Programs\\QXBackupUtility.lnk";

fs::path Packages() {
  const wchar_t* const folder = _wgetenv(L"PACKAGES");
  return folder ? folder : L"";
}

std::string Package(const fs::path& folder, const std::wstring& name) {
  for (const auto& entry : fs::directory_iterator(folder)) {
    const std::wstring file = entry.path().filename().wstring();
    if (file.starts_with(name) && file.ends_with(L"-setup.exe")) return "\"" + Utf8(entry.path().wstring()) + "\"";
  }
  return "no package";
}

DWORD ExitCodeOf(const std::string& commandLine) {
  return Program(commandLine).WaitForEnd();
}

DWORD InstallProgram(const std::string& options = {}, const fs::path& packages = Packages()) {
  return ExitCodeOf(Package(packages, L"QXBackupUtility-") + " /S " + options);
}

DWORD InstallHost() {
  return ExitCodeOf(Package(Packages(), L"ReferenceHost-") + " /S");
}

/// A text of the entry in the list of installed programs; empty when there is none.
std::string Listed(const wchar_t* value, const std::wstring& product = L"QXBackupUtility") {
  wchar_t text[512] = L"";
  DWORD size = sizeof(text);
  RegGetValueW(HKEY_LOCAL_MACHINE, (kUninstall + product).c_str(), value, RRF_RT_REG_SZ, nullptr, text, &size);
  return Utf8(text);
}

DWORD NumberAt(const std::wstring& key, const wchar_t* value) {
  DWORD number = 0, size = sizeof(number);
  RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), value, RRF_RT_REG_DWORD, nullptr, &number, &size);
  return number;
}

bool HasKey(const std::wstring& path) {
  HKEY key = nullptr;
  const bool has = RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &key) == ERROR_SUCCESS;
  if (has) RegCloseKey(key);
  return has;
}

/// Uninstalls as the list of installed programs would, and waits for the end. True also when nothing is installed.
bool Uninstall(const std::wstring& product = L"QXBackupUtility") {
  const std::string command = Listed(L"QuietUninstallString", product);
  if (command.empty()) return true;
  const std::string uninstaller = command.substr(1, command.rfind('"') - 1);
  ExitCodeOf(command);  // ends at once; a copy of it goes on
  return WaitUntil([&] { return Listed(L"DisplayName", product).empty() && !fs::exists(uninstaller); });
}

std::set<std::string> NamesIn(const fs::path& folder) {
  std::set<std::string> names;
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator(folder, ignored))
    names.insert(Utf8(entry.path().filename().wstring()));
  return names;
}

/// Whether nothing stands where the packages go. Asked once, before the first of them: what is there later, they
/// brought.
bool HadNothing() {
  static const bool had =
      HasKey(kHostKey) || std::ranges::any_of(kFolders, [](const auto& f) { return fs::exists(f); });
  return !had;
}

std::string BuiltProgram() {
  return ReadBytes(Packages().parent_path() / "bin" / "QXBackupUtility.exe");
}

class Installer : public EndToEndTest {
 protected:
  void SetUp() override { Clean(); }
  void TearDown() override { Clean(); }

  static void Clean() {
    if (!HadNothing()) throw std::runtime_error("this machine has a host system, or the program, that is not ours");
    for (const wchar_t* executable : {L"QXBackupUtility.exe", L"Tarsus.exe"}) EndAll(executable);
    EXPECT_TRUE(Uninstall());
    EXPECT_TRUE(Uninstall(L"TarsusReferenceHost"));
    std::error_code ignored;
    for (const auto& folder : kFolders) fs::remove_all(folder, ignored);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kHostKey);
  }
};

TEST_F(Installer, InstallsTheProgramAloneAndRemovesEverything) {
  const fs::path log = fs::temp_directory_path() / "a log.txt";
  ASSERT_EQ(InstallProgram("/LOG=\"" + Utf8(log.wstring()) + "\""), kInstalled);
  EXPECT_NE(ReadBytes(log).find("Installed in " + Utf8(kAlone.wstring())), std::string::npos) << ReadBytes(log);
  EXPECT_TRUE(HasKey(kEventSource));
  const std::set<std::string> installed = {
      "QXBackupUtility.exe", "QXBackupUtility.html", "QXBackupUtility-notices.txt",   "QXBackupUtility.cdx.json",
      "QXHostCheck.exe",     "QXSetCheck.exe",       "QXBackupUtility-uninstall.exe", "cabarc.exe"};
  EXPECT_EQ(NamesIn(kAlone), installed);
  EXPECT_EQ(ReadBytes(kAlone / "QXBackupUtility.exe"), BuiltProgram());
  EXPECT_TRUE(fs::exists(kShortcut));
  EXPECT_EQ(Listed(L"DisplayName"), "QXBackupUtility");
  EXPECT_FALSE(Listed(L"Publisher").empty());
  EXPECT_EQ(Listed(L"InstallLocation"), Utf8(kAlone.wstring()));
  EXPECT_NE(Package(Packages(), L"QXBackupUtility-").find("-" + Listed(L"DisplayVersion") + "-"), std::string::npos);
  EXPECT_GE(NumberAt(kUninstall + std::wstring(L"QXBackupUtility"), L"EstimatedSize"), BuiltProgram().size() / 1024);

  EXPECT_EQ(ExitCodeOf("\"" + Utf8((kAlone / "QXBackupUtility-uninstall.exe").wstring()) +
                       "\" /S /ALL _?=" + Utf8(kAlone.wstring())),
            kWrongOption);
  ASSERT_TRUE(Uninstall());
  EXPECT_FALSE(fs::exists(kAlone));
  EXPECT_FALSE(fs::exists(kShortcut));
  EXPECT_FALSE(HasKey(kEventSource));
}

TEST_F(Installer, TheArchiverIsForFoldersWithoutOne) {
  const fs::path folder = L"C:\\Elsewhere", archiver = folder / "cabarc.exe";
  const std::string ours = ReadBytes(Packages().parent_path() / "bin" / "cabarc.exe");
  const struct {
    const char* option;
    bool before;      // another archiver stands in the folder
    std::string now;  // which one stands there when the program is installed
  } cases[] = {
      {"", false, ours},           {"", true, "other"}, {"/CABARC=no", false, ""}, {"/CABARC=no", true, "other"},
      {"/CABARC=yes", true, ours},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(std::string(row.option) + (row.before ? " beside another" : ""));
    fs::create_directory(folder);
    if (row.before) WriteBytes(archiver, "other");
    for (int times = 0; times < 2; ++times) {  // a second run finds its own work
      ASSERT_EQ(InstallProgram(std::string(row.option) + " /D=C:\\Elsewhere"), kInstalled);
      EXPECT_TRUE(ReadBytes(archiver) == row.now);
    }
    ASSERT_TRUE(Uninstall());
    EXPECT_EQ(ReadBytes(archiver), row.before ? "other" : "");
    fs::remove_all(folder);
  }
  for (const char* options : {"/CABARC=maybe", "/D=Q:\\Nowhere", "/SILENT", "stray", "/LOG=Q:\\no.log"})
    EXPECT_EQ(InstallProgram(options), kWrongOption) << options;
  fs::create_directories(folder / "QXBackupUtility.html");  // in the file's way
  EXPECT_EQ(InstallProgram("/D=C:\\Elsewhere"), kAborted);
  EXPECT_TRUE(Listed(L"DisplayName").empty());
  EXPECT_FALSE(fs::exists(kAlone));
}

TEST_F(Installer, TheProgramRunsOnTheInstalledHostAndCannotBeTouchedMeanwhile) {
  ASSERT_EQ(InstallHost(), kInstalled);
  EXPECT_TRUE(HasKey(kDriver));
  EXPECT_TRUE(fs::exists(kTarsus / "THIS IS A DEMONSTRATION.txt"));
  const std::set<std::string> hostFiles = NamesIn(kBesideHost);
  EXPECT_TRUE(hostFiles.contains("ReferenceHost-notices.txt") && hostFiles.contains("ReferenceHost.cdx.json"));
  ASSERT_EQ(InstallProgram(), kInstalled);
  EXPECT_EQ(Listed(L"InstallLocation"), Utf8(kBesideHost.wstring()));
  EXPECT_EQ(ExitCodeOf("cmd /c C:\\Tarsus\\Program\\QXHostCheck.exe >nul"), 0U) << "things are missing";
  {
    Operator person;
    person.SignIn();
    EXPECT_EQ(InstallProgram("", Packages() / "older"), kInUse);
    EXPECT_EQ(ExitCodeOf("\"C:\\Tarsus\\Program\\QXBackupUtility-uninstall.exe\" /S _?=C:\\Tarsus\\Program"), kInUse);
    EXPECT_EQ(ExitCodeOf("\"C:\\Tarsus\\ReferenceHost-uninstall.exe\" /S _?=C:\\Tarsus"), kInUse);
    EXPECT_TRUE(fs::exists(kBesideHost / "QX32.dll"));
    EXPECT_TRUE(fs::exists(kShortcut));
    EXPECT_EQ(ReadBytes(kBesideHost / "QXBackupUtility.exe"), BuiltProgram());
    person.End();
  }
  EXPECT_EQ(LogLines().back(), "[Informatin]  Finish Backup Utility");

  ASSERT_TRUE(Uninstall());
  EXPECT_EQ(NamesIn(kBesideHost), hostFiles);
  ASSERT_TRUE(Uninstall(L"TarsusReferenceHost"));
  EXPECT_FALSE(HasKey(kDriver));
  CLSID classId = {};
  EXPECT_TRUE(FAILED(CLSIDFromProgID(L"Tarsus.LogWriter", &classId)));
  // What the work at the host has left, and nothing that was installed.
  for (const auto& [name, bytes] : Snapshot(kTarsus)) EXPECT_TRUE(name.starts_with("Log\\")) << name;
}

TEST_F(Installer, AnUpgradeReplacesTheFilesAndKeepsTheSettings) {
  ASSERT_EQ(InstallProgram("", Packages() / "older"), kInstalled);
  EXPECT_EQ(Listed(L"DisplayVersion"), "0.9.0");
  EXPECT_NE(ReadBytes(kAlone / "QXBackupUtility.exe"), BuiltProgram());
  const std::set<std::string> names = NamesIn(kAlone);
  const DWORD place = 1234;
  const std::wstring settings = std::wstring(kHostKey) + L"\\BackupUtility";
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, settings.c_str(), L"dlgMainMenuLeft", REG_DWORD, &place, sizeof(place));

  ASSERT_EQ(InstallProgram(), kInstalled);
  EXPECT_NE(Listed(L"DisplayVersion"), "0.9.0");
  EXPECT_EQ(ReadBytes(kAlone / "QXBackupUtility.exe"), BuiltProgram());
  EXPECT_NE(ReadBytes(kAlone / "QXBackupUtility.html").find("<html"), std::string::npos);
  EXPECT_EQ(NamesIn(kAlone), names);

  ASSERT_EQ(InstallProgram("/CABARC=no"), kInstalled);
  EXPECT_FALSE(fs::exists(kAlone / "cabarc.exe"));

  // To another folder: one program serves the machine.
  ASSERT_EQ(InstallProgram("/D=C:\\Elsewhere"), kInstalled);
  EXPECT_FALSE(fs::exists(kAlone));
  EXPECT_EQ(NamesIn(L"C:\\Elsewhere"), names);
  ASSERT_TRUE(Uninstall());
  EXPECT_EQ(NumberAt(settings, L"dlgMainMenuLeft"), place);
}

TEST_F(Installer, TheDemonstrationRefusesAMachineWithAHost) {
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, kHostKey, L"PathAppl", REG_SZ, L"D:\\Host", 16);
  EXPECT_EQ(InstallHost(), kAnotherHost);
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, kHostKey);
  fs::create_directory(kTarsus);
  EXPECT_EQ(InstallHost(), kAnotherHost);
  EXPECT_TRUE(NamesIn(kTarsus).empty());
}

}  // namespace
}  // namespace endtoend
