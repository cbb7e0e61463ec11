// Many backups and restores in one run of the program: what it holds must not grow with them.
//
//   soak ROUNDS      (on a workstation that nobody else works at)
//
// Each round saves the report data over the last round's set and restores it. Prints the program's kernel
// handles, GDI and user objects (0 where the system does not count them) and private memory now and then;
// ends with 1 when one of them has grown after the first tenth.
#include <windows.h>

#include <psapi.h>
#include <winternl.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <vector>

#include "operator/Operator.h"
#include "resource.h"

namespace {

using endtoend::Operator;

constexpr char kSet[] = "E:\\Soak\\";
constexpr SIZE_T kMemorySlack = 2 * 1024 * 1024;  // what the heap may keep back
constexpr DWORD kHandleSlack = 8;                 // threads of the COM runtime come and go

struct Holdings {
  DWORD handles = 0;
  DWORD gdiObjects = 0;
  DWORD userObjects = 0;
  SIZE_T bytes = 0;

  bool HaveGrownFrom(const Holdings& before) const {
    return handles > before.handles + kHandleSlack || gdiObjects > before.gdiObjects ||
           userObjects > before.userObjects || bytes > before.bytes + kMemorySlack;
  }
};

/// GetProcessHandleCount knows nothing under Wine; the list of all handles is there in both worlds.
DWORD HandlesOf(DWORD processId) {
  std::vector<std::byte> buffer(std::size_t{4} << 20);
  const auto size = static_cast<ULONG>(buffer.size());
  if (NtQuerySystemInformation(SystemHandleInformation, buffer.data(), size, nullptr) < 0) return 0;
  const auto& list = *reinterpret_cast<const SYSTEM_HANDLE_INFORMATION*>(buffer.data());
  return static_cast<DWORD>(std::count_if(list.Handle, list.Handle + list.Count, [=](const SYSTEM_HANDLE_ENTRY& entry) {
    return entry.OwnerPid == processId;
  }));
}

Holdings HoldingsOf(HANDLE process) {
  Holdings now;
  PROCESS_MEMORY_COUNTERS memory{};
  memory.cb = sizeof memory;
  GetProcessMemoryInfo(process, &memory, sizeof memory);
  now.handles = HandlesOf(GetProcessId(process));
  now.gdiObjects = GetGuiResources(process, GR_GDIOBJECTS);
  now.userObjects = GetGuiResources(process, GR_USEROBJECTS);
  now.bytes = memory.PagefileUsage;
  return now;
}

void BackUpAndRestore(Operator& person) {
  person.Accept(person.StartBackup(person.OpenBackup({.report = true})), kSet);
  person.ConsentUntil(base::MessageId::BackupComplete,
                      {base::MessageId::AskMakeBackupFolder, base::MessageId::AskOverwriteBackup});
  person.OpenRestore(kSet).Press(ID_frmRestore_cmdStart);
  person.ConsentUntil(base::MessageId::RestoreComplete, {});
  person.MainMenu();
}

/// Whether nothing has grown.
bool Soak(int rounds) {
  const int step = std::max(1, rounds / 10);
  Operator person;
  person.SignIn();
  Holdings settled;
  Holdings now;
  for (int round = 1; round <= rounds; ++round) {
    BackUpAndRestore(person);
    if (round % step != 0) continue;
    now = HoldingsOf(person.TheProgram().Handle());
    if (round == step) settled = now;
    std::printf("round %3d: %lu handles, %lu GDI objects, %lu user objects, %lu KiB\n", round, now.handles,
                now.gdiObjects, now.userObjects, static_cast<unsigned long>(now.bytes / 1024));
    std::fflush(stdout);
  }
  person.End();
  const bool grown = now.HaveGrownFrom(settled);
  std::printf("%s\n", grown ? "it has grown" : "nothing has grown");
  return !grown;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  try {
    return Soak(count > 1 ? _wtoi(arguments[1]) : 200) ? 0 : 1;
  } catch (const std::exception& error) {
    std::printf("!!   %s\n", error.what());
    return 1;
  }
}
