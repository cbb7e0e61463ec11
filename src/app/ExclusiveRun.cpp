// The refusal to run beside a second instance or a sibling tool.
#include <string_view>

#include "app/Application.h"
#include "app/StartUp.h"

namespace app {
namespace {

struct SiblingTool {
  const char* executable;
  std::int32_t messageId;
};

constexpr std::int32_t kSecondInstance = 60316;
constexpr SiblingTool kSiblingTools[] = {
    {"QXUserUtility.exe", 60314},
    {"QXServiceUtility.exe", 60315},
    {"ScheduledBackupTool.exe", 61603},
};

// Versions of a tool that differ behind these characters must keep each other out too. The
// tools' names are ASCII, so bytes are characters wherever a comparison can succeed.
std::string_view SignificantPart(std::string_view executable) {
  return executable.substr(0, 15);
}

}  // namespace

std::int32_t CheckExclusiveRun(Application& application) {
  if (application.host.processes.HasPreviousInstance()) return kSecondInstance;
  for (const SiblingTool& tool : kSiblingTools) {
    if (IsProcessRunning(application, tool.executable)) return tool.messageId;
  }
  return 0;
}

bool IsProcessRunning(Application& application, const std::string& name) {
  for (const std::string& running : application.host.processes.RunningExecutables()) {
    application.host.messageLoop.Yield();
    if (SignificantPart(running) == SignificantPart(name)) return true;
  }
  return false;
}

}  // namespace app
