// The two dialogs that start-up shows.
#include "access/Dialogs.h"

#include "access/frmMainMenu.h"
#include "access/frmUserAuthentication.h"
#include "restore/mdlBURestore.h"
#include "work/WorkFolder.h"

namespace qx::access {

void Dialogs::ShowSignIn(app::Application& application) {
  work::RemoveLeftWorkFolders(application.host.files, application.host.qx32, application.log);
  restore::TellInterruptedRestore(application);
  frmUserAuthentication(application).ShowModal();
}

void Dialogs::ShowMainMenu(app::Application& application) {
  jobs::JobDefinitions definitions;
  media::MediaDrives drives(application.host, application.paths, application.messages, application.failures);
  frmMainMenu(application, definitions, drives).ShowModal();
}

}  // namespace qx::access
