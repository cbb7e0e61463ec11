// State of the controls, and who is told of its changes.
#include "forms/Controls.h"

#include <utility>

#include "forms/Form.h"

namespace forms {

Control::Control(Form& form, ControlKind kind, std::string name, base::MessageId captionId)
    : form_(form), kind_(kind), name_(std::move(name)), captionId_(captionId) {
  form_.Add(*this);
}

void Control::Changed(Aspect aspect) {
  form_.ControlChanged(*this, aspect);
}

void Control::SetCaption(const std::string& caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  Changed(Aspect::Caption);
}

void Control::SetEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  Changed(Aspect::Enabled);
}

void Control::SetVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  Changed(Aspect::Visible);
}

void Control::SetLook(const Appearance& appearance) {
  appearance_ = appearance;
  Changed(Aspect::Appearance);
}

void Control::SetFocus() {
  Changed(Aspect::Focus);
}

void CommandButton::Press(ShiftState shift) {
  if (Enabled() && Visible() && Clicked) Clicked(shift);
}

void ToggleControl::SetValue(bool value) {
  if (value_ == value) return;
  value_ = value;
  Changed(Aspect::Value);
  if (Clicked) Clicked();
}

void OptionButton::SetValue(bool value) {
  if (value && group_) {
    for (Control* control : GetForm().Controls()) {
      if (control == this || control->Kind() != ControlKind::OptionButton) continue;
      auto& other = static_cast<OptionButton&>(*control);
      if (other.group_ == group_) other.SetValue(false);
    }
  }
  ToggleControl::SetValue(value);
}

void TextBox::SetText(const std::string& text) {
  if (text_ == text) return;
  text_ = text;
  Changed(Aspect::Text);
  if (Edited) Edited();
}

void ListBox::SetItems(std::vector<std::string> items) {
  items_ = std::move(items);
  picked_ = 0;
  Changed(Aspect::Items);
  if (Picked) Picked();
}

void ListBox::Pick(std::size_t item) {
  if (item == picked_ || item >= items_.size()) return;
  picked_ = item;
  Changed(Aspect::Value);
  if (Picked) Picked();
}

void ComboBox::AddItem(const std::string& item) {
  items_.push_back(item);
  Changed(Aspect::Items);
}

void ComboBox::ClearItems() {
  items_.clear();
  Changed(Aspect::Items);
}

void ComboBox::SetText(const std::string& text) {
  if (text_ == text) return;
  text_ = text;
  Changed(Aspect::Text);
  if (Edited) Edited();
}

ProgressBar::ProgressBar(Form& form, std::string name, base::MessageId captionId)
    : Control(form, ControlKind::ProgressBar, std::move(name), captionId) {
  SetVisible(false);
}

void ProgressBar::SetValue(int value) {
  if (value_ == value) return;
  value_ = value;
  Changed(Aspect::Value);
}

void ProgressBar::SetFailed(bool failed) {
  if (failed_ == failed) return;
  failed_ = failed;
  Changed(Aspect::Value);
}

}  // namespace forms
