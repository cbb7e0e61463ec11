// The host application. "/a" says that a program started it, not a person.
//
// Every start leaves its command line in Tarsus.log in the host's log folder. A second
// instance only brings the first one to the front.

#include <windows.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "application/TarsusIds.h"
#include "common/Host.h"
#include "windows/adapters/Text.h"

namespace {

constexpr wchar_t kClassName[] = L"" TARSUS_MAIN_CLASS;

void RegisterWindowClass() {
  WNDCLASSEXW windowClass = {};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = DefDlgProcW;
  windowClass.cbWndExtra = DLGWINDOWEXTRA;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  windowClass.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
  windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  windowClass.lpszClassName = kClassName;
  RegisterClassExW(&windowClass);
}

// The window's own font, larger.
HFONT CreateTitleFont(HWND window) {
  LOGFONTW font = {};
  const auto own = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
  GetObjectW(own, sizeof font, &font);
  font.lfHeight = font.lfHeight * 2;
  font.lfWeight = FW_SEMIBOLD;
  return CreateFontIndirectW(&font);
}

// The path table's, or else in the folder beside the host's system folder.
std::wstring UtilityPath() {
  const auto entry = reference::ReadPathEntry("BackupUtility");
  if (entry) return windows::Utf16(*entry);
  return reference::OwnFolder() + L"..\\Program\\QXBackupUtility.exe";
}

/// The host application's main window.
class HostWindow {
 public:
  /// `state` says in a line how the application came to run.
  explicit HostWindow(std::wstring state) : state_(std::move(state)) {}
  ~HostWindow();
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  /// Shows the window until File/Exit or the close box. False when it cannot be made.
  bool Run();

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR Handle(UINT message, WPARAM wParam);
  void Fill();
  /// The backup utility starts the application again when it ends, so this one makes room.
  void StartBackupUtility();

  std::wstring state_;
  HWND window_ = nullptr;
  HFONT titleFont_ = nullptr;
};

HostWindow::~HostWindow() {
  if (titleFont_) DeleteObject(titleFont_);
}

bool HostWindow::Run() {
  RegisterWindowClass();
  return DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(TARSUS_MAIN_TEMPLATE), nullptr, &Procedure,
                         reinterpret_cast<LPARAM>(this)) > 0;
}

INT_PTR CALLBACK HostWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(window, DWLP_USER, lParam);
    reinterpret_cast<HostWindow*>(lParam)->window_ = window;
  }
  auto* self = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, DWLP_USER));
  return self ? self->Handle(message, wParam) : FALSE;
}

INT_PTR HostWindow::Handle(UINT message, WPARAM wParam) {
  if (message == WM_INITDIALOG) {
    Fill();
    return TRUE;
  }
  if (message == WM_CLOSE) {
    EndDialog(window_, 1);
    return TRUE;
  }
  if (message != WM_COMMAND) return FALSE;
  if (LOWORD(wParam) == TARSUS_EXIT) EndDialog(window_, 1);
  if (LOWORD(wParam) == TARSUS_BACKUP) StartBackupUtility();
  return TRUE;  // also for Esc, which must not end the host
}

void HostWindow::Fill() {
  titleFont_ = CreateTitleFont(window_);
  SendDlgItemMessageW(window_, TARSUS_NAME, WM_SETFONT, reinterpret_cast<WPARAM>(titleFont_), TRUE);
  const std::string version = reference::ReadRegistryText("SoftwareVersion").value_or("unknown");
  SetDlgItemTextW(window_, TARSUS_VERSION, (L"Software version " + windows::Utf16(version)).c_str());
  SetDlgItemTextW(window_, TARSUS_STATE, state_.c_str());
}

void HostWindow::StartBackupUtility() {
  const std::wstring path = UtilityPath();
  std::wstring command = L"\"" + path + L"\"";
  const std::wstring folder = path.substr(0, path.rfind(L'\\') + 1);
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(), &startup,
                      &process)) {
    SetDlgItemTextW(window_, TARSUS_STATE, (L"Cannot start " + path).c_str());
    return;
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  EndDialog(window_, 1);
}

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
    if (const HWND running = FindWindowW(kClassName, nullptr)) {
      ShowWindow(running, SW_RESTORE);
      SetForegroundWindow(running);
    }
    return 0;
  }
  HostWindow window(IsAutomatic(arguments) ? L"Started automatically." : L"Started by hand.");
  return window.Run() ? 0 : 1;
}
