// The two dialogs that start-up shows, and what lives from sign-in to exit.
#include "access/Dialogs.h"

#include "access/frmMainMenu.h"
#include "access/frmUserAuthentication.h"
#include "backup/JobDefinitions.h"
#include "maintenance/Collectors.h"

namespace operator_access {

void Dialogs::ShowSignIn(app::Application& application) {
  frmUserAuthentication(application).ShowModal();
}

void Dialogs::ShowMainMenu(app::Application& application) {
  backup::JobDefinitions definitions;
  maintenance::Collectors collectors(application, definitions);
  frmMainMenu({application, definitions, collectors}).ShowModal();
}

}  // namespace operator_access
