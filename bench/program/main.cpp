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

/// What one work has taken: of the clock, and of a processor by the program itself.
struct Taken {
  double seconds;
  double processorSeconds;
};

class Stopwatch {
 public:
  explicit Stopwatch(Operator& person) : process_(person.TheProgram().Handle()) {}
  Taken Read() const { return {Seconds() - start_, ProcessorSeconds(process_) - processor_}; }

 private:
  HANDLE process_;
  double start_ = Seconds();
  double processor_ = ProcessorSeconds(process_);
};

/// Back in the main menu afterwards. `watch` is told when the copying begins.
Taken TimeWatchedBackup(Operator& person, bench::PhaseWatch* watch) {
  const Window dialog = person.OpenBackup({.patient = true});
  const Stopwatch stopwatch(person);
  dialog.Press(ID_frmBackup_cmdStart);
  const bench::StagingWatch staging;
  for (const bool there : {true, false}) staging.Wait("CABFILE\\PatientData.cab", there);
  const Window destination = Patiently([&] { return person.DestinationDialog(); });
  if (watch) watch->Copying();
  person.Accept(destination, bench::kSet);
  while (Patiently([&] { return person.NextMessage(); }) != base::MessageId::BackupComplete) person.Answer();
  const Taken taken = stopwatch.Read();
  person.Answer();
  person.MainMenu();
  return taken;
}

Taken TimeBackup(Operator& person) {
  return TimeWatchedBackup(person, nullptr);
}

Taken TimeRestore(Operator& person) {
  const Window dialog = person.OpenRestore(bench::kSet);
  const Stopwatch stopwatch(person);
  dialog.Press(ID_frmRestore_cmdStart);
  bench::StagingWatch().Wait("", false);
  Patiently([&] { return person.NextMessage(); });
  const Taken taken = stopwatch.Read();
  person.ConsentUntil(base::MessageId::RestoreComplete, {});
  person.MainMenu();
  return taken;
}

/// How long the program's window and one that is idle let others wait while `work` is done.
template <typename Work>
void WatchAnswers(const std::string& what, HWND window, HWND idle, const bench::PhaseWatch* phases, Work work) {
  bench::AnswerWatch answers(window, phases);
  bench::AnswerWatch idleAnswers(idle, nullptr);
  work();
  Print("answer." + what, answers.End());
  Print("answer.idle", idleAnswers.End());
  for (const auto& late : answers.LateAnswers()) {
    std::printf("# %s: %.0f ms without an answer after %.1f s (%s)\n", what.c_str(), late.milliseconds, late.at,
                bench::NameOf(late.phase));
  }
}

/// One backup and one restore under watch; they warm the caches too.
void Watch(Operator& person) {
  const bench::IdleWindow idle;
  const HWND menu = person.MainMenu().Handle();
  bench::PhaseWatch phases;
  WatchAnswers("backup", menu, idle.Handle(), &phases, [&] { TimeWatchedBackup(person, &phases); });
  std::map<std::string, double> sums;
  for (const auto& span : phases.End()) {
    std::printf("span %s %.3f %.3f\n", bench::NameOf(span.phase), span.from, span.to);
    sums[bench::NameOf(span.phase)] += span.to - span.from;
  }
  for (const auto& [phase, seconds] : sums) Print("profile." + phase, seconds);
  WatchAnswers("restore", menu, idle.Handle(), nullptr, [&] { TimeRestore(person); });
}

double PeakMegabytes(HANDLE process) {
  PROCESS_MEMORY_COUNTERS memory{};
  GetProcessMemoryInfo(process, &memory, sizeof(memory));
  return static_cast<double>(memory.PeakWorkingSetSize) / 1048576;
}

/// The program's and the batch file's way of the same work, one directly after the other.
template <typename Program, typename Batch>
void TakeTurns(Program program, Batch batch, bool programFirst) {
  if (!programFirst) batch();
  program();
  if (programFirst) batch();
}

void Compare(Operator& person, int rounds, double seconds) {
  const double end = Seconds() + seconds;
  const auto time = [&](const std::string& name, Taken (*work)(Operator&)) {
    bench::Rest();
    const Taken taken = work(person);
    Print(name, taken.seconds);
    Print("processor", 100 * taken.processorSeconds / taken.seconds);
  };
  const auto timeBatch = [](const std::string& name, const char* commands) {
    bench::Rest();
    Print(name + ".batch", bench::TimeBatch(commands));
  };
  for (int round = 0; round == 0 || (round < rounds && Seconds() < end); ++round) {
    fs::remove_all(bench::kSet);
    fs::create_directory(bench::kBatchSet);
    const bool programFirst = round % 2 == 1;
    TakeTurns([&] { time("backup", TimeBackup); }, [&] { timeBatch("backup", bench::kBackupCommands); }, programFirst);
    // A restore is short, so that a moment's slowness of the machine weighs more: twice, once in each order.
    for (const bool first : {programFirst, !programFirst}) {
      TakeTurns([&] { time("restore", TimeRestore); }, [&] { timeBatch("restore", bench::kRestoreCommands); }, first);
    }
    fs::remove_all(bench::kBatchSet);
  }
  Print("memory", PeakMegabytes(person.TheProgram().Handle()));
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
