#include "fakes/FakeProcesses.h"

#include <algorithm>

#include "fakes/Text.h"

namespace fakes {

class FakeProgram : public host::StartedProgram {
 public:
  FakeProgram(FakeProcesses& processes, std::size_t number) : processes_(processes), number_(number) {}
  std::uint32_t Id() const override { return 4000 + 4 * static_cast<std::uint32_t>(number_); }
  std::int32_t Wait(std::uint32_t& exitCode) override { return processes_.Work(number_, exitCode); }

 private:
  FakeProcesses& processes_;
  std::size_t number_;
};

FakeProcesses::FakeProcesses(Disk& disk, CallCounter& calls) : disk_(disk), calls_(calls) {}

void FakeProcesses::Install(const std::string& path, ProgramAction action) {
  disk_.Write(path, "program " + path);
  actions_[Fold(disk_.Absolute(path))] = std::move(action);
}

int FakeProcesses::CountStarted(const std::string& head) const {
  return static_cast<int>(std::count_if(
      started.begin(), started.end(), [&](const StartRecord& record) { return record.commandLine.starts_with(head); }));
}

std::string FakeProcesses::Locate(const std::string& program) {
  const bool hasPath = program.find('\\') != std::string::npos;
  const std::string name = program.find('.', program.rfind('\\') + 1) == std::string::npos ? program + ".exe" : program;
  if (hasPath) return disk_.IsFile(name) ? disk_.Absolute(name) : std::string();
  for (const std::string& folder :
       {programFolder, disk_.CurrentFolder() + "\\", std::string("C:\\Windows\\System32\\")})
    if (disk_.IsFile(folder + name)) return disk_.Absolute(folder + name);
  return {};
}

std::unique_ptr<host::StartedProgram> FakeProcesses::Start(const std::string& commandLine, host::WindowStyle style) {
  if (calls_.Fails("Processes", "Start", commandLine)) return nullptr;
  const Words words = SplitCommandLine(commandLine);
  const std::string path = words.empty() ? std::string() : Locate(words[0]);
  if (path.empty() || !actions_.contains(Fold(path))) return nullptr;
  started.push_back({commandLine, disk_.CurrentFolder(), style, false});
  return std::make_unique<FakeProgram>(*this, started.size() - 1);
}

std::int32_t FakeProcesses::Work(std::size_t number, std::uint32_t& exitCode) {
  const StartRecord record = started[number];
  if (beforeWork) beforeWork(record.commandLine);
  const std::string callersFolder = disk_.CurrentFolder();
  disk_.SetCurrentFolder(record.currentFolder);
  const Words words = SplitCommandLine(record.commandLine);
  const std::string path = Locate(words[0]);
  const auto action = actions_.find(Fold(path));
  const std::uint32_t code = action == actions_.end() ? 1 : action->second(disk_, words);
  disk_.SetCurrentFolder(callersFolder);
  started[number].waitedFor = true;
  if (calls_.Fails("StartedProgram", "Wait", record.commandLine)) return -1;
  exitCode = code;
  return 0;
}

std::vector<std::string> FakeProcesses::RunningExecutables() {
  return calls_.Fails("Processes", "RunningExecutables") ? std::vector<std::string>() : running;
}

bool FakeProcesses::HasPreviousInstance() {
  return previousInstance;
}

void FakeProcesses::EndThisProcess() {
  ended = true;
  throw ProcessEnded();
}

}  // namespace fakes
