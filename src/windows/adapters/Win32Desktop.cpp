// Serving of messages, the shell's dialogs and copies, and the local time.
#include "windows/adapters/Win32Desktop.h"

#include <memory>

#include "windows/adapters/ApiPath.h"
#include "windows/adapters/Results.h"
#include "windows/adapters/Text.h"
// After Win32.h, on which they rest.
#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>

namespace windows {
namespace {

constexpr ULONGLONG kServeEvery = 10;  // milliseconds

// File-system folders only, none below a domain, an edit box, the resizable dialog.
constexpr UINT kBrowseFlags = BIF_RETURNONLYFSDIRS | BIF_DONTGOBELOWDOMAIN | BIF_EDITBOX | BIF_NEWDIALOGSTYLE;
static_assert(kBrowseFlags == 83);

struct TaskMemoryFreer {
  void operator()(void* memory) const { CoTaskMemFree(memory); }
};

/// The folder itself or, while it does not exist, the one above it; a proposed folder is often still to be made.
std::wstring NearestFolder(std::wstring path) {
  while (!path.empty() && GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) {
    const std::size_t cut = path.find_last_of(L'\\', path.size() - 2);
    path.resize(cut == std::wstring::npos || path.size() < 2 ? 0 : cut + 1);
  }
  return path;
}

int CALLBACK SelectInitialFolder(HWND browser, UINT event, LPARAM, LPARAM folder) {
  if (event == BFFM_INITIALIZED) SendMessageW(browser, BFFM_SETSELECTIONW, TRUE, folder);
  return 0;
}

/// A path in the double-ended form of the file operations, which take lists and no doubled separators.
std::wstring PathList(const std::string& path) {
  return FullPath(path) + L'\0';
}

/// The window names the program where Windows tells the operator why it waits.
class Busy : public host::BusyTime {
 public:
  Busy(Win32MessageLoop& loop, const std::string& reason)
      : loop_(loop), window_(loop.FrontWindow()), isFirst_(!loop.IsBusy()) {
    loop_.CountJob(1);
    if (!isFirst_) return;
    SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
    ShutdownBlockReasonCreate(window_, Utf16(reason).c_str());
  }
  ~Busy() override {
    loop_.CountJob(-1);
    if (!isFirst_) return;
    ShutdownBlockReasonDestroy(window_);
    SetThreadExecutionState(ES_CONTINUOUS);
  }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  Win32MessageLoop& loop_;
  HWND window_;
  bool isFirst_;
};

constexpr int kLongestFormat = 256;

base::LocalTime LocalTimeFrom(const SYSTEMTIME& time) {
  return {time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond};
}

SYSTEMTIME SystemTimeOf(const base::LocalTime& time) {
  SYSTEMTIME result{};
  result.wYear = static_cast<WORD>(time.year);
  result.wMonth = static_cast<WORD>(time.month);
  result.wDay = static_cast<WORD>(time.day);
  result.wHour = static_cast<WORD>(time.hour);
  result.wMinute = static_cast<WORD>(time.minute);
  result.wSecond = static_cast<WORD>(time.second);
  return result;
}

}  // namespace

void Win32MessageLoop::Yield() {
  const std::optional<int> quit = ServeWaiting();
  if (quit) PostQuitMessage(*quit);
}

void Win32MessageLoop::Pause(int milliseconds) {
  const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
  for (ULONGLONG now = GetTickCount64(); now < end; now = GetTickCount64()) {
    MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(end - now), QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    Yield();
  }
}

void Win32MessageLoop::Dispatch(MSG& message) {
  if (dialogs_ != nullptr && dialogs_->PreTranslate(message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

std::optional<int> Win32MessageLoop::ServeWaiting() {
  std::optional<int> quit;
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    if (message.message == WM_QUIT) {
      quit = static_cast<int>(message.wParam);
    } else {
      Dispatch(message);
    }
  }
  return quit;
}

void Win32MessageLoop::ServeWithoutInput() {
  const ULONGLONG now = GetTickCount64();
  if (now - servedAt_ < kServeEvery) return;
  servedAt_ = now;
  servingWithoutInput_ = true;
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_PAINT | PM_QS_SENDMESSAGE) != FALSE) Dispatch(message);
  servingWithoutInput_ = false;
}

std::string Win32Shell::BrowseForFolder(const std::string& title, const std::string& initialFolder) {
  const std::wstring caption = Utf16(title);
  const std::wstring initial = NearestFolder(FullPath(initialFolder));
  wchar_t path[MAX_PATH] = {};
  BROWSEINFOW browse{};
  browse.hwndOwner = loop_.FrontWindow();
  browse.pszDisplayName = path;
  browse.lpszTitle = caption.c_str();
  browse.ulFlags = kBrowseFlags;
  browse.lpfn = SelectInitialFolder;
  browse.lParam = reinterpret_cast<LPARAM>(initial.c_str());

  const std::unique_ptr<ITEMIDLIST, TaskMemoryFreer> item(SHBrowseForFolderW(&browse));
  return item != nullptr && SHGetPathFromIDListW(item.get(), path) != FALSE ? Utf8(path) : std::string();
}

std::string Win32Shell::DesktopFolder() {
  wchar_t path[MAX_PATH] = {};
  const HRESULT found = SHGetFolderPathW(nullptr, CSIDL_DESKTOPDIRECTORY, nullptr, SHGFP_TYPE_CURRENT, path);
  return found == S_OK ? Utf8(path) : std::string();
}

base::Outcome Win32Shell::CopyWithProgress(const std::string& source, const std::string& targetFolder,
                                           const std::string& title) {
  const std::wstring from = PathList(source);
  const std::wstring to = PathList(targetFolder);
  const std::wstring caption = Utf16(title);
  SHFILEOPSTRUCTW copy{};
  copy.hwnd = loop_.FrontWindow();
  copy.wFunc = FO_COPY;
  copy.pFrom = from.c_str();
  copy.pTo = to.c_str();
  copy.lpszProgressTitle = caption.c_str();
  const int result = SHFileOperationW(&copy);
  const std::string subject = source + " to " + targetFolder;
  // Its numbers are in part the shell's own, for which the system has other words. A copy that the operator stopped may
  // well answer 0.
  if (result != 0) return Refused(subject, result);
  return copy.fAnyOperationsAborted != FALSE ? Failed(subject, ERROR_CANCELLED) : base::Outcome();
}

bool Win32Shell::OpenDocument(const std::string& fileName) {
  return HandOver(nullptr, ProgramFolder() + Utf16(fileName));
}

bool Win32Shell::PrintDocument(const std::string& path) {
  return HandOver(L"print", FullPath(path)) || HandOver(nullptr, FullPath(path));
}

bool Win32Shell::HandOver(const wchar_t* verb, const std::wstring& path) {
  if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) return false;
  SHELLEXECUTEINFOW open{};
  open.cbSize = sizeof open;
  open.fMask = SEE_MASK_ASYNCOK | SEE_MASK_FLAG_NO_UI;
  open.hwnd = loop_.FrontWindow();
  open.lpVerb = verb;
  open.lpFile = path.c_str();
  open.nShow = SW_SHOWNORMAL;
  return ShellExecuteExW(&open) != FALSE;
}

