// The single way out of the program.
#include "app/Finish.h"

namespace app {
namespace {

void SignOut(Application& application) {
  if (!application.state.SignedIn) return;
  const base::Outcome recorded = application.records.RecordSignInOut(SignInOut::SignOut);
  if (!recorded.IsDone()) application.failures.Show(recorded, MessageId::SignOutNotRecorded);
}

/// Starts the host application and leaves it to itself. The folder ends in "\" already; the command goes out with the
/// separator doubled, as integrators know it from the host's description, and Windows takes it for one.
void RestartHost(Application& application) {
  const std::string command = application.state.SystemFolder + "\\" + application.appearance.ApplicationName + " /a";
  const std::string folder = application.host.files.CurrentFolder();
  application.log.WriteLog(LogLevel::Information, "Current Directory : " + folder);
  const auto started = application.host.processes.Start(command, host::WindowStyle::Normal);
  if (!started) application.failures.Show(started.Why(), MessageId::HostNotStarted);
  application.log.WriteLog(LogLevel::Information, "Finish Backup Utility and Start Tarsus");
}

/// Does not return.
void Halt(Application& application) {
  application.host.catalogue.Abandon();
  application.log.WriteLog(LogLevel::Error, "Halt Backup Utility");
  SignOut(application);
  application.host.processes.EndThisProcess();
}

}  // namespace

void FinishApplication(Application& application, ExitMode mode) {
  if (mode == ExitMode::Halt) return Halt(application);
  application.host.catalogue.Close();
  static_cast<void>(application.host.files.SetCurrentFolder(application.state.StartupDirectory));
  SignOut(application);
  if (mode == ExitMode::EndAndRestartHost) {
    RestartHost(application);
  } else {
    application.log.WriteLog(LogLevel::Information, "Finish Backup Utility");
  }
  application.toolkit.SetPointer(forms::Pointer::Default);
  application.messages.ReleaseMessageDialog();
  application.records.ReleaseOperationRecorder();
}

std::unique_ptr<host::BusyTime> KeepRunning(Application& application) {
  const bool hasWords = application.messages.IsDefined(MessageId::JobRunsReason);
  return application.host.shell.BeginBusy(hasWords ? application.messages.GetMessageText(MessageId::JobRunsReason)
                                                   : application.state.ProgramTitle);
}

}  // namespace app
