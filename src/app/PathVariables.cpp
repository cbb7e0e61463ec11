// "%name%" at the head of a job item.
#include "app/PathVariables.h"

#include "app/External.h"
#include "app/Messages.h"

namespace app {

ResultCode ExpandPathVariable(Application& application, std::string& item, std::string* variable) {
  const std::size_t first = item.find('%');
  if (first == std::string::npos) return kDone;
  const std::size_t last = item.rfind('%');
  // A single "%" names nothing, and the path table knows no such name.
  const std::string name = last > first ? item.substr(first + 1, last - first - 1) : std::string();
  if (variable) *variable = name;
  std::string value;
  if (GetPathEntry(application, name, value) != kDone) {
    ShowMessage(application, kPathEntryUnreadable);
    return kFailed;
  }
  item = value + item.substr(last + 1);
  return kDone;
}

}  // namespace app
