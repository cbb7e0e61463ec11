// Restoring, as the selection dialog serves it.
#include "restore/RestoreOperation.h"

#include "media/DriveStatus.h"
#include "media/Proposal.h"
#include "restore/frmRestore.h"

namespace restore {

std::string RestoreOperation::ProposeFolder() {
  return media::ProposeMediaDrive(application_);
}

app::ResultCode RestoreOperation::Run() {
  application_.state.RestoreDone = false;
  if (media::CheckSourceDrive(application_) != app::kDone) return app::kStopped;
  frmRestore dialog(application_, definitions_);
  dialog.Load();
  if (dialog.LoadResult() == 1) {
    dialog.ShowModal();
  } else {
    dialog.Unload();
  }
  return application_.state.RestoreDone ? app::kDone : app::kStopped;
}

}  // namespace restore
