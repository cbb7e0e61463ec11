// Captions of the dialogs, all from the message catalogue.
#pragma once

#include <cstdint>

#include "forms/Form.h"

namespace app {

class Application;

/// The dialogs whose captions one shared table knows. The restore dialog has number 4 and
/// is not among them: it sets its own.
enum class DialogNumber : std::int16_t {
  UserAuthentication = 1,
  MainMenu = 2,
  Backup = 3,
  Maintenance = 5,
  SelectFolder = 6
};

/// Sets the form's title and the captions of its controls, in the table's order.
/// A number outside the table changes nothing.
void SetDialogCaptions(Application& application, DialogNumber dialog, forms::Form& form);

}  // namespace app
