// Programs of the imaginary workstation, and the record of those started.
#pragma once

#include <algorithm>
#include <stdexcept>

#include "fakes/CallCounter.h"
#include "fakes/CommandLineTools.h"
#include "fakes/Disk.h"
#include "fakes/Text.h"
#include "host/Processes.h"

namespace fakes {

/// Thrown in place of the process's end, so that a test survives it.
class ProcessEnded : public std::runtime_error {
 public:
  ProcessEnded() : std::runtime_error("the program ended itself") {}
};

/// What a program does: it gets the disk, whose current folder is its own, and all words of
/// its command line, and returns its exit code.
using ProgramAction = std::function<std::uint32_t(Disk&, const Words&)>;

struct StartRecord {
  std::string commandLine;
  std::string currentFolder;
  host::WindowStyle style = host::WindowStyle::Hidden;
  bool waitedFor = false;
  host::Where where = host::Where::ProgramsOnly;
};

/// A program does its work when it is waited for; one that nobody waits for stays running for
/// ever. A program is started only if its file stands on the disk.
class FakeProcesses : public host::Processes {
 public:
  FakeProcesses(Disk& disk, CallCounter& calls) : disk_(disk), calls_(calls) {}

  /// Puts a program on the disk.
  void Install(const std::string& path, ProgramAction action) {
    disk_.Write(path, "program " + path);
    actions_[Fold(disk_.Absolute(path))] = std::move(action);
  }

  /// Runs before each program's own work, with its command line: the place for a medium that vanishes.
  std::function<void(const std::string& commandLine)> beforeWork;
  /// What the waiting program does while one is at work; an action that takes its time calls it. May be empty.
  host::Meanwhile meanwhile;
  std::vector<std::string> running = {"System", "explorer.exe", "QXBackupUtility.exe"};
  bool previousInstance = false;
  bool administratorsRights = true;
  std::vector<StartRecord> started;
  bool ended = false;

  /// How many of the started programs have a command line that begins so.
  int CountStarted(const std::string& head) const {
    return static_cast<int>(
        std::ranges::count_if(started, [&](const auto& each) { return each.commandLine.starts_with(head); }));
  }

  base::Obtained<host::StartedProgram> Start(const std::string& commandLine, host::WindowStyle style,
                                             host::Where where = host::Where::ProgramsOnly) override {
    if (calls_.Fails("Processes", __func__, commandLine)) return InjectedFault(commandLine);
    if (!Find(commandLine, where)) return base::Failure(commandLine + ": not found");
    started.push_back({commandLine, disk_.CurrentFolder(), style, false, where});
    return std::make_unique<Program>(*this, started.size() - 1);
  }
  std::vector<std::string> RunningExecutables() override {
    return calls_.Fails("Processes", __func__) ? std::vector<std::string>() : running;
  }
  bool HasPreviousInstance() override { return previousInstance; }
  bool HasAdministratorsRights() override { return administratorsRights; }
  [[noreturn]] void EndThisProcess() override {
    ended = true;
    throw ProcessEnded();
  }

 private:
  struct Program : host::StartedProgram {
    Program(FakeProcesses& owner, std::size_t place) : processes(owner), number(place) {}
    std::uint32_t Id() const override { return 4000 + 4 * static_cast<std::uint32_t>(number); }
    std::optional<std::uint32_t> Wait(const host::Meanwhile& meanwhile) override {
      processes.meanwhile = meanwhile;
      return processes.Work(number);
    }

    FakeProcesses& processes;
    std::size_t number;
  };

  /// What the program of this name does in one of the folders, each with its "\"; empty when there is none.
  ProgramAction FindIn(const Words& folders, const std::string& name) {
    const bool hasEnding = name.find('.', name.rfind('\\') + 1) != std::string::npos;
    const Words endings = hasEnding ? Words{""} : Words{".exe", ".com", ".bat", ".cmd"};
    for (const std::string& folder : folders)
      for (const std::string& ending : endings)
        if (disk_.IsFile(folder + name + ending)) return actions_[Fold(disk_.Absolute(folder + name + ending))];
    return {};
  }

  /// What the program of a command line does; empty when there is none. The interpreter, with a path or without one,
  /// looks for what its command names as it was looked for itself.
  ProgramAction Find(const std::string& commandLine, host::Where where) {
    const Words words = SplitCommandLine(commandLine);
    const std::string name = words.empty() ? "" : words[0];
    const bool inCurrent = where == host::Where::CurrentFolder;
    const bool interprets = FitsWildcard(name, "*CMD") || FitsWildcard(name, "*CMD.exe");
    if (inCurrent && interprets && words.size() > 2 && !SameFold(words[2], "copy"))
      if (ProgramAction named = FindIn({".\\"}, words[2])) return named;
    if (name.find_first_of("\\:") != std::string::npos) return FindIn({""}, name);
    if (inCurrent)
      if (ProgramAction found = FindIn({".\\"}, name)) return found;
    return FindIn(kProgramFolders, name);
  }

  /// The exit code, unless it is not to be had.
  std::optional<std::uint32_t> Work(std::size_t number) {
    const StartRecord record = started[number];
    if (beforeWork) beforeWork(record.commandLine);
    const std::string callersFolder = disk_.CurrentFolder();
    disk_.SetCurrentFolder(record.currentFolder);
    const ProgramAction action = Find(record.commandLine, record.where);
    const std::uint32_t code = action ? action(disk_, SplitCommandLine(record.commandLine)) : 1;
    disk_.SetCurrentFolder(callersFolder);
    started[number].waitedFor = true;
    return calls_.Fails("StartedProgram", "Wait", record.commandLine) ? std::nullopt : std::optional(code);
  }

  inline static const Words kProgramFolders = {"C:\\Tarsus\\Backup\\", "C:\\Windows\\System32\\"};

  Disk& disk_;
  CallCounter& calls_;
  std::map<std::u32string, ProgramAction> actions_;
};

}  // namespace fakes
