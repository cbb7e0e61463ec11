// The external commands of one backup and one restore, run by one batch file.
#include "program/Batch.h"

#include <chrono>
#include <stdexcept>

#include "operator/Window.h"

namespace bench {

const char kBackupCommands[] =
    "cd /d C:\\Tarsus\\System\\Backup\r\n"
    "cmd /c ExportPatientList.bat\r\n"
    "cd /d C:\\Bench\\Staging\r\n"
    "CMD /C xcopy \"C:\\Tarsus\\Database\\Patient.db\" \"C:\\Bench\\Staging\\\" /S /Y\r\n"
    "CMD /C xcopy \"C:\\Tarsus\\Database\\Study.db\" \"C:\\Bench\\Staging\\\" /S /Y\r\n"
    "CMD /C xcopy \"C:\\Tarsus\\Temp\\PatientList.txt\" \"C:\\Bench\\Staging\\\" /S /Y\r\n"
    "CMD /C xcopy \"C:\\Tarsus\\Data\\Patient\" \"C:\\Bench\\Staging\\Patient\\\" /S /Y\r\n"
    "CMD /C xcopy \"C:\\Tarsus\\Data\\Image.ddo\" \"C:\\Bench\\Staging\\Image.ddo\\\" /S /Y\r\n"
    "C:\\Tarsus\\Program\\cabarc -r -p n PatientData.cab Patient.db PatientList.txt Study.db .\\Image.ddo\\*.* "
    ".\\Patient\\*.*\r\n"
    "CMD /C xcopy \"C:\\Bench\\Staging\\PatientData.cab\" \"E:\\Set\\\" /S /Y\r\n"
    "CMD /C xcopy \"C:\\Tarsus\\System\\BackupVersion.ini\" \"E:\\Set\\\" /S /Y\r\n";

const char kRestoreCommands[] =
    "cd /d C:\\Bench\\Staging\r\n"
    "CMD /C xcopy \"E:\\Set\\PatientData.cab\" \"C:\\Bench\\Staging\\\" /S /Y\r\n"
    "C:\\Tarsus\\Program\\cabarc -r -p X PatientData.cab CABFILE\r\n"
    "CMD /C xcopy \"C:\\Bench\\Staging\\CABFILE\\Patient.db\" \"C:\\Tarsus\\Database\\\" /S /Y\r\n"
    "CMD /C xcopy \"C:\\Bench\\Staging\\CABFILE\\Study.db\" \"C:\\Tarsus\\Database\\\" /S /Y\r\n"
    "cmd /c C:\\Tarsus\\System\\Restore\\PatientsRestored.bat\r\n"
    "CMD /C xcopy \"C:\\Bench\\Staging\\CABFILE\\Patient\" \"C:\\Tarsus\\Data\\Patient\\\" /S /Y\r\n"
    "CMD /C xcopy \"C:\\Bench\\Staging\\CABFILE\\Image.ddo\" \"C:\\Tarsus\\Data\\Image.ddo\\\" /S /Y\r\n";

namespace {

void RunSilently(std::wstring command) {
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr, &startup,
                     &process) == FALSE)
    throw std::runtime_error("cannot start " + endtoend::Utf8(command));
  WaitForSingleObject(process.hProcess, INFINITE);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

}  // namespace

double Seconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double TimeBatch(const std::string& commands) {
  endtoend::fs::create_directories(kWork / "Staging" / "CABFILE");
  endtoend::WriteBytes(kWork / "run.bat", "@echo off\r\n" + commands);
  const double start = Seconds();
  RunSilently(L"cmd /c C:\\Bench\\run.bat <nul >nul 2>&1");
  const double taken = Seconds() - start;
  endtoend::fs::remove_all(kWork);
  return taken;
}

}  // namespace bench
