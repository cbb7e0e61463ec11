// The external commands of one backup and one restore, run by one batch file.
#include "program/Batch.h"

#include <chrono>
#include <stdexcept>

#include "operator/Window.h"

namespace bench {

const char kBackupCommands[] =
    "cd /d C:\\Tarsus\\System\\Backup\r\n"
    "cmd /c ExportPatientList.bat\r\n"
    "cd /d %STAGING%\r\n"
    "CMD /C xcopy \"C:\\Tarsus\\Database\\Patient.db\" \"%STAGING%\\\" /S /Y\r\n"
    "CMD /C xcopy \"C:\\Tarsus\\Database\\Study.db\" \"%STAGING%\\\" /S /Y\r\n"
    "CMD /C xcopy \"C:\\Tarsus\\Temp\\PatientList.txt\" \"%STAGING%\\\" /S /Y\r\n"
    "CMD /C xcopy \"C:\\Tarsus\\Data\\Patient\" \"%STAGING%\\Patient\\\" /S /Y\r\n"
    "CMD /C xcopy \"C:\\Tarsus\\Data\\Image.ddo\" \"%STAGING%\\Image.ddo\\\" /S /Y\r\n"
    "C:\\Tarsus\\Program\\cabarc -r -p n PatientData.cab Patient.db PatientList.txt Study.db .\\Image.ddo\\*.* "
    ".\\Patient\\*.*\r\n"
    "CMD /C xcopy \"%STAGING%\\PatientData.cab\" \"E:\\Batch\\\" /S /Y\r\n"
    "CMD /C xcopy \"C:\\Tarsus\\System\\BackupVersion.ini\" \"E:\\Batch\\\" /S /Y\r\n"
    "\"%COMPARE%\" \"%STAGING%\\PatientData.cab\" \"E:\\Batch\\PatientData.cab\"\r\n"
    "if errorlevel 1 exit 1\r\n"
    "\"%COMPARE%\" \"C:\\Tarsus\\System\\BackupVersion.ini\" \"E:\\Batch\\BackupVersion.ini\"\r\n"
    "if errorlevel 1 exit 1\r\n";

const char kRestoreCommands[] =
    "cd /d %STAGING%\r\n"
    "CMD /C xcopy \"E:\\Batch\\PatientData.cab\" \"%STAGING%\\\" /S /Y\r\n"
    "C:\\Tarsus\\Program\\cabarc -r -p X PatientData.cab CABFILE\r\n"
    "CMD /C xcopy \"%STAGING%\\CABFILE\\Patient.db\" \"C:\\Tarsus\\Database\\\" /S /Y\r\n"
    "CMD /C xcopy \"%STAGING%\\CABFILE\\Study.db\" \"C:\\Tarsus\\Database\\\" /S /Y\r\n"
    "cmd /c C:\\Tarsus\\System\\Restore\\PatientsRestored.bat\r\n"
    "CMD /C xcopy \"%STAGING%\\CABFILE\\Patient\" \"C:\\Tarsus\\Data\\Patient\\\" /S /Y\r\n"
    "CMD /C xcopy \"%STAGING%\\CABFILE\\Image.ddo\" \"C:\\Tarsus\\Data\\Image.ddo\\\" /S /Y\r\n";

namespace {

/// A batch file that breaks off would be a quick one.
void RunSilently(std::wstring command) {
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr, &startup,
                     &process) == FALSE)
    throw std::runtime_error("cannot start " + endtoend::Utf8(command));
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD code = 0;
  GetExitCodeProcess(process.hProcess, &code);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  if (code != 0) throw std::runtime_error("exit code " + std::to_string(code) + ": " + endtoend::Utf8(command));
}

/// It lies beside this program.
std::string Comparer() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return endtoend::fs::path(path).replace_filename("bench_compare.exe").string();
}

}  // namespace

double Seconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void Rest() {
  Sleep(3000);
}

double TimeBatch(const std::string& commands) {
  // As long a path as the program's, which names its folder by the time.
  const endtoend::fs::path temporary = endtoend::fs::temp_directory_path();
  const endtoend::fs::path staging = temporary / "000000000000";
  const endtoend::fs::path batch = temporary / "bench.bat";
  endtoend::fs::create_directories(staging / "CABFILE");
  endtoend::WriteBytes(
      batch, "@echo off\r\nset STAGING=" + staging.string() + "\r\nset COMPARE=" + Comparer() + "\r\n" + commands);
  const double start = Seconds();
  RunSilently(L"cmd /c " + batch.wstring() + L" <nul >nul 2>&1");
  const double taken = Seconds() - start;
  endtoend::fs::remove_all(staging);
  endtoend::fs::remove(batch);
  return taken;
}

}  // namespace bench
