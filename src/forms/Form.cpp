// The life of a form.
#include "forms/Form.h"

namespace forms {

// A derived form is gone by now, so OnUnload cannot run; the window still must go.
Form::~Form() {
  if (loaded_) toolkit_.DestroyView(*this);
}

void Form::SetTitle(const std::string& title) {
  title_ = title;
  Changed(Aspect::Caption);
}

void Form::SetLook(const Appearance& appearance) {
  appearance_ = appearance;
  Changed(Aspect::Appearance);
}

void Form::SetEnabled(bool enabled) {
  enabled_ = enabled;
  Changed(Aspect::Enabled);
}

void Form::MoveTo(int left, int top) {
  TakePlace(left, top);
  if (view_) view_->FormMoved();
}

void Form::TakeSize(int width, int height) {
  width_ = width;
  height_ = height;
}

void Form::TakePlace(int left, int top) {
  left_ = left;
  top_ = top;
}

void Form::Load() {
  if (loaded_) return;
  loaded_ = true;
  toolkit_.CreateView(*this);
  OnLoad();
}

void Form::ShowModal() {
  Load();
  if (!loaded_) return;  // loading has found that there is nothing to show
  open_ = true;
  toolkit_.RunModal(*this);
  if (open_) Close();
  if (closing_) Unload();
}

void Form::Close() {
  closing_ = true;
  if (!open_) return Unload();
  open_ = false;
}

void Form::Hide() {
  open_ = false;
}

void Form::Unload() {
  if (!loaded_) return;
  OnUnload();
  toolkit_.DestroyView(*this);
  loaded_ = false;
  closing_ = false;
}

void Form::RequestHelp() {
  if (toolkit_.HelpRequested) toolkit_.HelpRequested();
}

void Form::ControlChanged(Control& control, Aspect aspect) {
  if (view_) view_->ControlChanged(control, aspect);
}

void Form::Changed(Aspect aspect) {
  if (view_) view_->FormChanged(aspect);
}

}  // namespace forms
