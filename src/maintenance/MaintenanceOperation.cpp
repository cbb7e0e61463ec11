// The maintenance log backup, as the selection dialog sees it.
#include "maintenance/MaintenanceOperation.h"

#include "app/Messages.h"
#include "backup/mdlBUBackup.h"
#include "maintenance/StudyList.h"
#include "media/Proposal.h"

namespace maintenance {

std::string MaintenanceOperation::ProposeFolder() {
  return media::ProposeDesktop(application_);
}

app::ResultCode MaintenanceOperation::Run() {
  application_.toolkit.SetPointer(forms::Pointer::Hourglass);
  if (ExportStudyList(application_) != app::kDone) return app::kFailed;
  const app::ResultCode result = Write();
  if (result == app::kStopped) return backup::ReportStopped(application_, messages_);
  if (result == app::kDone) app::ShowMessage(application_, messages_.finished);
  return result;
}

// The list of studies belongs to the bundle, but a set is made of archives and their descriptor alone.
// Floppies hold nothing but their piece of the set: there the list stays on the desktop.
app::ResultCode MaintenanceOperation::Write() {
  const app::ResultCode written = backup::WriteBackupSet(application_, messages_);
  if (written != app::kDone || backup::GoesToFloppies(application_)) return written;
  return CopyStudyListToDestination(application_);
}

}  // namespace maintenance
