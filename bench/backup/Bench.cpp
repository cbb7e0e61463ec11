// Times one backup and one restore of the patient data through the program's
// windows against the same external commands run by one batch file, in pairs.
//
//   bench_backup ROUNDS
//
// Runs on a workstation made by bench/backup/run.sh. Prints a table of seconds
// and ratios, and what the program itself used.

#include <windows.h>
// Behind windows.h, which it needs.
#include <psapi.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

#include "operator/Operator.h"
#include "resource.h"

namespace {

using namespace endtoend;

constexpr char kSet[] = "E:\\Set\\";
const fs::path kWork = L"C:\\Bench";

constexpr char kBackupCommands[] =
    "@echo off\r\n"
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

constexpr char kRestoreCommands[] =
    "@echo off\r\n"
    "cd /d C:\\Bench\\Staging\r\n"
    "CMD /C xcopy \"E:\\Set\\PatientData.cab\" \"C:\\Bench\\Staging\\\" /S /Y\r\n"
    "C:\\Tarsus\\Program\\cabarc -r -p X PatientData.cab CABFILE\r\n"
    "CMD /C xcopy \"C:\\Bench\\Staging\\CABFILE\\Patient.db\" \"C:\\Tarsus\\Database\\\" /S /Y\r\n"
    "CMD /C xcopy \"C:\\Bench\\Staging\\CABFILE\\Study.db\" \"C:\\Tarsus\\Database\\\" /S /Y\r\n"
    "cmd /c C:\\Tarsus\\System\\Restore\\PatientsRestored.bat\r\n"
    "CMD /C xcopy \"C:\\Bench\\Staging\\CABFILE\\Patient\" \"C:\\Tarsus\\Data\\Patient\\\" /S /Y\r\n"
    "CMD /C xcopy \"C:\\Bench\\Staging\\CABFILE\\Image.ddo\" \"C:\\Tarsus\\Data\\Image.ddo\\\" /S /Y\r\n";

double Seconds() {
  LARGE_INTEGER count;
  LARGE_INTEGER frequency;
  QueryPerformanceCounter(&count);
  QueryPerformanceFrequency(&frequency);
  return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double TimeBatch(const char* commands) {
  fs::create_directories(kWork / "Staging" / "CABFILE");
  WriteBytes(kWork / "run.bat", commands);
  const double start = Seconds();
  std::wstring command = L"cmd /c C:\\Bench\\run.bat";
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr, &startup,
                 &process);
  WaitForSingleObject(process.hProcess, INFINITE);
  const double taken = Seconds() - start;
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  fs::remove_all(kWork);
  return taken;
}

double TimeBackup(Operator& person) {
  const Window dialog = person.OpenBackup({.patient = true});
  const double start = Seconds();
  person.Accept(person.StartBackup(dialog), kSet);
  while (person.NextMessage() != 65300) person.Answer();
  const double taken = Seconds() - start;
  person.Answer();
  person.MainMenu();
  return taken;
}

double TimeRestore(Operator& person) {
  const Window dialog = person.OpenRestore(kSet);
  const double start = Seconds();
  dialog.Press(ID_frmRestore_cmdStart);
  person.NextMessage();
  const double taken = Seconds() - start;
  person.ConsentUntil(65400, {});
  person.MainMenu();
  return taken;
}

double Median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

void Print(const char* what, const std::vector<double>& program, const std::vector<double>& batch) {
  std::vector<double> ratios;
  for (std::size_t i = 0; i < program.size(); ++i) ratios.push_back(program[i] / batch[i]);
  std::printf("%-10s program %6.2f s   batch file %6.2f s   ratio %5.3f (%.3f to %.3f)\n", what, Median(program),
              Median(batch), Median(ratios), *std::ranges::min_element(ratios), *std::ranges::max_element(ratios));
}

double ProcessorSeconds(HANDLE process) {
  FILETIME created{};
  FILETIME ended{};
  FILETIME kernel{};
  FILETIME user{};
  GetProcessTimes(process, &created, &ended, &kernel, &user);
  const auto seconds = [](const FILETIME& time) {
    return (static_cast<double>(time.dwHighDateTime) * 4294967296.0 + time.dwLowDateTime) / 1e7;
  };
  return seconds(kernel) + seconds(user);
}

void Run(int rounds) {
  TidyUp();
  Operator person;
  person.SignIn();
  HANDLE process = person.TheProgram().Handle();
  std::vector<double> backups, backupCommands, restores, restoreCommands;
  TimeBackup(person);  // warms the caches for both
  const double processorBefore = ProcessorSeconds(process);
  for (int round = 0; round < rounds; ++round) {
    backups.push_back(TimeBackup(person));
    restores.push_back(TimeRestore(person));
    fs::remove_all(kSet);
    fs::create_directory(kSet);
    backupCommands.push_back(TimeBatch(kBackupCommands));
    restoreCommands.push_back(TimeBatch(kRestoreCommands));
    fs::remove_all(kSet);
  }
  const double processor = ProcessorSeconds(process) - processorBefore;
  double wall = 0;
  for (int round = 0; round < rounds; ++round)
    wall += backups[static_cast<std::size_t>(round)] + restores[static_cast<std::size_t>(round)];
  PROCESS_MEMORY_COUNTERS memory{};
  GetProcessMemoryInfo(process, &memory, sizeof(memory));
  Print("backup", backups, backupCommands);
  Print("restore", restores, restoreCommands);
  std::printf("program    %.2f s of processor in %.2f s (%.1f %% of a core), at most %.1f MiB of memory\n", processor,
              wall, 100 * processor / wall, static_cast<double>(memory.PeakWorkingSetSize) / 1048576);
  person.End();
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Run(argc > 1 ? std::atoi(argv[1]) : 5);
  } catch (const std::exception& error) {
    std::printf("bench_backup: %s\n", error.what());
    return 1;
  }
  return 0;
}
