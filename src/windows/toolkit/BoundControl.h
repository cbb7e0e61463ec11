// One member of a form and the window that shows it: state in both directions.
#pragma once

#include "forms/Form.h"
#include "windows/adapters/Win32.h"
#include "windows/toolkit/Drawing.h"

namespace windows {

struct BoundControl {
  forms::Control* control = nullptr;
  HWND window = nullptr;
};

/// Whether it is a field, with colours of its own and without a caption.
bool IsInput(forms::ControlKind kind);

/// Gives the member what its template says and its form does not: caption, font, colours,
/// and being disabled or hidden.
void TakeFromTemplate(const BoundControl& bound);

/// Shows one aspect of the member in its window.
void WriteAspect(const BoundControl& bound, forms::Aspect aspect, GdiCache& gdi);

/// Shows all of the member's state.
void WriteAll(const BoundControl& bound, GdiCache& gdi);

/// Takes the text of a text box or combo box into its member; other kinds have none.
void ReadText(const BoundControl& bound);

/// Takes the picked entry of a list or combo box; the window of the latter shows it only after this event.
void ReadPick(const BoundControl& bound);

/// Font and colours of a window that nobody has configured yet.
forms::Appearance TemplateLook(HWND window, bool isInput);

}  // namespace windows
