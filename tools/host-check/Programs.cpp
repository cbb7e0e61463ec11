// Programs that are started, and room to work in.
#include "base/Path.h"
#include "base/Text.h"
#include "host-check/Checks.h"
#include "windows/adapters/ApiPath.h"
#include "windows/adapters/Text.h"
#include "windows/adapters/Win32.h"

namespace hostcheck {
namespace {

/// A backup needs the size of its data twice in the temporary folder; less than this is a sign of trouble.
constexpr std::int64_t kLittleSpace = 1024LL * 1024 * 1024;

/// Where the system finds a program by its name; empty where it does not.
std::string OnSearchPath(const std::string& name) {
  wchar_t path[MAX_PATH] = {};
  const DWORD length = SearchPathW(nullptr, windows::Utf16(name).c_str(), nullptr, MAX_PATH, path, nullptr);
  return length < MAX_PATH ? windows::Utf8(path) : std::string();
}

void CheckArchiver(Report& report, host::FileSystem& files) {
  const std::string beside = windows::Utf8(windows::ProgramFolder()) + "cabarc.exe";
  if (files.FileExists(beside)) return report.Require(true, beside, "archiver");
  const std::string elsewhere = OnSearchPath("cabarc.exe");
  if (elsewhere.empty()) return report.Require(false, "cabarc.exe", "archiver; the installer offers one");
  report.Expect(false, elsewhere, "archiver, not beside the program: it must take .\\FOLDER\\*.* and pack sub-folders");
}

void CheckHostPrograms(Report& report, app::Application& application) {
  const std::string& system = application.state.SystemFolder;
  std::string exporters;
  static_cast<void>(application.paths.GetPathEntry("Temp", exporters));  // the path table has a check of its own
  exporters += "\\StudyDB\\BCP\\Export_StudyDB_TXT";
  const struct {
    std::string path;
    const char* purpose;
  } programs[] = {{system + application.appearance.ApplicationName, "the host application, started at the end"},
                  {system + "Maintenance.js", "script around the maintenance log"},
                  {exporters + ".bat", "study list of the maintenance log"},
                  {exporters + "_PP.bat", "study list without personal information"}};
  for (const auto& [path, purpose] : programs) {
    report.Require(application.host.files.FileExists(path), path, purpose);
  }
}

void CheckRoom(Report& report, app::Application& application) {
  const std::string folder = application.host.files.TemporaryFolder();
  report.Require(MayWriteTo(folder), "right to write to " + folder, "staging folder of every operation");
  const std::int64_t space = application.host.drives.FreeSpace(base::DriveLetterOf(folder) + ":");
  const std::string megabytes = base::FormatMegabytes(space < 0 ? 0 : static_cast<std::uint64_t>(space));
  report.Expect(space >= kLittleSpace, "free space for " + folder + ": " + megabytes + " MB",
                "the staging folder holds the data and its archives at once");
}

}  // namespace

void CheckPrograms(Report& report, app::Application& application) {
  CheckArchiver(report, application.host.files);
  CheckHostPrograms(report, application);
  for (const char* name : {"cmd.exe", "xcopy.exe", "reg.exe", "cscript.exe"}) {
    report.Require(!OnSearchPath(name).empty(), name, "a program of Windows");
  }
  CheckRoom(report, application);
}

bool MayWriteTo(const std::string& folder) {
  const std::wstring path = windows::ApiPath(folder);
  const HANDLE handle = CreateFileW(path.c_str(), FILE_ADD_FILE | FILE_ADD_SUBDIRECTORY,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return false;
  CloseHandle(handle);
  return true;
}

}  // namespace hostcheck
