// The single way out of the program.
#pragma once

#include "app/Application.h"

namespace app {

/// Every way out passes here. Halt ends the process and does not return; EndAndRestartHost starts the host
/// application; EndQuietly ends without it. A sign-out that cannot be recorded shows message 60501, a host application
/// that cannot be started 60260.
void FinishApplication(Application& application, ExitMode mode);

}  // namespace app
