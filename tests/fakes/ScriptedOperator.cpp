#include "fakes/ScriptedOperator.h"

#include <gtest/gtest.h>

#include <algorithm>
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
  std::string typed;
  for (char c : text)
    if (!box.AcceptsKey || box.AcceptsKey(static_cast<unsigned char>(c))) typed.push_back(c);
  box.SetText(typed);
}

void Choose(forms::ComboBox& box, const std::string& text) {
  CheckUsable(box);
  box.SetText(text);
}

ScriptedOperator::~ScriptedOperator() {
  if (failed_) return;
  for (const Step& step : steps_) ADD_FAILURE() << "expected, but never came: " << Describe(step);
}

ScriptedOperator& ScriptedOperator::ExpectMessage(std::int32_t id, std::int32_t answer, std::function<void()> before) {
  steps_.push_back({Kind::Message, {}, id, answer, {}, std::move(before)});
  return *this;
}

ScriptedOperator& ScriptedOperator::ExpectPlainMessage(const std::string& text) {
  steps_.push_back({Kind::PlainMessage, text, 0, 0, {}, {}});
  return *this;
}

ScriptedOperator& ScriptedOperator::ExpectBrowse(const std::string& folder) {
  steps_.push_back({Kind::Browse, folder, 0, 0, {}, {}});
  return *this;
}

ScriptedOperator& ScriptedOperator::ExpectFormat(std::int32_t result) {
  steps_.push_back({Kind::Format, {}, 0, result, {}, {}});
  return *this;
}

bool ScriptedOperator::WasShown(std::int32_t id) const {
  return std::any_of(messages_.begin(), messages_.end(), [&](const ShownMessage& message) { return message.id == id; });
}

std::string ScriptedOperator::Describe(const Step& step) {
  switch (step.kind) {
    case Kind::Form:
      return "form " + step.text;
    case Kind::Message:
      return "message " + std::to_string(step.id);
    case Kind::PlainMessage:
      return "plain message: " + step.text;
    case Kind::Browse:
      return "the folder browser";
    default:
      return "the format dialog";
  }
}

// While the program is being unwound already, a second exception would end the test run.
void ScriptedOperator::Fail(const std::string& what) {
  if (!failed_) ADD_FAILURE() << what;
  failed_ = true;
  if (std::uncaught_exceptions() == 0) throw ScriptFailed(what);
}

ScriptedOperator::Step ScriptedOperator::Take(Kind kind, const std::string& what) {
  if (steps_.empty() || steps_.front().kind != kind) {
    Fail("there came " + what + ", expected was " + (steps_.empty() ? "nothing more" : Describe(steps_.front())));
    return {kind, {}, 0, 0, {}, {}};
  }
  Step step = std::move(steps_.front());
  steps_.pop_front();
  return step;
}

void ScriptedOperator::UseHabit(forms::Form& form) {
  if (++habitual_ > limit) Fail("no end of dialogs: " + form.Name());
  for (const FormStep& habit : habits_)
    if (habit(form)) return;
  Fail("no habit for form " + form.Name());
}

void ScriptedOperator::AtForm(forms::Form& form) {
  if (!form.Enabled()) Fail("form " + form.Name() + " waits for input but is disabled");
  if (steps_.empty() && !habits_.empty()) return UseHabit(form);
  const Step step = Take(Kind::Form, "form " + form.Name());
  if (step.onForm && !step.onForm(form)) Fail("there came form " + form.Name() + ", expected was " + Describe(step));
}

std::int32_t ScriptedOperator::AtMessage(const ShownMessage& message) {
  messages_.push_back(message);
  if (steps_.empty() && messageHabit) {
    if (++habitual_ > limit) Fail("no end of messages: " + std::to_string(message.id));
    return messageHabit(message.id);
  }
  const std::string what = "message " + std::to_string(message.id) + " '" + message.text3 + "'";
  const Step step = Take(Kind::Message, what);
  if (step.id != message.id) Fail("there came " + what + ", expected was " + Describe(step));
  if (step.before) step.before();
  return step.answer;
}

void ScriptedOperator::AtPlainMessage(const std::string& text) {
  ++plainMessages_;
  if (steps_.empty() && messageHabit) return;
  const Step step = Take(Kind::PlainMessage, "plain message: " + text);
  if (step.text != text) Fail("there came plain message: " + text + ", expected was " + Describe(step));
}

std::string ScriptedOperator::AtBrowse() {
  return Take(Kind::Browse, "the folder browser").text;
}

std::int32_t ScriptedOperator::AtFormat() {
  if (steps_.empty() && messageHabit) return 0;
  return Take(Kind::Format, "the format dialog").answer;
}

void ScriptedToolkit::CreateView(forms::Form& form) {
  windows.push_back(form.Name());
  form.TakeSize(kFormWidth, kFormHeight);
}

void ScriptedToolkit::RunModal(forms::Form& form) {
  while (form.IsOpen()) person_.AtForm(form);
}

void ScriptedToolkit::DestroyView(forms::Form& form) {
  const auto window = std::find(windows.rbegin(), windows.rend(), form.Name());
  if (window == windows.rend())
    ADD_FAILURE() << "no window of " << form.Name() << " to destroy";
  else
    windows.erase(std::next(window).base());
}

void ScriptedToolkit::ShowPlainMessage(const std::string& text, const std::string& title) {
  EXPECT_EQ(title, "QXBackupUtility");
  person_.AtPlainMessage(text);
}

}  // namespace fakes
