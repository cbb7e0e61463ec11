// The manual behind F1.
#pragma once

namespace app {

class Application;

/// Opens the manual that stands beside the program. Where there is none, or nothing to open it
/// with, a Warning line in the operation log is all that happens.
void ShowManual(Application& application);

}  // namespace app
