#include "fakes/ScriptedOperator.h"

#include <gtest/gtest.h>

#include <exception>

namespace fakes {
namespace {

void CheckUsable(const forms::Control& control) {
  if (control.Enabled() && control.Visible()) return;
  ADD_FAILURE() << "a person cannot use " << control.Name() << ": it is disabled or hidden";
  throw ScriptFailed(control.Name());
}

}  // namespace

void Press(forms::CommandButton& button, forms::ShiftState shift) {
  CheckUsable(button);
  button.Press(shift);
}

void Tick(forms::ToggleControl& control, bool value) {
  CheckUsable(control);
  control.SetValue(value);
}

void Type(forms::TextBox& box, const std::string& text) {
  CheckUsable(box);
  std::string typed = text;
  std::erase_if(typed, [&](char c) { return box.AcceptsKey && !box.AcceptsKey(static_cast<unsigned char>(c)); });
  box.SetText(typed);
}

void Choose(forms::ComboBox& box, const std::string& text) {
  CheckUsable(box);
  box.SetText(text);
}

ScriptedOperator::~ScriptedOperator() {
  if (failed_) return;
  for (const Step& step : steps_) ADD_FAILURE() << "expected, but never came: " << step.what;
}

// While the program is being unwound already, a second exception would end the test run.
void ScriptedOperator::Fail(const std::string& what) {
  if (!failed_) ADD_FAILURE() << what;
  failed_ = true;
  if (std::uncaught_exceptions() == 0) throw ScriptFailed(what);
}

ScriptedOperator::Step ScriptedOperator::Take(const std::string& what, const std::string& detail) {
  const std::string expected = steps_.empty() ? "nothing more" : steps_.front().what;
  if (expected != what) {
    Fail("there came " + what + detail + ", expected was " + expected);
    return {what};
  }
  Step step = std::move(steps_.front());
  steps_.pop_front();
  return step;
}

void ScriptedOperator::CountHabit(const std::string& what) {
  if (++habitual_ > limit) Fail("no end of dialogs: " + what);
}

void ScriptedOperator::AtForm(forms::Form& form) {
  if (!form.Enabled()) Fail("form " + form.Name() + " waits for input but is disabled");
  const std::string what = NameOf(typeid(form));
  if (steps_.empty() && habits_.contains(what)) {
    CountHabit(what);
    return habits_[what](&form);
  }
  const Step step = Take(what);
  if (step.work) step.work(&form);
}

host::Answer ScriptedOperator::AtMessage(const ShownMessage& message) {
  messages_.push_back(message);
  const std::string what = NameOf(message.id);
  if (steps_.empty() && messageHabit) {
    CountHabit(what);
    return messageHabit(message.id);
  }
  const Step step = Take(what, " '" + message.text3 + "'");
  if (step.work) step.work(nullptr);
  return step.answer;
}

void ScriptedOperator::AtPlainMessage(const std::string& text) {
  ++plainMessages_;
  if (!steps_.empty() || !messageHabit) Take("plain message: " + text);
}

void BarWatch::ControlChanged(forms::Control& control, forms::Aspect aspect) {
  if (control.Kind() != forms::ControlKind::ProgressBar || !control.Visible()) return;
  const auto& bar = static_cast<const forms::ProgressBar&>(control);
  if (aspect == forms::Aspect::Visible) values.clear(), failed = false;
  const int last = values.empty() ? 0 : values.back();
  EXPECT_GE(bar.Value(), last) << "it goes back";
  EXPECT_TRUE(!failed || bar.Value() == last) << "it goes on after a failure";
  if (values.empty() || bar.Value() != last) values.push_back(bar.Value());
  failed = bar.HasFailed();
}

void ScriptedToolkit::CreateView(forms::Form& form) {
  constexpr int kWidth = 6000;  // twips
  constexpr int kHeight = 4000;
  windows_.insert(form.Name());
  form.SetView(&bars[form.Name()]);
  form.TakeSize(kWidth, kHeight);
}

void ScriptedToolkit::RunModal(forms::Form& form) {
  while (form.IsOpen()) person_.AtForm(form);
}

void ScriptedToolkit::DestroyView(forms::Form& form) {
  form.SetView(nullptr);
  EXPECT_EQ(windows_.erase(form.Name()), 1u) << "no window of " << form.Name() << " to destroy";
}

void ScriptedToolkit::ShowPlainMessage(const std::string& text, const std::string& title) {
  EXPECT_EQ(title, "QXBackupUtility");
  person_.AtPlainMessage(text);
}

}  // namespace fakes
