// The single way out of the program, and what keeps others from ending it.
#pragma once

#include <memory>

#include "app/Application.h"

namespace app {

/// Every way out passes here. Halt ends the process and does not return; EndAndRestartHost starts the host
/// application; EndQuietly ends without it. A sign-out that cannot be recorded shows message 60501, a host application
/// that cannot be started 60260.
void FinishApplication(Application& application, ExitMode mode);

/// For as long as the object lives, the workstation neither goes to sleep nor is shut down without the operator being
/// told why not: a job is at work.
std::unique_ptr<host::BusyTime> KeepRunning(Application& application);

}  // namespace app
