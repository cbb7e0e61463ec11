// The two dialogs that start-up shows, and what lives from sign-in to exit.
#pragma once

#include "app/StartUp.h"

namespace qx::access {

class Dialogs : public app::StartUpDialogs {
 public:
  void ShowSignIn(app::Application& application) override;

  /// The job definitions that are loaded meanwhile, and what was found of the media drives, live as long as the menu.
  void ShowMainMenu(app::Application& application) override;
};

}  // namespace qx::access
