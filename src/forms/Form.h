// A modal dialog without a window: its controls, its life and its place.
//
// Life: created, loaded (the window exists, hidden, and OnLoad has run), shown
// modally, closed or hidden by a handler, unloaded (OnUnload has run and the
// window is gone). ShowModal loads a form that is not loaded yet, and unloads
// one that was closed; a form that was only hidden stays loaded, so that its
// owner can read it and then unload it.
#pragma once

#include <string>
#include <vector>

#include "forms/Controls.h"
#include "forms/Toolkit.h"

namespace forms {

class Form {
 public:
  Form(Toolkit& toolkit, std::string name, base::MessageId titleId)
      : toolkit_(toolkit), name_(std::move(name)), titleId_(titleId) {}
  virtual ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  /// The name of the form's template, such as "frmBackup".
  const std::string& Name() const { return name_; }
  /// In the order in which the form declares them.
  const std::vector<Control*>& Controls() const { return controls_; }

  /// Of the title's text in the host's message catalogue.
  base::MessageId TitleId() const { return titleId_; }
  const std::string& Title() const { return title_; }
  void SetTitle(const std::string& title);
  const Appearance& Look() const { return appearance_; }
  void SetLook(const Appearance& appearance);
  /// A disabled form takes no input at all.
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);

  /// Place and size in twips (1/1440 inch). The view fills the size from the
  /// template when the form is loaded, and follows the operator's moves.
  int Left() const { return left_; }
  int Top() const { return top_; }
  int Width() const { return width_; }
  int Height() const { return height_; }
  void MoveTo(int left, int top);
  void TakeSize(int width, int height);
  void TakePlace(int left, int top);  ///< from the view: no notice goes back

  void Load();
  void ShowModal();
  /// Ends the modal loop; the form unloads as ShowModal returns. On a form that is
  /// loaded but not shown, unloads it at once.
  void Close();
  /// Ends the modal loop but keeps the form loaded.
  void Hide();
  void Unload();
  bool IsLoaded() const { return loaded_; }
  /// Whether the modal loop is to go on.
  bool IsOpen() const { return open_; }

  /// The buttons behind Enter and behind Esc and the window's close box.
  CommandButton* DefaultButton() const { return default_; }
  CommandButton* CancelButton() const { return cancel_; }

  /// Whether keys but those for leaving and looking around count only after a moment of rest.
  bool IsCautious() const { return cautious_; }

  /// The operator presses F1.
  void RequestHelp();

  /// A device came or went; `deviceType` is 2 for a volume.
  virtual void OnDeviceChanged(int deviceType) { static_cast<void>(deviceType); }

  void SetView(View* view) { view_ = view; }
  void Add(Control& control) { controls_.push_back(&control); }
  void ControlChanged(Control& control, Aspect aspect);

 protected:
  virtual void OnLoad() {}
  virtual void OnUnload() {}
  void SetDefaultButton(CommandButton& button) { default_ = &button; }
  void SetCancelButton(CommandButton& button) { cancel_ = &button; }
  /// The form can start what nobody can take back: see KeyGuard.
  void SetCautious() { cautious_ = true; }
  Toolkit& GetToolkit() const { return toolkit_; }

 private:
  void Changed(Aspect aspect);

  Toolkit& toolkit_;
  std::string name_;
  base::MessageId titleId_;
  std::string title_;
  Appearance appearance_;
  std::vector<Control*> controls_;
  CommandButton* default_ = nullptr;
  CommandButton* cancel_ = nullptr;
  View* view_ = nullptr;
  int left_ = 0;
  int top_ = 0;
  int width_ = 0;
  int height_ = 0;
  bool cautious_ = false;
  bool enabled_ = true;
  bool loaded_ = false;
  bool open_ = false;
  bool closing_ = false;
};

}  // namespace forms
