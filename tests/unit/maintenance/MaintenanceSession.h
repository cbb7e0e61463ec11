// A session that makes maintenance log backups.
#pragma once

#include <string>
#include <vector>

#include "maintenance/frmMaintenance.h"
#include "unit/flows/Session.h"

using maintenance::frmMaintenance;

inline constexpr const char* kDesktop = "C:\\Users\\Operator\\Desktop\\";

struct MaintenanceSession : flows::Session {
  /// The demo workstation with two images, of which one belongs to a patient on the host's list.
  MaintenanceSession() {
    disk.Write("C:\\Tarsus\\Image\\image.ddo", "an image");
    disk.Write("C:\\Tarsus\\Image\\deleted.dat", "of a listed patient");
  }

  void OpenMaintenance() {
    person.Expect<flows::frmMainMenu>([](flows::frmMainMenu& form) { fakes::Press(form.cmdMenu[2]); });
  }
  void CancelMaintenance() {
    person.Expect<frmMaintenance>([](frmMaintenance& form) { fakes::Press(form.cmdCancel); });
  }
  /// Signs in and starts; without protection when it is said to be confirmed.
  void BeginMaintenance(bool unprotected = false) {
    SignIn(fakes::kServiceUser);
    OpenMaintenance();
    person.Expect<frmMaintenance>([=](frmMaintenance& form) {
      if (unprotected) fakes::Tick(form.Option2);
      fakes::Press(form.cmdStart);
    });
    if (unprotected) person.ExpectMessage(64530, app::kConsented);
  }
};
