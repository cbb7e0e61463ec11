#include "acceptance/Machine.h"

#include <array>
#include <fstream>
#include <random>
#include <sstream>

#include "operator/TestMachine.h"
#include "windows/adapters/Text.h"
#include "windows/adapters/Win32.h"
// After windows.h, on which they rest.
#include <objbase.h>
#include <shlobj.h>

namespace acceptance {
namespace {

namespace fs = std::filesystem;

constexpr wchar_t kUninstall[] = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
constexpr REGSAM kViews[] = {KEY_WOW64_32KEY, KEY_WOW64_64KEY};

struct KeyCloser {
  using pointer = HKEY;
  void operator()(HKEY key) const { RegCloseKey(key); }
};
using Key = std::unique_ptr<HKEY, KeyCloser>;

Key OpenKey(HKEY root, const std::wstring& path, REGSAM view = 0) {
  HKEY key = nullptr;
  RegOpenKeyExW(root, path.c_str(), 0, KEY_READ | view, &key);
  return Key(key);
}

/// A value as text, whatever it is; empty where there is none.
std::string ValueOf(HKEY root, const std::wstring& path, const wchar_t* name, REGSAM view = 0) {
  const Key key = OpenKey(root, path, view);
  std::array<wchar_t, 1024> text{};
  DWORD size = sizeof(wchar_t) * (text.size() - 1), type = REG_NONE;
  if (!key || RegQueryValueExW(key.get(), name, nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &size) != 0)
    return {};
  if (type == REG_DWORD) return std::to_string(*reinterpret_cast<const DWORD*>(text.data()));
  return windows::Utf8(text.data());
}

bool IsElevated() {
  HANDLE token = nullptr;
  OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token);
  const windows::Handle owner(token);
  TOKEN_ELEVATION elevation{};
  DWORD size = sizeof elevation;
  return GetTokenInformation(token, TokenElevation, &elevation, size, &size) && elevation.TokenIsElevated != 0;
}

std::string Version() {
  using Function = LONG(WINAPI*)(OSVERSIONINFOW*);
  auto* const address = reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll"), "RtlGetVersion"));
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof version;
  if (address != nullptr) reinterpret_cast<Function>(address)(&version);
  return std::to_string(version.dwMajorVersion) + "." + std::to_string(version.dwMinorVersion) + "." +
         std::to_string(version.dwBuildNumber);
}

/// What the class of this name is served by, in both views.
std::string ServerOf(const std::wstring& className) {
  CLSID id{};
  if (FAILED(CLSIDFromProgID(className.c_str(), &id))) return "not there";
  wchar_t text[64] = L"";
  StringFromGUID2(id, text, 64);
  std::string servers;
  for (const REGSAM view : kViews) {
    const std::string path =
        ValueOf(HKEY_CLASSES_ROOT, std::wstring(L"CLSID\\") + text + L"\\InprocServer32", L"", view);
    servers += (view == KEY_WOW64_32KEY ? "32 bits: " : "; 64 bits: ") + (path.empty() ? "none" : path);
  }
  return servers;
}

/// Names of the keys below one; with `whole`, to any depth, and their values.
void AddKeys(HKEY root, const std::wstring& path, REGSAM view, bool whole, Snapshot& snapshot) {
  const Key key = OpenKey(root, path, view);
  if (!key) return;
  const std::string head = (view == KEY_WOW64_32KEY ? "registry, 32 bits: " : "registry: ") + windows::Utf8(path);
  std::array<wchar_t, 256> name{};
  for (DWORD i = 0;; ++i) {
    DWORD size = name.size();
    if (RegEnumKeyExW(key.get(), i, name.data(), &size, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
    snapshot[head + "\\" + windows::Utf8(name.data())] = "a key";
    if (whole) AddKeys(root, path + L"\\" + name.data(), view, whole, snapshot);
  }
  for (DWORD i = 0; whole; ++i) {
    DWORD size = name.size();
    if (RegEnumValueW(key.get(), i, name.data(), &size, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
    snapshot[head + ": " + windows::Utf8(name.data())] = ValueOf(root, path, name.data(), view);
  }
}

void AddFiles(const fs::path& folder, bool below, Snapshot& snapshot) {
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, fs::directory_options::skip_permission_denied, error)) {
    const bool isFolder = entry.is_directory(error);
    // Folders change their time by whatever is looked for in them.
    snapshot["file: " + windows::Utf8(entry.path().wstring())] =
        isFolder ? "a folder" : std::to_string(entry.file_size(error)) + " bytes";
    if (isFolder && below) AddFiles(entry.path(), true, snapshot);
  }
}

fs::path KnownFolder(int folder) {
  wchar_t path[MAX_PATH] = L"";
  SHGetFolderPathW(nullptr, folder, nullptr, 0, path);
  return path;
}

fs::path WindowsFolder() {
  wchar_t path[MAX_PATH] = L"";
  GetSystemWindowsDirectoryW(path, MAX_PATH);
  return path;
}

}  // namespace

bool IsWine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") != nullptr;
}

std::string WhyRefused() {
  for (const REGSAM view : kViews) {
    if (OpenKey(HKEY_LOCAL_MACHINE, endtoend::kHostKey, view)) return "this machine has a host system";
    if (OpenKey(HKEY_LOCAL_MACHINE, std::wstring(kUninstall) + L"\\QXBackupUtility", view))
      return "QXBackupUtility is installed on this machine";
  }
  if (fs::exists(L"C:\\Tarsus")) return "C:\\Tarsus is there";
  if (!IsElevated()) return "administrator's rights are missing";
  return {};
}

void AddFacts(Report& report) {
  const auto add = [&](const std::string& what, const std::string& words) {
    report.Add({what, Verdict::Fact, words.empty() ? "none" : words});
  };
  const std::wstring current = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
  const std::wstring system = L"SYSTEM\\CurrentControlSet\\Control\\FileSystem";
  SYSTEM_INFO processor{};
  GetNativeSystemInfo(&processor);
  add("Windows", IsWine() ? "Wine: what only Windows can answer stays unanswered" : Version());
  add("edition", ValueOf(HKEY_LOCAL_MACHINE, current, L"ProductName", KEY_WOW64_64KEY));
  add("bits", processor.wProcessorArchitecture == PROCESSOR_ARCHITECTURE_INTEL ? "32" : "64");
  add("processors", std::to_string(processor.dwNumberOfProcessors));
  add("code pages (ANSI, OEM)", std::to_string(GetACP()) + ", " + std::to_string(GetOEMCP()));
  wchar_t locale[LOCALE_NAME_MAX_LENGTH] = L"";
  GetUserDefaultLocaleName(locale, LOCALE_NAME_MAX_LENGTH);
  add("locale", windows::Utf8(locale));
  const HDC screen = GetDC(nullptr);
  add("dots an inch", std::to_string(GetDeviceCaps(screen, LOGPIXELSX)));
  ReleaseDC(nullptr, screen);
  add("screen", std::to_string(GetSystemMetrics(SM_CXSCREEN)) + " x " + std::to_string(GetSystemMetrics(SM_CYSCREEN)) +
                    ", screens: " + std::to_string(GetSystemMetrics(SM_CMONITORS)));
  const std::wstring policies = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Policies\\System";
  add("user account control", ValueOf(HKEY_LOCAL_MACHINE, policies, L"EnableLUA", KEY_WOW64_64KEY));
  add("short names switched off", ValueOf(HKEY_LOCAL_MACHINE, system, L"NtfsDisable8dot3NameCreation"));
  add("long paths switched on", ValueOf(HKEY_LOCAL_MACHINE, system, L"LongPathsEnabled"));
  for (const wchar_t* name : {L"ADODB.Connection", L"ADODB.Recordset", L"DAO.DBEngine.36", L"DAO.DBEngine.120"})
    add(windows::Utf8(name), ServerOf(name));
  add("temporary folder", windows::Utf8(fs::temp_directory_path().wstring()));
}

Snapshot TakeSnapshot() {
  Snapshot snapshot;
  for (const REGSAM view : kViews) {
    AddKeys(HKEY_LOCAL_MACHINE, L"SOFTWARE", view, false, snapshot);
    AddKeys(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Orvantis", view, true, snapshot);
    AddKeys(HKEY_LOCAL_MACHINE, kUninstall, view, false, snapshot);
    AddKeys(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Classes", view, false, snapshot);
    AddKeys(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Classes\\CLSID", view, false, snapshot);
    AddKeys(HKEY_LOCAL_MACHINE, L"SOFTWARE\\ODBC", view, true, snapshot);
  }
  AddKeys(HKEY_CURRENT_USER, L"Software", 0, false, snapshot);
  const fs::path windows = WindowsFolder();
  for (const fs::path& folder :
       {fs::path(L"C:\\"), windows, windows / "System32", windows / "SysWOW64", KnownFolder(CSIDL_PROGRAM_FILES),
        KnownFolder(CSIDL_PROGRAM_FILESX86), KnownFolder(CSIDL_PROFILE), KnownFolder(CSIDL_COMMON_APPDATA)})
    AddFiles(folder, false, snapshot);
  for (const int folder :
       {CSIDL_COMMON_STARTMENU, CSIDL_STARTMENU, CSIDL_COMMON_DESKTOPDIRECTORY, CSIDL_DESKTOPDIRECTORY})
    AddFiles(KnownFolder(folder), true, snapshot);
  return snapshot;
}

void Compare(const Snapshot& before, const Snapshot& after, Report& report) {
  std::size_t changes = 0;
  const auto tell = [&](const std::string& name, const std::string& words) {
    report.Add({name, Verdict::Wrong, words});
    ++changes;
  };
  for (const auto& [name, value] : before) {
    const auto now = after.find(name);
    if (now == after.end()) tell(name, "was there before, and is gone");
    if (now != after.end() && now->second != value) tell(name, "was " + value + ", and is " + now->second);
  }
  for (const auto& [name, value] : after) {
    if (!before.contains(name)) tell(name, "was not there before");
  }
  report.Check("of " + std::to_string(before.size()) + " names none has come, gone or changed", changes == 0);
}

void MarkForTests(const std::vector<fs::path>& folders) {
  std::random_device random;
  std::ostringstream word;
  for (int i = 0; i < 4; ++i) word << std::hex << random();
  std::ofstream(WindowsFolder() / endtoend::kMachineMark) << word.str() << "\n";
  for (const fs::path& folder : folders) std::ofstream(folder / endtoend::kFolderMark) << word.str() << "\n";
}

}  // namespace acceptance
