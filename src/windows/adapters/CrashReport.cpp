// Dumps by the system's own library, which is loaded when it is needed.
#include "windows/adapters/CrashReport.h"

#include <array>
#include <exception>

#include "windows/adapters/Text.h"
#include "windows/adapters/Win32.h"
// After Win32.h, on which it rests.
#include <dbghelp.h>

namespace windows {
namespace {

/// The system hands its filter nothing of ours, so this one value has no other place to stand.
const std::string* dumpFolder = nullptr;

/// As which the end by an exception of C++ reaches the filter, where the debuggers' convention wants it.
constexpr DWORD kUnhandledException = 0xE0515842;

using WriteDump = BOOL(WINAPI*)(HANDLE, DWORD, HANDLE, MINIDUMP_TYPE, PMINIDUMP_EXCEPTION_INFORMATION,
                                PMINIDUMP_USER_STREAM_INFORMATION, PMINIDUMP_CALLBACK_INFORMATION);

/// From the system folder alone. Null where it is not to be had.
WriteDump FindWriter() {
  wchar_t folder[MAX_PATH] = L"";
  GetSystemDirectoryW(folder, MAX_PATH);
  const HMODULE library = LoadLibraryW((std::wstring(folder) + L"\\dbghelp.dll").c_str());
  if (library == nullptr) return nullptr;
  return reinterpret_cast<WriteDump>(reinterpret_cast<void*>(GetProcAddress(library, "MiniDumpWriteDump")));
}

bool WriteTo(const std::wstring& path, EXCEPTION_POINTERS* failure) {
  const WriteDump write = FindWriter();
  const Handle file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  if (write == nullptr || !file) return false;
  MINIDUMP_EXCEPTION_INFORMATION information{GetCurrentThreadId(), failure, FALSE};
  return write(GetCurrentProcess(), GetCurrentProcessId(), file.Get(), MiniDumpFilterMemory, &information, nullptr,
               nullptr) != FALSE;
}

/// The path of the dump; empty when none could be written.
std::wstring Dump(EXCEPTION_POINTERS* failure) {
  wchar_t temporary[MAX_PATH + 1] = L"";
  GetTempPathW(MAX_PATH + 1, temporary);
  for (const std::wstring& folder : {Utf16(*dumpFolder), std::wstring(temporary)}) {
    const std::wstring path = folder + L"\\BackupUtility.dmp";
    if (!folder.empty() && WriteTo(path, failure)) return path;
  }
  return {};
}

void EnterInEventLog(DWORD code, const std::wstring& dump) {
  const HANDLE log = RegisterEventSourceW(nullptr, L"QXBackupUtility");
  if (log == nullptr) return;
  std::array<wchar_t, 11> number{};
  swprintf(number.data(), number.size(), L"0x%08lX", code);
  const std::wstring text = L"QXBackupUtility has ended by the failure " + std::wstring(number.data()) +
                            (dump.empty() ? L". No dump could be written." : L". Dump: " + dump);
  const wchar_t* strings[] = {text.c_str()};
  constexpr DWORD kEvent = 1;
  ReportEventW(log, EVENTLOG_ERROR_TYPE, 0, kEvent, nullptr, 1, 0, strings, nullptr);
  DeregisterEventSource(log);
}

LONG WINAPI Report(EXCEPTION_POINTERS* failure) {
  EnterInEventLog(failure->ExceptionRecord->ExceptionCode, Dump(failure));
  return EXCEPTION_CONTINUE_SEARCH;
}

[[noreturn]] void Terminate() {
  RaiseException(kUnhandledException, EXCEPTION_NONCONTINUABLE, 0, nullptr);
  std::abort();
}

}  // namespace

void ReportCrashes(const std::string& folder) {
  dumpFolder = &folder;
  SetUnhandledExceptionFilter(Report);
  std::set_terminate(Terminate);
}

}  // namespace windows
