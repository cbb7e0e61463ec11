// The controls of a dialog: their state and their events, without a window.
//
// A control is a member of its form; its declaration there gives the name under which the form's template knows it and
// the number of its caption in the host's message catalogue. Every change of state is told to the form's view, where
// there is one, and every change that the operator makes in the window comes back through the same setters; the view
// drops the echo.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/Outcome.h"

namespace forms {

class Form;

enum class ControlKind { Label, Frame, CommandButton, CheckBox, OptionButton, TextBox, ComboBox, ListBox, ProgressBar };

/// What about a control or form has changed.
enum class Aspect { Caption, Text, Value, Items, Enabled, Visible, Appearance, Focus };

/// A colour as the host's registry holds it: 0x00BBGGRR.
using Colour = std::uint32_t;

/// Stands in the declaration of a label whose text is no caption: its form fills it with what it has found out.
inline constexpr base::MessageId kNoCaption = base::kNoMessage;

struct Appearance {
  std::string fontName;
  std::uint32_t fontSize = 0;  ///< points
  Colour background = 0;
  Colour foreground = 0;
};

/// State of the modifier keys when a button was pressed.
struct ShiftState {
  bool shift = false;
  bool control = false;
  bool alt = false;
  /// Shift alone: with Ctrl or Alt it counts as not held.
  bool IsShiftAlone() const { return shift && !control && !alt; }
};

class Control {
 public:
  Control(Form& form, ControlKind kind, std::string name, base::MessageId captionId = kNoCaption);
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const std::string& Name() const { return name_; }
  ControlKind Kind() const { return kind_; }
  /// Of the text that is to be set as the caption when the form is loaded.
  base::MessageId CaptionId() const { return captionId_; }

  const std::string& Caption() const { return caption_; }
  void SetCaption(const std::string& caption);
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  const Appearance& Look() const { return appearance_; }
  void SetLook(const Appearance& appearance);
  /// Asks the view to put the keyboard focus here; all text of a field is selected then, and typing replaces it.
  void SetFocus();

 protected:
  void Changed(Aspect aspect);
  Form& GetForm() const { return form_; }

 private:
  Form& form_;
  ControlKind kind_;
  std::string name_;
  base::MessageId captionId_;
  std::string caption_;
  bool enabled_ = true;
  bool visible_ = true;
  Appearance appearance_;
};

class Label : public Control {
 public:
  Label(Form& form, std::string name, base::MessageId captionId)
      : Control(form, ControlKind::Label, std::move(name), captionId) {}
};

class Frame : public Control {
 public:
  Frame(Form& form, std::string name, base::MessageId captionId)
      : Control(form, ControlKind::Frame, std::move(name), captionId) {}
};

class CommandButton : public Control {
 public:
  CommandButton(Form& form, std::string name, base::MessageId captionId)
      : Control(form, ControlKind::CommandButton, std::move(name), captionId) {}

  /// Raised by mouse and keyboard alike, with the modifier keys held at that moment.
  std::function<void(ShiftState)> Clicked;

  /// A press by the operator; nothing happens while the button is disabled or hidden.
  void Press(ShiftState shift = {});
};

/// A control with an on/off value: check boxes and option buttons.
class ToggleControl : public Control {
 public:
  using Control::Control;

  bool Value() const { return value_; }
  /// Raises `Clicked` when the value changes, from the window and from code alike.
  virtual void SetValue(bool value);

  std::function<void()> Clicked;

 private:
  bool value_ = false;
};

class CheckBox : public ToggleControl {
 public:
  CheckBox(Form& form, std::string name, base::MessageId captionId)
      : ToggleControl(form, ControlKind::CheckBox, std::move(name), captionId) {}
};

class OptionButton : public ToggleControl {
 public:
  /// With `group`: of the option buttons of one group, setting one clears the others. Without,
  /// the form sees to that.
  OptionButton(Form& form, std::string name, base::MessageId captionId, const Frame* group = nullptr)
      : ToggleControl(form, ControlKind::OptionButton, std::move(name), captionId), group_(group) {}

  /// The others of the group are clear before this one's `Clicked`, if it is raised, runs.
  void SetValue(bool value) override;

 private:
  const Frame* group_;
};

class TextBox : public Control {
 public:
  TextBox(Form& form, std::string name) : Control(form, ControlKind::TextBox, std::move(name)) {}

  const std::string& Text() const { return text_; }
  /// Raises `Edited` when the text differs. Lines of a box of several end in CR LF.
  void SetText(const std::string& text);

  std::function<void()> Edited;
  /// Whether a typed character may enter; every character may while this is empty.
  /// Pasted text is not asked for.
  std::function<bool(char32_t)> AcceptsKey;

 private:
  std::string text_;
};

/// Entries of which one is picked.
class ListBox : public Control {
 public:
  ListBox(Form& form, std::string name) : Control(form, ControlKind::ListBox, std::move(name)) {}

  const std::vector<std::string>& Items() const { return items_; }
  /// Replaces all entries. The first one is picked, if there is any; raises `Picked`.
  void SetItems(std::vector<std::string> items);

  /// Counts from 0; as many as there are entries where none is picked.
  std::size_t PickedItem() const { return picked_; }
  /// Raises `Picked` when the entry is another one.
  void Pick(std::size_t item);

  std::function<void()> Picked;

 private:
  std::vector<std::string> items_;
  std::size_t picked_ = 0;
};

class ComboBox : public Control {
 public:
  ComboBox(Form& form, std::string name) : Control(form, ControlKind::ComboBox, std::move(name)) {}

  const std::vector<std::string>& Items() const { return items_; }
  void AddItem(const std::string& item);
  void ClearItems();

  const std::string& Text() const { return text_; }
  /// Raises `Edited` when the text differs, typed and picked alike.
  void SetText(const std::string& text);

  std::function<void()> Edited;

 private:
  std::vector<std::string> items_;
  std::string text_;
};

/// How far something is. Hidden from the beginning: most of the time there is nothing to show. Its caption is no text
/// on the screen, but the name that a screen reader says with the value.
class ProgressBar : public Control {
 public:
  static constexpr int kEnd = 1000;

  ProgressBar(Form& form, std::string name, base::MessageId captionId);

  /// From 0 to kEnd.
  int Value() const { return value_; }
  void SetValue(int value);
  /// Whether it ended there because something went wrong.
  bool HasFailed() const { return failed_; }
  void SetFailed(bool failed);

 private:
  int value_ = 0;
  bool failed_ = false;
};

}  // namespace forms
