#include "application/HostWindow.h"

#include "application/TarsusIds.h"
#include "common/HostPaths.h"
#include "windows/adapters/Text.h"

namespace application {
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
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::wstring own = path;
  return own.substr(0, own.rfind(L'\\') + 1) + L"..\\Program\\QXBackupUtility.exe";
}

}  // namespace

HWND FindRunningWindow() {
  return FindWindowW(kClassName, nullptr);
}

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

}  // namespace application
