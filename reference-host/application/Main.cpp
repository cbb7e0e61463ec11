// The host application. "/a" says that a program started it, not a person.
//
// Every start leaves its command line in Tarsus.log in the host's log folder. A second
// instance only brings the first one to the front.

#include <windows.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "application/HostWindow.h"
#include "common/HostPaths.h"
#include "windows/adapters/Text.h"

namespace {

void LogStart(const wchar_t* commandLine) {
  std::wstring folder = windows::Utf16(reference::ReadPathEntry("Log").value_or(""));
  if (folder.empty()) return;
  if (!folder.ends_with(L'\\')) folder += L'\\';
  SYSTEMTIME now = {};
  GetLocalTime(&now);
  char stamp[40] = {};
  std::snprintf(stamp, sizeof stamp, "[%04u/%02u/%02u %02u:%02u:%02u]", now.wYear, now.wMonth, now.wDay, now.wHour,
                now.wMinute, now.wSecond);
  std::ofstream log((folder + L"Tarsus.log").c_str(), std::ios::binary | std::ios::app);
  log << stamp << " Start " << windows::ToCodePageStrictly(windows::Utf8(commandLine)) << "\r\n";
}

bool IsAutomatic(const wchar_t* arguments) {
  return CompareStringOrdinal(arguments, -1, L"/a", -1, TRUE) == CSTR_EQUAL;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR arguments, int) {
  LogStart(GetCommandLineW());
  const HANDLE instance = CreateMutexW(nullptr, FALSE, L"Local\\TarsusHostApplication");
  if (instance && GetLastError() == ERROR_ALREADY_EXISTS) {
    if (const HWND running = application::FindRunningWindow()) {
      ShowWindow(running, SW_RESTORE);
      SetForegroundWindow(running);
    }
    return 0;
  }
  application::HostWindow window(IsAutomatic(arguments) ? L"Started automatically." : L"Started by hand.");
  return window.Run() ? 0 : 1;
}
