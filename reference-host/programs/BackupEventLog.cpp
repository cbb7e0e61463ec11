// Saves the system's event logs as System.evt and Application.evt in its own folder.
//
// Where the system keeps no event log, the files hold text instead: what the system says of itself. The host's own logs
// are not taken in their place: they tell of patients, and whoever collects them filters them where that is wanted;
// this program cannot know. Exit code 0, 1 when a file could not be written.

#include <windows.h>

#include <fstream>
#include <string>

#include "common/Host.h"
#include "windows/adapters/Text.h"

namespace {

bool HasContent(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data = {};
  return GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) && (data.nFileSizeHigh || data.nFileSizeLow);
}

// An existing file is never overwritten by the system, so it goes first. A success that leaves an
// empty file behind is none: even a log without events has a header.
bool SaveEventLog(const wchar_t* log, const std::wstring& path) {
  DeleteFileW(path.c_str());
  const HANDLE handle = OpenEventLogW(nullptr, log);
  if (!handle) return false;
  const bool saved = BackupEventLogW(handle, path.c_str());
  CloseEventLog(handle);
  return saved && HasContent(path);
}

std::string SystemDescription() {
  OSVERSIONINFOW version = {};
  version.dwOSVersionInfoSize = sizeof version;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
  GetVersionExW(&version);
#pragma GCC diagnostic pop
  wchar_t name[MAX_COMPUTERNAME_LENGTH + 1] = {};
  DWORD size = MAX_COMPUTERNAME_LENGTH + 1;
  GetComputerNameW(name, &size);
  MEMORYSTATUSEX memory = {};
  memory.dwLength = sizeof memory;
  GlobalMemoryStatusEx(&memory);
  return "Computer: " + windows::Utf8(name) + "\r\nWindows: " + std::to_string(version.dwMajorVersion) + "." +
         std::to_string(version.dwMinorVersion) + "." + std::to_string(version.dwBuildNumber) +
         "\r\nUp for: " + std::to_string(GetTickCount64() / 1000) +
         " s\r\nMemory: " + std::to_string(memory.ullTotalPhys >> 20) + " MB\r\n";
}

bool WriteText(const std::wstring& path, const std::string& text) {
  std::ofstream file(path.c_str(), std::ios::binary);
  file << "This system keeps no event log.\r\n" << text;
  return static_cast<bool>(file.flush());
}

}  // namespace

int wmain() {
  const std::wstring folder = reference::OwnFolder();
  if (folder.empty()) return 1;
  const std::wstring system = folder + L"System.evt", application = folder + L"Application.evt";
  const bool first = SaveEventLog(L"System", system) || WriteText(system, SystemDescription());
  const bool second = SaveEventLog(L"Application", application) || WriteText(application, "");
  return first && second ? 0 : 1;
}
