// Measures the program through its windows: a backup and a restore of the patient data against the same external
// commands in one batch file, what a backup's time goes into, and how long the message thread lets others wait.
//
//   bench_program ROUNDS SECONDS     no more rounds are begun after SECONDS
//
// Runs on a workstation that bench/run.sh has set up. Prints one figure a line: its name and a number; a line
// "span PHASE FROM TO" for each stretch of one backup; and for people lines that begin with "#".

#include <windows.h>
// Behind windows.h, which it needs.
#include <psapi.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <map>
#include <string>

#include "operator/Operator.h"
#include "program/Batch.h"
#include "program/Watch.h"
#include "resource.h"

namespace {

using namespace endtoend;
using bench::Seconds;

void Print(const std::string& name, double value) {
  std::printf("%s %.6f\n", name.c_str(), value);
  std::fflush(stdout);
}

/// Does again what gives up too soon on a slow machine, for ten minutes at most.
template <typename Action>
auto Patiently(Action action) {
  for (const double end = Seconds() + 600;;) {
    try {
      return action();
    } catch (const std::exception&) {
      if (Seconds() > end) throw;
    }
  }
}

/// Back in the main menu afterwards. `watch` is told when the copying begins.
double TimeBackup(Operator& person, bench::PhaseWatch* watch = nullptr) {
  const Window dialog = person.OpenBackup({.patient = true});
  const double start = Seconds();
  dialog.Press(ID_frmBackup_cmdStart);
  const Window destination = Patiently([&] { return person.DestinationDialog(); });
  if (watch) watch->Copying();
  person.Accept(destination, bench::kSet);
  while (Patiently([&] { return person.NextMessage(); }) != 65300) person.Answer();
  const double taken = Seconds() - start;
  person.Answer();
  person.MainMenu();
  return taken;
}

double TimeRestore(Operator& person) {
  const Window dialog = person.OpenRestore(bench::kSet);
  const double start = Seconds();
  dialog.Press(ID_frmRestore_cmdStart);
  Patiently([&] { return person.NextMessage(); });
  const double taken = Seconds() - start;
  person.ConsentUntil(65400, {});
  person.MainMenu();
  return taken;
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

/// One backup and one restore under watch; they warm the caches too.
void Watch(Operator& person) {
  const bench::IdleWindow idle;
  const HWND menu = person.MainMenu().Handle();
  std::map<std::string, double> sums;
  {
    bench::PhaseWatch phases;
    bench::AnswerWatch answers(menu, &phases);
    bench::AnswerWatch idleAnswers(idle.Handle(), nullptr);
    TimeBackup(person, &phases);
    Print("answer.backup", answers.End());
    Print("answer.idle", idleAnswers.End());
    for (const auto& late : answers.LateAnswers()) {
      std::printf("# backup: %.0f ms without an answer after %.1f s (%s)\n", late.milliseconds, late.at,
                  bench::NameOf(late.phase));
    }
    for (const auto& span : phases.End()) {
      std::printf("span %s %.3f %.3f\n", bench::NameOf(span.phase), span.from, span.to);
      sums[bench::NameOf(span.phase)] += span.to - span.from;
    }
  }
  for (const auto& [phase, seconds] : sums) Print("profile." + phase, seconds);
  bench::AnswerWatch answers(menu, nullptr);
  TimeRestore(person);
  Print("answer.restore", answers.End());
  for (const auto& late : answers.LateAnswers())
    std::printf("# restore: %.0f ms without an answer after %.1f s\n", late.milliseconds, late.at);
}

void TimeProgram(Operator& person) {
  HANDLE process = person.TheProgram().Handle();
  const double before = ProcessorSeconds(process);
  const double backup = TimeBackup(person);
  const double restore = TimeRestore(person);
  Print("backup", backup);
  Print("restore", restore);
  Print("processor", 100 * (ProcessorSeconds(process) - before) / (backup + restore));
  fs::remove_all(bench::kSet);
}

void TimeBatches() {
  fs::create_directory(bench::kSet);
  Print("backup.batch", bench::TimeBatch(bench::kBackupCommands));
  Print("restore.batch", bench::TimeBatch(bench::kRestoreCommands));
  fs::remove_all(bench::kSet);
}

/// The two take turns in going first: memory that one has given back is quicker to be had for the other.
void Compare(Operator& person, int rounds, double seconds) {
  const double end = Seconds() + seconds;
  fs::remove_all(bench::kSet);
  for (int round = 0; round == 0 || (round < rounds && Seconds() < end); ++round) {
    if (round % 2 == 0) TimeBatches();
    TimeProgram(person);
    if (round % 2 == 1) TimeBatches();
  }
  PROCESS_MEMORY_COUNTERS memory{};
  GetProcessMemoryInfo(person.TheProgram().Handle(), &memory, sizeof(memory));
  Print("memory", static_cast<double>(memory.PeakWorkingSetSize) / 1048576);
}

void Run(int rounds, double seconds) {
  TidyUp();
  Operator person;
  person.SignIn();
  Watch(person);
  Compare(person, rounds, seconds);
  person.End();
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Run(argc > 1 ? std::atoi(argv[1]) : 3, argc > 2 ? std::atof(argv[2]) : 300);
  } catch (const std::exception& error) {
    std::printf("# bench_program: %s\n", error.what());
    return 1;
  }
  return 0;
}