host::FormatAnswer Win32Shell::FormatDrive(std::uint32_t drive, std::uint32_t formatId, std::uint32_t options) {
  using host::FormatAnswer;
  static_assert(FormatAnswer{static_cast<std::int32_t>(SHFMT_ERROR)} == FormatAnswer::Failed &&
                FormatAnswer{static_cast<std::int32_t>(SHFMT_CANCEL)} == FormatAnswer::Cancelled &&
                FormatAnswer{static_cast<std::int32_t>(SHFMT_NOFORMAT)} == FormatAnswer::NotPossible);
  return FormatAnswer{static_cast<std::int32_t>(SHFormatDrive(loop_.FrontWindow(), drive, formatId, options))};
}

std::unique_ptr<host::BusyTime> Win32Shell::BeginBusy(const std::string& reason) {
  return std::make_unique<Busy>(loop_, reason);
}

base::LocalTime Win32Clock::Now() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  return LocalTimeFrom(now);
}

base::LocalTime Win32Clock::LocalTimeOf(std::uint64_t modified) {
  const FILETIME time{static_cast<DWORD>(modified), static_cast<DWORD>(modified >> 32)};
  SYSTEMTIME universal{};
  SYSTEMTIME local{};
  FileTimeToSystemTime(&time, &universal);
  SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local);
  return LocalTimeFrom(local);
}

std::chrono::milliseconds Win32Clock::Running() {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch());
}

std::string Win32Clock::ShortDate(const base::LocalTime& time) {
  const SYSTEMTIME date = SystemTimeOf(time);
  wchar_t text[kLongestFormat] = {};
  GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &date, nullptr, text, kLongestFormat, nullptr);
  return Utf8(text);
}

std::string Win32Clock::LongTime(const base::LocalTime& time) {
  const SYSTEMTIME moment = SystemTimeOf(time);
  wchar_t text[kLongestFormat] = {};
  GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, &moment, nullptr, text, kLongestFormat);
  return Utf8(text);
}

}  // namespace windows
