// What lives from start-up to exit, owned by one object that the drivers and dialogs are handed.
//
// Whoever needs less takes less: the log, the messages, the path table or a contract of the host.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "app/Appearance.h"
#include "app/JobList.h"
#include "app/Log.h"
#include "app/Messages.h"
#include "app/PathTable.h"
#include "app/Progress.h"
#include "app/Records.h"
#include "forms/Toolkit.h"
#include "host/Host.h"

namespace app {

/// What the operator is doing; the main menu sets it.
enum class Operation : std::int16_t { None = 0, MainMenu = 2, Backup = 3, Restore = 4, MaintenanceLogBackup = 5 };

/// The operator's right on this program.
enum class Right : std::int32_t { None = 0, Backup = 1, Restore = 2, BackupAndRestore = 3, Privileged = 4 };

/// How the program ends.
enum class ExitMode : std::int16_t { Halt = -1, EndAndRestartHost = 0, EndQuietly = 1 };

/// All texts are UTF-8. The folders from ApplicationRootFolder on end in "\" once they are set; StartupDirectory stands
/// as the system gives it, and LogFolder as the path table has it.
struct State {
  std::string StartupDirectory;
  bool SignedIn = false;
  app::ExitMode ExitMode = app::ExitMode::EndAndRestartHost;
  Operation CurrentOperation = Operation::None;
  std::string HostName;
  std::string SoftwareVersion;
  std::string UserId;
  Right UserRight = Right::None;
  std::string MsgTableName;

  std::string LogFolder;
  std::string ApplicationRootFolder;
  std::string SystemFolder;
  std::string UserFolder;

  std::string ProgramTitle;
  std::array<std::string, 2> SignInOutWords;
  std::array<std::string, 10> CategoryNames;  ///< the last one is never filled
  std::array<std::string, 2> PhaseWords;

  std::string SelectedFolder;  ///< destination of a backup, source of a restore
};

class Application {
 public:
  Application(host::Host outside, forms::Toolkit& windows) : host(outside), toolkit(windows) {}
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  host::Host host;
  forms::Toolkit& toolkit;
  State state;
  AppearanceSettings appearance;
  Messages messages{host.catalogue, host.components};
  OperationLog log{host.components, host.clock, host.qx32, messages, state.LogFolder};
  Failures failures{messages, log};
  PathTable paths{host.qx32, failures};
  Records records{host.components, state};
  Progress progress{host.clock};
  JobList pastJobs{host.files, log, state.LogFolder};
};

}  // namespace app
