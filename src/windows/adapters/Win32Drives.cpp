// Drives and the volumes in them.
#include "windows/adapters/Win32Drives.h"

#include <limits>

#include "windows/adapters/Results.h"
#include "windows/adapters/Text.h"

namespace windows {
namespace {

/// "A:" as "A:\", the only form that the volume calls take. What names no drive becomes a name that
/// no volume has: the calls would take an empty one for the current drive.
std::wstring RootOf(const std::string& drive) {
  const bool namesDrive = drive.size() == 2 && drive[1] == ':';
  return (namesDrive ? Utf16(drive) : L"?:") + L'\\';
}

BOOL ReadLabel(const std::string& drive, std::wstring& label) {
  wchar_t name[MAX_PATH + 1] = {};
  const BOOL read =
      GetVolumeInformationW(RootOf(drive).c_str(), name, MAX_PATH + 1, nullptr, nullptr, nullptr, nullptr, 0);
  label = name;
  return read;
}

}  // namespace

bool Win32Drives::IsReady(const std::string& drive) {
  std::wstring label;
  return ReadLabel(drive, label) != FALSE;
}

std::int64_t Win32Drives::FreeSpace(const std::string& drive) {
  ULARGE_INTEGER available{};
  if (GetDiskFreeSpaceExW(RootOf(drive).c_str(), &available, nullptr, nullptr) == FALSE) return app::kFailed;
  constexpr ULONGLONG kMost = std::numeric_limits<std::int64_t>::max();
  return static_cast<std::int64_t>(available.QuadPart < kMost ? available.QuadPart : kMost);
}

std::int32_t Win32Drives::VolumeLabel(const std::string& drive, std::string& label) {
  std::wstring name;
  const BOOL read = ReadLabel(drive, name);
  if (read != FALSE) label = Utf8(name);
  return ResultOf(read);
}

std::int32_t Win32Drives::SetVolumeLabel(const std::string& drive, const std::string& label) {
  return ResultOf(SetVolumeLabelW(RootOf(drive).c_str(), Utf16(label).c_str()));
}

}  // namespace windows
