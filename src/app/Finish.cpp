// The single way out of the program.
#include "app/Application.h"
#include "app/Log.h"
#include "app/Messages.h"
#include "app/Records.h"
#include "app/StartUp.h"

namespace app {
namespace {

constexpr std::int32_t kHostNotStarted = 60260;
constexpr std::int32_t kSignOutNotRecorded = 60501;

void SignOut(Application& application) {
  if (!application.state.SignedIn) return;
  if (RecordSignInOut(application, application.state.UserId, SignInOut::SignOut) != 0) {
    ShowMessage(application, kSignOutNotRecorded);
  }
}

/// Starts the host application and leaves it to itself. The folder ends in "\" already; the
/// doubled separator has always been part of this command.
void RestartHost(Application& application) {
  const std::string command = application.state.SystemFolder + "\\" + application.appearance.ApplicationName + " /a";
  const std::string folder = application.host.files.CurrentFolder();
  WriteLog(application, 1, LogLevel::Information, "Current Directory : " + folder);
  if (!application.host.processes.Start(command, host::WindowStyle::Normal)) {
    ShowMessage(application, kHostNotStarted);
  }
  WriteLog(application, 1, LogLevel::Information, "Finish Backup Utility and Start Tarsus");
}

/// Does not return.
void Halt(Application& application) {
  application.host.catalogue.Abandon();
  WriteLog(application, 1, LogLevel::Error, "Halt Backup Utility");
  SignOut(application);
  application.host.processes.EndThisProcess();
}

}  // namespace

void FinishApplication(Application& application, std::int16_t mode) {
  if (mode == kHalt) return Halt(application);
  application.host.catalogue.Close();
  application.host.files.SetCurrentFolder(application.state.StartupDirectory);
  SignOut(application);
  if (mode != kEndAndRestartHost) {
    WriteLog(application, 1, LogLevel::Information, "Finish Backup Utility");
  } else {
    RestartHost(application);
  }
  application.toolkit.SetPointer(forms::Pointer::Default);
  application.messageDialog.reset();
  application.operationRecorder.reset();
}

}  // namespace app
