// Start-up: from the installation check to the dialogs.
#pragma once

#include <string>

#include "app/Application.h"

namespace app {

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

/// Whether Directory.ini stands where the host's registry says.
base::Outcome CheckInstallation(host::QX32& registry, host::FileSystem& files);

/// Reads the message table's name from the system configuration database. A failure carries its message.
base::Outcome InitSystemDatabase(host::QX32& pathTable, host::QX32lib& database, std::string& tableName);

/// Fails, with the message that names what runs already, where this program must not run beside it.
base::Outcome CheckExclusiveRun(host::Processes& processes, host::MessageLoop& messageLoop);

/// Whether an executable runs whose name has the same first 15 characters, case-sensitively:
/// more than 15 never count.
bool IsProcessRunning(host::Processes& processes, host::MessageLoop& messageLoop, const std::string& name);

/// Opens the manual that stands beside the program. Where there is none, or nothing to open it with, that is told.
void ShowManual(Application& application);

/// Tells that a document cannot be opened or printed, by message 61500, where the catalogue has it.
void TellNotOpened(Messages& messages, const std::string& document);

}  // namespace app
