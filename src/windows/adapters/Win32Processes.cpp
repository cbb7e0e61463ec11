// Starting of programs, the shared console and the empty streams of hidden ones, and the waiting.
#include "windows/adapters/Win32Processes.h"

#include <sddl.h>

#include <system_error>

#include "windows/adapters/ProgramSearch.h"
#include "windows/adapters/Results.h"
#include "windows/adapters/Text.h"
// After Win32.h, on which it rests.
#include <tlhelp32.h>

namespace windows {
namespace {

// Global: one instance on the machine, as all its Windows sessions share one host system and its data.
constexpr wchar_t kInstanceMark[] = L"Global\\QXBackupUtility.Instance";

/// The mark, which every user may open: the next one is to be told that there is one, whoever made it. `error` is
/// ERROR_ALREADY_EXISTS then.
HANDLE OpenInstanceMark(DWORD& error) {
  void* descriptor = nullptr;
  const bool isMade = ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:(A;;GA;;;WD)", SDDL_REVISION_1,
                                                                           &descriptor, nullptr) != FALSE;
  const LocalMemory<void> owner(descriptor);
  SECURITY_ATTRIBUTES openToAll{sizeof(SECURITY_ATTRIBUTES), descriptor, FALSE};
  const HANDLE mark = CreateMutexW(isMade ? &openToAll : nullptr, FALSE, kInstanceMark);
  error = GetLastError();
  return mark;
}

/// Calls something again and again, each time when it has asked for it.
class Interval {
 public:
  explicit Interval(const host::Meanwhile& action) : action_(action) {}

  /// Returns the milliseconds until it must be asked again.
  DWORD CallWhenDue() {
    if (!action_) return INFINITE;
    if (GetTickCount64() >= dueAt_) dueAt_ = GetTickCount64() + static_cast<ULONGLONG>(action_().count());
    const ULONGLONG now = GetTickCount64();
    return now < dueAt_ ? static_cast<DWORD>(dueAt_ - now) : 0;
  }

 private:
  const host::Meanwhile& action_;
  ULONGLONG dueAt_ = 0;
};

class Program : public host::StartedProgram {
 public:
  /// `console` is the one for hidden programs; null when this one is shown.
  Program(Handle process, DWORD id, Win32MessageLoop& loop, HiddenConsole* console)
      : process_(std::move(process)), id_(id), loop_(loop), console_(console) {}

  std::uint32_t Id() const override { return id_; }

  std::optional<std::uint32_t> Wait(const host::Meanwhile& meanwhile) override {
    const bool ended = WaitForEnd(meanwhile);
    DWORD code = 0;
    if (!ended || GetExitCodeProcess(process_.Get(), &code) == FALSE) return std::nullopt;
    return code;
  }

 private:
  bool WaitForEnd(const host::Meanwhile& meanwhile) {
    // A WM_QUIT is posted again only after the wait: left in the queue it would wake every
    // following wait at once, and the loop would burn a processor until the program ends.
    std::optional<int> quit;
    const HANDLE process = process_.Get();
    const std::jthread keeping = console_ != nullptr ? console_->KeepThatOf(process, id_) : std::jthread();
    Interval calls(meanwhile);
    DWORD cause = WAIT_FAILED;
    do {
      cause = MsgWaitForMultipleObjectsEx(1, &process, calls.CallWhenDue(), QS_ALLINPUT, MWMO_INPUTAVAILABLE);
      const std::optional<int> asked = loop_.ServeWaiting();
      if (asked) quit = asked;
    } while (cause == WAIT_OBJECT_0 + 1 || cause == WAIT_TIMEOUT);
    if (quit) PostQuitMessage(*quit);
    return cause == WAIT_OBJECT_0;
  }

  Handle process_;
  DWORD id_;
  Win32MessageLoop& loop_;
  HiddenConsole* console_;
};

/// While it lives, a program that is started inherits that it is to look for no program in its current folder.
class CommandSearch {
 public:
  explicit CommandSearch(bool isLimited) : isLimited_(isLimited && GetEnvironmentVariableW(kLimit, nullptr, 0) == 0) {
    if (isLimited_) SetEnvironmentVariableW(kLimit, L"1");
  }
  ~CommandSearch() {
    if (isLimited_) SetEnvironmentVariableW(kLimit, nullptr);
  }
  CommandSearch(const CommandSearch&) = delete;
  CommandSearch& operator=(const CommandSearch&) = delete;

 private:
  static constexpr const wchar_t* kLimit = L"NoDefaultCurrentDirectoryInExePath";
  bool isLimited_;
};

// A program that interrupts everything in its console must not end this one.
BOOL WINAPI SurviveInterrupts(DWORD event) {
  return event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
}

}  // namespace

DWORD HiddenConsole::CreationFlags() {
  // A batch file's "chcp" would decide how the next one is read.
  kept_ = kept_ && SetConsoleCP(inputCodePage_) != FALSE && SetConsoleOutputCP(outputCodePage_) != FALSE;
  return kept_ ? 0 : CREATE_NO_WINDOW;
}

