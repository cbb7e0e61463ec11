// Start-up and the single way out.
#pragma once

#include <cstdint>
#include <string>

#include "app/ResultCodes.h"

namespace app {

class Application;

/// The two dialogs that start-up shows; they belong to the rooms above this one.
class StartUpDialogs {
 public:
  virtual ~StartUpDialogs() = default;
  virtual void ShowSignIn(Application& application) = 0;
  virtual void ShowMainMenu(Application& application) = 0;
};

/// The entry routine: checks the installation, opens log and catalogue, refuses to run beside
/// a sibling tool, then shows the sign-in and, after it, the main menu.
void Main(Application& application, StartUpDialogs& dialogs);

/// Whether Directory.ini stands where the host's registry says: 0 or -1.
ResultCode CheckInstallation(Application& application);

/// Reads the message table's name from the system configuration database. 0 or a message ID.
std::int32_t InitSystemDatabase(Application& application);

/// 0, or the ID of the message that names what runs already.
std::int32_t CheckExclusiveRun(Application& application);

/// Whether an executable runs whose name has the same first 15 characters, case-sensitively:
/// more than 15 never count.
bool IsProcessRunning(Application& application, const std::string& name);

/// How the program ends.
inline constexpr std::int16_t kHalt = -1;
inline constexpr std::int16_t kEndAndRestartHost = 0;
inline constexpr std::int16_t kEndQuietly = 1;

/// Every way out passes here. kHalt ends the process and does not return; kEndAndRestartHost
/// starts the host application; any other mode ends without it.
void FinishApplication(Application& application, std::int16_t mode);

}  // namespace app
