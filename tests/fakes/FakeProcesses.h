// Programs of the imaginary workstation, and the record of those started.
#pragma once

#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "fakes/CallCounter.h"
#include "fakes/CommandLineTools.h"
#include "fakes/Disk.h"
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
};

/// A program does its work when it is waited for; one that nobody waits for stays running for
/// ever. A program is started only if its file stands on the disk.
class FakeProcesses : public host::Processes {
 public:
  FakeProcesses(Disk& disk, CallCounter& calls);

  /// Puts a program on the disk.
  void Install(const std::string& path, ProgramAction action);

  /// Runs before each program's own work, with its command line: the place for a medium that vanishes.
  std::function<void(const std::string& commandLine)> beforeWork;
  std::string programFolder = "C:\\Tarsus\\Backup\\";  ///< where this executable stands
  std::vector<std::string> running = {"System", "explorer.exe", "QXBackupUtility.exe"};
  bool previousInstance = false;
  std::vector<StartRecord> started;
  bool ended = false;
  /// How many of the started programs have a command line that begins so.
  int CountStarted(const std::string& head) const;

  std::unique_ptr<host::StartedProgram> Start(const std::string& commandLine, host::WindowStyle style) override;
  std::vector<std::string> RunningExecutables() override;
  bool HasPreviousInstance() override;
  [[noreturn]] void EndThisProcess() override;

 private:
  friend class FakeProgram;
  /// Full path of the file that a command line starts; empty when there is none.
  std::string Locate(const std::string& program);
  std::int32_t Work(std::size_t number, std::uint32_t& exitCode);

  Disk& disk_;
  CallCounter& calls_;
  std::map<std::u32string, ProgramAction> actions_;
};

}  // namespace fakes
