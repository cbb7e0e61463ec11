// Programs: starting them, waiting for them, seeing which ones run.
#pragma once

#include "host/Processes.h"
#include "windows/adapters/HiddenPrograms.h"
#include "windows/adapters/Win32MessageLoop.h"

namespace windows {

class Win32Processes : public host::Processes {
 public:
  /// Marks this process as an instance that runs, until it ends. `loop` serves the messages during waits.
  explicit Win32Processes(Win32MessageLoop& loop);

  base::Obtained<host::StartedProgram> Start(const std::string& commandLine, host::WindowStyle style) override;
  std::vector<std::string> RunningExecutables() override;
  bool HasPreviousInstance() override { return hasPreviousInstance_; }
  [[noreturn]] void EndThisProcess() override;

 private:
  Win32MessageLoop& loop_;
  HiddenConsole console_;
  Handle instanceMark_;
  bool hasPreviousInstance_;
};

}  // namespace windows
