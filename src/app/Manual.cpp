// The manual behind F1.
#include "app/Manual.h"

#include <string>

#include "app/Application.h"
#include "app/Log.h"

namespace app {

void ShowManual(Application& application) {
  const std::string manual = "QXBackupUtility.html";
  if (!application.host.shell.OpenDocument(manual)) {
    WriteLog(application, 1, LogLevel::Warning, "Manual not opened : " + manual);
  }
}

}  // namespace app
