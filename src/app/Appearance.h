// How every dialog comes to look: its place, its captions, the font and the colours.
#pragma once

#include <cstdint>
#include <string>

#include "app/Messages.h"
#include "forms/Form.h"
#include "host/Libraries.h"

namespace app {

class Application;

/// Values of the host's registry that start-up reads. Those that nothing applies are
/// required all the same: a host without them does not start this program.
struct AppearanceSettings {
  std::string ApplicationName;  ///< file name of the host application, always with ".exe"
  std::string Application;
  std::string PathAppl;
  std::string Font;
  std::uint32_t FontSizeSS = 0;  ///< forms, labels, frames, option buttons, check boxes, buttons
  std::uint32_t FontSizeS = 0;   ///< text boxes
  std::uint32_t FontSizeM = 0;
  std::uint32_t FontSizeL = 0;
  std::uint32_t FontSizeLL = 0;
  forms::Colour ColorBack = 0;  ///< forms and every control but buttons and text boxes
  forms::Colour ColorBtn = 0;
  forms::Colour ColorStr = 0;   ///< all foregrounds
  forms::Colour ColorCtrl = 0;  ///< text box background
  forms::Colour ColorText = 0;
  forms::Colour ColorCtrlR = 0;
  forms::Colour ColorTextR = 0;
};

/// Reads every value in a fixed order; the first that cannot be read ends the reading. Dialogs are laid out by the font
/// from then on.
base::Outcome ReadAppearanceSettings(host::QX32& registry, forms::Toolkit& toolkit, AppearanceSettings& settings);

/// Sets the form's title and the captions of its controls to the catalogue's texts behind the numbers that their
/// declarations give.
void SetDialogCaptions(Messages& messages, forms::Form& form);

/// Gives the form and each of its controls the configured font and colours. A label
/// whose name begins with "lblError" keeps the foreground of its template.
void ApplyControlAppearance(const AppearanceSettings& settings, forms::Form& form);

/// Moves the form to the place saved under its name without "frm"; centres it, and saves that,
/// when there is none or when the form would be wholly off the screen.
void RestoreDialogPosition(host::QX32& registry, forms::Toolkit& toolkit, forms::Form& form);

/// Saves the form's place. Write failures are ignored.
void SaveDialogPosition(host::QX32& registry, const forms::Form& form);

/// The three steps of a dialog that is loaded, in their order: place, captions, looks.
void PrepareDialog(Application& application, forms::Form& form);

}  // namespace app
