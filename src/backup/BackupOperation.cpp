// The ordinary backup, as the selection dialog sees it.
#include "backup/BackupOperation.h"

#include "app/TextFormat.h"
#include "backup/mdlBUBackup.h"
#include "media/Proposal.h"

namespace backup {

std::string BackupOperation::ProposeFolder() {
  const std::string drive = media::ProposeMediaDrive(application_);
  return drive + app::FormatLongStamp(application_.host.clock.Now()) + "\\";
}

app::ResultCode BackupOperation::Run() {
  application_.toolkit.SetPointer(forms::Pointer::Hourglass);
  const app::ResultCode result = RunBackupDriver(job_, choice_);
  application_.state.BackupDone = result == app::kDone;
  return result;
}

}  // namespace backup
