// What the Windows user who runs this check may do. All of it is a note at most: a job that lacks a right says so in
// its log, and an administrator who runs this check has rights that the operators may not have.
#include <string_view>
#include <vector>

#include "base/Path.h"
#include "base/Text.h"
#include "host-check/Checks.h"
#include "jobs/Items.h"
#include "windows/adapters/ApiPath.h"
#include "windows/adapters/Text.h"
#include "windows/adapters/Win32.h"
// After Win32.h, on which it rests.
#include <aclapi.h>

namespace hostcheck {
namespace {

using jobs::JobKey;

/// The host's own, below HKEY_LOCAL_MACHINE, as the default export names it.
constexpr wchar_t kHostKey[] = L"SOFTWARE\\Orvantis\\TARSUS";

bool MayWriteToRegistry() {
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kHostKey, 0, KEY_SET_VALUE | KEY_CREATE_SUB_KEY, &key) != ERROR_SUCCESS)
    return false;
  RegCloseKey(key);
  return true;
}

/// Whether this process has the privilege, be it switched on or not: a program that needs it switches it on.
bool HasPrivilege(const wchar_t* name) {
  HANDLE raw = nullptr;
  LUID wanted{};
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &raw) == FALSE ||
      LookupPrivilegeValueW(nullptr, name, &wanted) == FALSE)
    return false;
  const windows::Handle token(raw);
  DWORD size = 0;
  GetTokenInformation(token.Get(), TokenPrivileges, nullptr, 0, &size);
  std::vector<std::byte> buffer(size);
  if (GetTokenInformation(token.Get(), TokenPrivileges, buffer.data(), size, &size) == FALSE) return false;
  const auto& held = *reinterpret_cast<const TOKEN_PRIVILEGES*>(buffer.data());
  for (DWORD at = 0; at < held.PrivilegeCount; ++at) {
    const LUID& luid = held.Privileges[at].Luid;
    if (luid.LowPart == wanted.LowPart && luid.HighPart == wanted.HighPart) return true;
  }
  return false;
}

/// Whether the access list of a folder lets every user make files in it.
bool IsOpenToAll(const std::string& folder) {
  void* descriptor = nullptr;
  ACL* list = nullptr;
  if (GetNamedSecurityInfoW(windows::Utf16(folder).c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                            &list, nullptr, &descriptor) != ERROR_SUCCESS)
    return false;
  const windows::LocalMemory<void> owner(descriptor);
  for (DWORD at = 0; list != nullptr && at < list->AceCount; ++at) {
    void* entry = nullptr;
    if (GetAce(list, at, &entry) == FALSE) break;
    auto& allowed = *static_cast<ACCESS_ALLOWED_ACE*>(entry);
    if (allowed.Header.AceType != ACCESS_ALLOWED_ACE_TYPE || (allowed.Header.AceFlags & INHERIT_ONLY_ACE) != 0)
      continue;
    for (const WELL_KNOWN_SID_TYPE group : {WinWorldSid, WinAuthenticatedUserSid, WinBuiltinUsersSid})
      if (IsWellKnownSid(&allowed.SidStart, group) != FALSE && (allowed.Mask & (FILE_ADD_FILE | GENERIC_WRITE)) != 0)
        return true;
  }
  return list == nullptr;  // no list at all forbids nothing
}

/// Whether the manifest in an executable asks for an administrator.
bool AsksForAdministrator(const std::string& executable) {
  const HMODULE module = LoadLibraryExW(windows::Utf16(executable).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
  if (module == nullptr) return false;
  const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24));
  const HGLOBAL loaded = found != nullptr ? LoadResource(module, found) : nullptr;
  const auto* const text = static_cast<const char*>(loaded != nullptr ? LockResource(loaded) : nullptr);
  const bool asks = text != nullptr && std::string_view(text, SizeofResource(module, found)).find("\"requireAdmin") !=
                                           std::string_view::npos;
  FreeLibrary(module);
  return asks;
}

/// Whether files may be made in a folder, or, where it is still to come, in the nearest one above it.
bool MayPutInto(host::FileSystem& files, std::string folder) {
  while (!folder.empty() && !files.FolderExists(folder)) {
    folder = base::WithoutTrailingBackslash(base::FolderOf(base::WithoutTrailingBackslash(folder)));
  }
  return !folder.empty() && MayWriteTo(folder);
}

void CheckTargets(Report& report, app::Application& application, const jobs::JobDefinitions& definitions,
                  const std::string& section) {
  for (const JobKey key : {JobKey::CommonFile, JobKey::Folder}) {
    const auto items = key == JobKey::Folder ? definitions.FolderItems(section) : definitions.FilledItems(key, section);
    for (std::string item : items) {
      if (!application.paths.ExpandPathVariable(item).IsDone()) continue;  // told with the job
      const std::string target = jobs::WithDrive(item, application.state.ApplicationRootFolder);
      const std::string folder = key == JobKey::Folder ? target : base::FolderOf(target);
      report.Expect(MayPutInto(application.host.files, base::WithoutTrailingBackslash(folder)),
                    "right to write to " + folder, "a restore of the section " + section + " puts files there");
    }
  }
}

void CheckSections(Report& report, app::Application& application) {
  bool exportsRegistry = false;
  for (const std::string_view name : jobs::kJobSections) {
    const std::string section(name);
    jobs::JobDefinitions definitions;
    if (!definitions.Load(work::ToolsOf(application), application.state.SystemFolder, jobs::kJobDefinitionFile, section)
             .IsDone())
      continue;  // told with the jobs
    if (section.ends_with("_RESTORE")) CheckTargets(report, application, definitions, section);
    for (const std::string& item : definitions.Items(JobKey::RegFile, section))
      exportsRegistry = exportsRegistry || item == jobs::kDefaultRegistryCommand;
  }
  if (!exportsRegistry) return;
  report.Expect(HasPrivilege(L"SeBackupPrivilege"), "right to back up the registry",
                "an empty RegFile exports it with Reg.exe save, which fails without");
}

}  // namespace

void CheckRights(Report& report, app::Application& application) {
  report.Expect(application.host.processes.HasAdministratorsRights(), "administrator's rights of this check",
                "what follows holds for this Windows user, started like this");
  report.Expect(MayWriteToRegistry(), "right to write to the host's registry key",
                "BackupDate, places of dialogs, and the marks by which a crash is found and cleaned up after");
  CheckSections(report, application);
  for (const std::string& folder : {windows::Utf8(windows::ProgramFolder()), application.state.SystemFolder}) {
    report.Expect(!IsOpenToAll(folder), "programs in " + folder,
                  "every user may put others there; an administrator who works here would run them");
  }
  const std::string program = application.state.SystemFolder + application.appearance.ApplicationName;
  report.Expect(!AsksForAdministrator(program) || application.host.processes.HasAdministratorsRights(),
                "right to start " + program, "it asks for an administrator: message 60260 at the end without one");
}

}  // namespace hostcheck
