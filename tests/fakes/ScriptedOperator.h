// The scripted operator: what the person at the workstation does, in order.
//
// A script lists the dialogs and messages that a run must bring, each with the
// person's answer. Anything else, and anything that is left over at the end,
// fails the test. A form's step runs when the form opens; while the form stays
// open, the next step must be for the same form, unless a dialog or message
// that the step itself opened comes in between.
#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "forms/Form.h"
#include "forms/Toolkit.h"
#include "host/Components.h"
#include "host/Desktop.h"

namespace fakes {

/// Unwinds the program after the script has been departed from; the test has failed already.
class ScriptFailed : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The person's hands. Each checks that the control can be used, as a person could tell.
void Press(forms::CommandButton& button, forms::ShiftState shift = {});
void Tick(forms::ToggleControl& control, bool value = true);
/// Replaces the text; characters that the box does not accept are lost.
void Type(forms::TextBox& box, const std::string& text);
/// Picks an entry, or types it where the list lacks it.
void Choose(forms::ComboBox& box, const std::string& text);

/// The number of a message, in digits.
inline std::string NumberOf(base::MessageId id) {
  return std::to_string(static_cast<std::int32_t>(id));
}

/// A message that was shown.
struct ShownMessage {
  base::MessageId id;
  std::string text1;
  std::string text2;
  std::string text3;
};

class ScriptedOperator {
 public:
  ScriptedOperator() = default;
  /// Fails the test when expectations are left, unless it has failed already.
  ~ScriptedOperator();
  ScriptedOperator(const ScriptedOperator&) = delete;
  ScriptedOperator& operator=(const ScriptedOperator&) = delete;

  /// Form `F` opens, or is still open, and the person does `step`.
  template <class F>
  ScriptedOperator& Expect(std::function<void(F&)> step) {
    return Add({NameOf(typeid(F)), OnForm<F>(std::move(step))});
  }
  /// Message `id` appears; the person does `before`, such as changing the disk, and gives the answer, if it is asked.
  ScriptedOperator& ExpectMessage(base::MessageId id, host::Answer answer = host::Answer::NotShown,
                                  std::function<void()> before = {}) {
    return Add({NameOf(id), [=](forms::Form*) { before ? before() : void(); }, answer});
  }
  ScriptedOperator& ExpectMessage(base::MessageId id, std::function<void()> before) {
    return ExpectMessage(id, host::Answer::NotShown, std::move(before));
  }
  /// The plain message box of start-up appears with this text.
  ScriptedOperator& ExpectPlainMessage(const std::string& text) { return Add({"plain message: " + text}); }
  /// The folder browser opens and yields `folder`, empty for a cancel.
  ScriptedOperator& ExpectBrowse(const std::string& folder) { return Add({kBrowser, {}, {}, {}, folder}); }
  /// The format dialog opens and ends so.
  ScriptedOperator& ExpectFormat(host::FormatAnswer result) { return Add({kFormatDialog, {}, {}, result}); }

  /// For runs whose course is not known beforehand: what the person does at a form, or
  /// answers to a message, when no step is left in the script. More than `limit` such steps
  /// fail the test. With a habit for messages, disks are formatted as the program proposes.
  template <class F>
  void Habit(std::function<void(F&)> step) {
    habits_[NameOf(typeid(F))] = OnForm<F>(std::move(step));
  }
  std::function<host::Answer(base::MessageId id)> messageHabit;
  int limit = 1000;

  /// Everything that was shown, in order.
  const std::vector<ShownMessage>& Messages() const { return messages_; }
  bool WasShown(base::MessageId id) const {
    return std::ranges::find(messages_, id, &ShownMessage::id) != messages_.end();
  }
  /// How many plain message boxes were shown.
  int PlainMessages() const { return plainMessages_; }

  /// Whether the script was departed from; the test has failed then.
  bool HasFailed() const { return failed_; }

  /// Called by the toolkit, the message dialog and the shell.
  void AtForm(forms::Form& form);
  host::Answer AtMessage(const ShownMessage& message);
  void AtPlainMessage(const std::string& text);
  std::string AtBrowse() { return Take(kBrowser).folder; }
  host::FormatAnswer AtFormat() {
    return steps_.empty() && messageHabit ? host::FormatAnswer::Done : Take(kFormatDialog).format;
  }

 private:
  using Work = std::function<void(forms::Form*)>;
  struct Step {
    std::string what;  ///< has to come
    Work work = {};
    host::Answer answer = host::Answer::NotShown;
    host::FormatAnswer format = host::FormatAnswer::Done;
    std::string folder = {};
  };
  static constexpr const char* kBrowser = "the folder browser";
  static constexpr const char* kFormatDialog = "the format dialog";

  static std::string NameOf(const std::type_info& form) { return std::string("form ") + form.name(); }
  static std::string NameOf(base::MessageId message) { return "message " + NumberOf(message); }
  template <class F>
  static Work OnForm(std::function<void(F&)> step) {
    return [step = std::move(step)](forms::Form* form) { step(dynamic_cast<F&>(*form)); };
  }
  ScriptedOperator& Add(Step step) {
    steps_.push_back(std::move(step));
    return *this;
  }
  /// The next step when it is this one; fails the test otherwise.
  Step Take(const std::string& what, const std::string& detail = {});
  /// Fails the test when there are too many.
  void CountHabit(const std::string& what);
  /// Fails the test and unwinds the program.
  void Fail(const std::string& what);

  std::deque<Step> steps_;
  std::map<std::string, Work> habits_;
  std::vector<ShownMessage> messages_;
  int habitual_ = 0;
  int plainMessages_ = 0;
  bool failed_ = false;
};

/// Watches the bar of a form: while it is shown it never goes back, and only there does it move.
class BarWatch : public forms::View {
 public:
  std::vector<int> values;  ///< since it was shown last, in their order
  bool failed = false;      ///< when it was shown last

  void FormChanged(forms::Aspect) override {}
  void FormMoved() override {}
  void ControlChanged(forms::Control& control, forms::Aspect aspect) override;
};

/// Shows forms to the operator instead of on a screen.
class ScriptedToolkit : public forms::Toolkit {
 public:
  explicit ScriptedToolkit(ScriptedOperator& person) : person_(person) {}

  forms::Pointer pointer = forms::Pointer::Default;
  std::string font;                      ///< by which dialogs are laid out, such as "Tahoma 9"
  std::map<std::string, BarWatch> bars;  ///< by the names of the forms

  void CreateView(forms::Form& form) override;
  void RunModal(forms::Form& form) override;
  void DestroyView(forms::Form& form) override;
  int ScreenWidth() override { return 15360; }
  int ScreenHeight() override { return 11520; }
  void SetFont(const std::string& name, std::uint32_t points) override { font = name + " " + std::to_string(points); }
  void SetPointer(forms::Pointer shape) override { pointer = shape; }
  void ShowPlainMessage(const std::string& text, const std::string& title) override;

 private:
  ScriptedOperator& person_;
  std::set<std::string> windows_;  ///< names of the forms that have one
};

}  // namespace fakes
