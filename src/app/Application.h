// The process-wide state, owned by one object that is handed down.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "app/Appearance.h"
#include "forms/Toolkit.h"
#include "host/Host.h"

namespace app {

/// What the operator is doing; the main menu sets it.
enum class Operation : std::int16_t { None = 0, MainMenu = 2, Backup = 3, Restore = 4, MaintenanceLogBackup = 5 };

/// The operator's right on this program.
enum class Right : std::int32_t { None = 0, Backup = 1, Restore = 2, BackupAndRestore = 3, Privileged = 4 };

/// Which ordinary data categories the set under way contains, in the order in
/// which the descriptor lists them.
struct CategoriesPresent {
  bool PatientData = false;
  bool MenuData = false;
  bool SystemData = false;
  bool UserData = false;
  bool ExplanationData = false;
  bool IPCounter = false;  ///< raised by the log category, which carries the IP counter
  bool ReportSetData = false;
  bool ReportData = false;
};

/// All texts are UTF-8; every folder ends in "\" once it is set.
struct State {
  std::string StartupDirectory;
  bool SignedIn = false;
  std::int16_t ExitMode = 0;  ///< 0 ends and restarts the host application, 1 ends without
  Operation CurrentOperation = Operation::None;
  std::int32_t PendingMessageId = 0;  ///< message that a failed step leaves for its caller to show
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
  std::string MediaAppType;    ///< of the first writable media drive
  std::string MediaAppCommand;
  std::string StagingFolder;            ///< work folder of the job under way
  std::uint32_t BackupSize = 0;         ///< bytes to be written
  std::uint32_t JoinedArchiveSize = 0;  ///< bytes of the joined archive of a floppy set
  bool DeleteLogs = false;              ///< delete the host's logs after the backup
  bool BackupDone = false;
  bool RestoreDone = false;
  CategoriesPresent Present;

  bool ProtectPersonalInfo = false;
  std::int32_t CollectImages = 0;
  std::int32_t ImageRangeDays = 9999;
  std::int32_t PersonalInfoResult = 0;  ///< first non-zero code of the personal-information component
};

/// The state, the outside world and the toolkit. Lives from start-up to exit.
class Application {
 public:
  Application(host::Host outside, forms::Toolkit& windows) : host(outside), toolkit(windows) {}
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  host::Host host;
  forms::Toolkit& toolkit;
  State state;
  AppearanceSettings appearance;

  /// Kept from start-up to the end; created again when it has been lost.
  std::unique_ptr<host::MessageDialog> messageDialog;
  std::unique_ptr<host::OperationRecorder> operationRecorder;
};

}  // namespace app
