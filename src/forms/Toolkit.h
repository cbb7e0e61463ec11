// What a form asks of the toolkit that shows it, and of its own window.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "forms/Controls.h"

namespace forms {

class Form;

/// The window of one form. Gets every change of the form and its controls.
class View {
 public:
  virtual ~View() = default;
  virtual void FormChanged(Aspect aspect) = 0;
  virtual void FormMoved() = 0;
  virtual void ControlChanged(Control& control, Aspect aspect) = 0;
};

enum class Pointer { Default, Hourglass };

class Toolkit {
 public:
  virtual ~Toolkit() = default;

  /// Makes the form's window, hidden, from the template of the form's name, sets the
  /// form's view, and fills the form's size and the states that the template gives.
  virtual void CreateView(Form& form) = 0;
  /// Shows the form in front of the form that is open now and serves events until
  /// the form is no longer open, then hides it.
  virtual void RunModal(Form& form) = 0;
  /// Removes the form's window and its view.
  virtual void DestroyView(Form& form) = 0;

  /// Size of the screen in twips.
  virtual int ScreenWidth() = 0;
  virtual int ScreenHeight() = 0;

  /// The font by which dialogs made from now on are laid out: they grow and shrink with it.
  /// `points` is the largest size that a control of theirs will get.
  virtual void SetFont(const std::string& name, std::uint32_t points) = 0;

  virtual void SetPointer(Pointer pointer) = 0;

  /// A plain message box with an OK button: for the one failure that comes before
  /// the message catalogue and its dialog can be reached.
  virtual void ShowPlainMessage(const std::string& text, const std::string& title) = 0;

  /// The operator asks for help, in whatever dialog and control; without a receiver nothing happens.
  std::function<void()> HelpRequested;
};

}  // namespace forms
