// What the two operations that write a set have in common towards the selection dialog.
#include "backup/WritingOperation.h"

#include "app/Messages.h"
#include "backup/StagingFolder.h"

namespace backup {
namespace {

constexpr std::int32_t kStagingNotRemoved = 60361;

}  // namespace

void WritingOperation::Unloaded() {
  if (RemoveStagingFolder(application_) != app::kDone) app::ShowMessage(application_, kStagingNotRemoved);
}

}  // namespace backup
