// Asks drives for their state, and prepares media.
#include <windows.h>

#include <objbase.h>

#include "components/Components.h"
#include "components/Files.h"
#include "windows/adapters/Text.h"

namespace components {
namespace {

constexpr wchar_t kVolumeLabel[] = L"TARSUS";

// Milliseconds that a medium may take to appear once it is formatted.
constexpr DWORD kAppears = 15'000, kLookAgain = 100;

// "E:\" for a drive, the volume's or share's root for other paths; empty for anything else.
std::wstring RootOf(const std::wstring& path) {
  if (!path.empty() && iswalpha(path[0]) && (path.size() == 1 || path[1] == L':')) return path.substr(0, 1) + L":\\";
  wchar_t root[MAX_PATH] = {};
  const bool network = path.starts_with(L"\\\\");
  return network && GetVolumePathNameW(path.c_str(), root, MAX_PATH) ? root : std::wstring();
}

// Asks the file system itself, with a file that goes away again: attributes and rights say too
// little about write-protected media. A full medium can be written to; its space is not our matter.
bool CanWrite(const std::wstring& folder) {
  wchar_t name[MAX_PATH] = {};
  swprintf(name, MAX_PATH, L"%ls\\~qx%08lx.tmp", folder.c_str(), GetTickCount());
  const FileHandle file(CreateFileW(name, GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
  return file || GetLastError() == ERROR_DISK_FULL;
}

bool HasRemovableMedia(UINT type) {
  return type == DRIVE_REMOVABLE || type == DRIVE_CDROM;
}

// Whether something lies in the drive that can be read, with a file system on it or without.
bool HoldsMedium(const std::wstring& root) {
  const std::wstring device = L"\\\\.\\" + root.substr(0, 2);
  const FileHandle drive(CreateFileW(device.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                     OPEN_EXISTING, 0, nullptr));
  alignas(512) unsigned char start[4096];  // a sector of any medium
  DWORD read = 0;
  return drive && ReadFile(drive.Get(), start, sizeof start, &read, nullptr) && read > 0;
}

// An empty drive shall answer, not raise the system's own "insert a disk" box.
class NoSystemBoxes {
 public:
  NoSystemBoxes() { SetThreadErrorMode(SEM_FAILCRITICALERRORS, &before_); }
  ~NoSystemBoxes() { SetThreadErrorMode(before_, nullptr); }
  NoSystemBoxes(const NoSystemBoxes&) = delete;
  NoSystemBoxes& operator=(const NoSystemBoxes&) = delete;

 private:
  DWORD before_ = 0;
};

// Waits for the process and serves the thread's windows meanwhile. 0 when it has ended well.
DWORD ExitCodeOf(HANDLE process) {
  DWORD signalled = 0, code = 1;
  CoWaitForMultipleHandles(0, INFINITE, 1, &process, &signalled);
  return GetExitCodeProcess(process, &code) ? code : 1;
}

// By the system's own program, which knows every kind of medium; without a window, and without questions.
bool Format(const std::wstring& root) {
  wchar_t folder[MAX_PATH] = {};
  GetSystemDirectoryW(folder, MAX_PATH);
  const std::wstring program = std::wstring(folder) + L"\\format.com";
  std::wstring command = L"\"" + program + L"\" " + root.substr(0, 2) + L" /V:" + kVolumeLabel + L" /Q /Y";
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started = {};
  if (!CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr,
                      &startup, &started)) {
    return false;
  }
  const DWORD code = ExitCodeOf(started.hProcess);
  CloseHandle(started.hThread);
  CloseHandle(started.hProcess);
  return code == 0;
}

bool Appears(const std::wstring& root) {
  for (DWORD waited = 0; !IsFolder(root); waited += kLookAgain) {
    if (waited >= kAppears) return false;
    Sleep(kLookAgain);
  }
  return true;
}

// Read-only files too: a medium that is prepared belongs to the host as a whole.
bool DeleteEverything(const std::wstring& folder) {
  bool deleted = true;
  for (const FolderEntry& entry : ListFolder(folder)) {
    const std::wstring path = folder + entry.name;
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    const bool gone = entry.isFolder ? DeleteEverything(path + L"\\") && RemoveDirectoryW(path.c_str())
                                     : DeleteFileW(path.c_str()) != FALSE;
    deleted = gone && deleted;
  }
  return deleted;
}

}  // namespace

MediaComponent::MediaComponent() {
  AddMethod(L"GetDriveStatus", &MediaComponent::GetDriveStatus);
  AddMethod(L"PrepareDrive", &MediaComponent::PrepareDrive);
  AddMethod(L"SetUp", &MediaComponent::SetUp);
}

std::int32_t MediaComponent::GetDriveStatus(const std::string& drive) {
  const NoSystemBoxes quiet;
  const std::wstring path = windows::Utf16(drive), root = RootOf(path);
  if (root.empty()) return kError;
  const UINT type = GetDriveTypeW(root.c_str());
  if (type == DRIVE_NO_ROOT_DIR) return kNoDrive;
  DWORD flags = 0;
  // The root is asked too: what is known of a volume may be from before its medium was taken out.
  if (!IsFolder(root) || !GetVolumeInformationW(root.c_str(), nullptr, 0, nullptr, nullptr, &flags, nullptr, 0)) {
    if (!HasRemovableMedia(type)) return kError;
    return type == DRIVE_REMOVABLE && HoldsMedium(root) ? kNotWritable : kNoMedium;
  }
  if (flags & FILE_READ_ONLY_VOLUME) return kNotWritable;
  if (HasRemovableMedia(type) && !CanWrite(root)) return kNotWritable;
  const bool folder = path.size() > root.size() && IsFolder(path);
  return folder && !CanWrite(path) ? kNotWritable : kReady;
}

std::int32_t MediaComponent::PrepareDrive(const std::string& drive, const std::string&, std::int32_t, std::int32_t) {
  const NoSystemBoxes quiet;
  const std::wstring root = RootOf(windows::Utf16(drive));
  if (root.empty() || GetDriveTypeW(root.c_str()) != DRIVE_REMOVABLE) return kFailed;
  const bool unformatted = !IsFolder(root) && HoldsMedium(root);
  const bool empty =
      unformatted ? Format(root) && Appears(root) : GetDriveStatus(drive) == kReady && DeleteEverything(root);
  return empty && SetVolumeLabelW(root.c_str(), kVolumeLabel) ? kDone : kFailed;
}

}  // namespace components