std::jthread HiddenConsole::KeepThatOf(HANDLE process, DWORD id) {
  if (kept_) return {};
  try {
    return std::jthread([this, process, id] { KeepUntilEnd(process, id); });
  } catch (const std::system_error&) {
    return {};  // the next program's will do
  }
}

void HiddenConsole::KeepUntilEnd(HANDLE process, DWORD id) {
  constexpr DWORD kTryEvery = 5;  // milliseconds
  constexpr int kTries = 200;     // a program with windows never makes a console
  for (int tries = 0; tries < kTries && !kept_; ++tries) {
    FreeConsole();  // a process can be attached to one console only
    kept_ = AttachConsole(id) != FALSE;
    if (!kept_ && WaitForSingleObject(process, kTryEvery) == WAIT_OBJECT_0) return;
  }
  if (!kept_) return;
  inputCodePage_ = GetConsoleCP();
  outputCodePage_ = GetConsoleOutputCP();
  SetConsoleCtrlHandler(SurviveInterrupts, TRUE);
}

NoStreams::NoStreams() {
  SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  nothing_ = Handle(CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                                OPEN_EXISTING, 0, nullptr));
  SIZE_T size = 0;
  InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
  memory_.resize(size);
  auto* list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory_.data());
  if (nothing_ && InitializeProcThreadAttributeList(list, 1, 0, &size) != FALSE) list_ = list;
}

NoStreams::~NoStreams() {
  if (list_) DeleteProcThreadAttributeList(list_);
}

bool NoStreams::GiveTo(STARTUPINFOEXW& startup) {
  stream_ = nothing_.Get();
  if (!list_ || UpdateProcThreadAttribute(list_, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, &stream_, sizeof stream_,
                                          nullptr, nullptr) == FALSE)
    return false;
  startup.lpAttributeList = list_;
  startup.StartupInfo.dwFlags |= STARTF_USESTDHANDLES;
  startup.StartupInfo.hStdInput = stream_;
  startup.StartupInfo.hStdOutput = stream_;
  startup.StartupInfo.hStdError = stream_;
  return true;
}

Win32Processes::Win32Processes(Win32MessageLoop& loop) : loop_(loop) {
  DWORD error = ERROR_SUCCESS;
  instanceMark_ = Handle(OpenInstanceMark(error));
  // Access is denied when the other instance runs with higher rights.
  hasPreviousInstance_ = error == ERROR_ALREADY_EXISTS || (!instanceMark_ && error == ERROR_ACCESS_DENIED);
}

base::Obtained<host::StartedProgram> Win32Processes::Start(const std::string& commandLine, host::WindowStyle style,
                                                           host::Where where) {
  Starting what = FindProgram(Utf16(commandLine), where);
  if (what.program.empty()) return Failed(commandLine, ERROR_FILE_NOT_FOUND);
  const bool hidden = style == host::WindowStyle::Hidden;
  STARTUPINFOEXW startup{};
  startup.StartupInfo.cb = sizeof startup;
  startup.StartupInfo.dwFlags = STARTF_USESHOWWINDOW;
  startup.StartupInfo.wShowWindow = hidden ? SW_HIDE : SW_SHOW;
  NoStreams streams;
  const bool silent = hidden && streams.GiveTo(startup);
  const DWORD console = hidden ? console_.CreationFlags() : CREATE_NEW_CONSOLE;
  const DWORD flags = NORMAL_PRIORITY_CLASS | EXTENDED_STARTUPINFO_PRESENT | console;

  const CommandSearch search(what.isInterpreter && where == host::Where::ProgramsOnly);
  PROCESS_INFORMATION started{};
  // The system writes into the command line.
  if (CreateProcessW(what.program.c_str(), what.commandLine.data(), nullptr, nullptr, silent, flags, nullptr, nullptr,
                     &startup.StartupInfo, &started) == FALSE) {
    return Failed(commandLine, GetLastError());
  }
  const Handle thread(started.hThread);
  return std::make_unique<Program>(Handle(started.hProcess), started.dwProcessId, loop_, hidden ? &console_ : nullptr);
}

std::vector<std::string> Win32Processes::RunningExecutables() {
  std::vector<std::string> names;
  const Handle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  if (!snapshot) return names;
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = Process32FirstW(snapshot.Get(), &entry); more != FALSE;
       more = Process32NextW(snapshot.Get(), &entry)) {
    names.push_back(Utf8(entry.szExeFile));
  }
  return names;
}

bool Win32Processes::HasAdministratorsRights() {
  std::byte group[SECURITY_MAX_SID_SIZE];
  DWORD size = sizeof group;
  BOOL isMember = FALSE;
  return CreateWellKnownSid(WinBuiltinAdministratorsSid, nullptr, group, &size) != FALSE &&
         CheckTokenMembership(nullptr, group, &isMember) != FALSE && isMember != FALSE;
}

void Win32Processes::EndThisProcess() {
  ExitProcess(0);
}

}  // namespace windows
