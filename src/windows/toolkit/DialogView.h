// The window of one form: the binder between its members and its template's controls.
//
// Whatever the form changes is written to the window, whatever the operator does is read into
// the form. One guard stands between: while the view writes, the window's notices are dropped.
#pragma once

#include <set>
#include <vector>

#include "forms/Form.h"
#include "forms/KeyGuard.h"
#include "windows/adapters/Win32Desktop.h"
#include "windows/toolkit/BoundControl.h"
#include "windows/toolkit/DialogTemplate.h"
#include "windows/toolkit/TaskBarButton.h"

namespace windows {

/// Keeps the keyboard focus of one dialog on a control that can use it.
class FocusKeeper {
 public:
  void SetDialog(HWND dialog) { dialog_ = dialog; }

  /// Call before a control is disabled or hidden: a focus there would swallow every key.
  void BeforeLeaving(HWND control);
  /// Call after a control was enabled or shown: brings back the focus that it had to give away,
  /// unless the operator has chosen another control meanwhile.
  void AfterReturning(HWND control);
  /// Puts the focus on a control, or notes it for when the dialog is shown.
  void Give(HWND control);
  /// Call as the dialog is shown and whenever it becomes active.
  void Settle();

 private:
  bool Has(HWND control) const;
  void MoveTo(HWND control) const;

  HWND dialog_ = nullptr;
  HWND wanted_ = nullptr;  ///< asked for while the dialog was hidden
  HWND lost_ = nullptr;    ///< had the focus when it was disabled
  HWND parked_ = nullptr;  ///< where the focus was put instead
};

class DialogView : public forms::View {
 public:
  /// Makes the window, hidden, from the template of the form's name, laid out by `font`.
  /// `pointer` is looked at whenever the mouse moves over the window, `loop` before a command is obeyed.
  DialogView(forms::Form& form, HWND owner, const LayoutFont& font, GdiCache& gdi, const forms::Pointer& pointer,
             const Win32MessageLoop& loop);
  ~DialogView() override;
  DialogView(const DialogView&) = delete;
  DialogView& operator=(const DialogView&) = delete;

  void FormChanged(forms::Aspect aspect) override;
  void FormMoved() override;
  void ControlChanged(forms::Control& control, forms::Aspect aspect) override;

  /// Connects the controls of the form with those of the window; to be called once. A step of its own because each of
  /// the two may take as long as others should wait for an answer.
  void Bind();

  forms::Form& GetForm() const { return form_; }
  /// Null when there is no template of the form's name.
  HWND Window() const { return window_; }
  void Show();
  void Hide();
  /// A dialog that another one covers takes no input.
  void SetCovered(bool covered);
  /// Whether `window` is the dialog or a part of it.
  bool Owns(HWND window) const;
  /// Whether a key may do in this dialog what it does; otherwise it was meant for another one, and is to be dropped.
  bool TakesKey(const MSG& message);

 private:
  /// While one lives, the window's notices are echoes of the view's own writing.
  class Writing {
   public:
    explicit Writing(DialogView& view) : view_(view) { ++view_.writing_; }
    ~Writing() { --view_.writing_; }
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;

   private:
    DialogView& view_;
  };

  static INT_PTR CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  /// In front of a text box: `control` is its member.
  static LRESULT CALLBACK TextBoxProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR control);
  /// In front of a command button.
  static LRESULT CALLBACK ButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                     DWORD_PTR unused);

  void BindControls();
  void Subclass(const BoundControl& bound);
  void TakePlace();
  void TakeSize();
  void WriteTitle();
  void Write(const BoundControl& bound, forms::Aspect aspect);
  /// Whether the operator can use a control: not in a form that takes no input. What only shows something stays as it
  /// is there.
  bool IsUsable(const BoundControl& bound) const;
  void Redraw();
  void SettleFocus();
  const BoundControl* Find(const forms::Control& control) const;
  const BoundControl* Find(HWND window) const;

  // The window's messages. Handlers answer what a dialog procedure answers.
  INT_PTR Handle(UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR Answer(LRESULT result);
  void OnCommand(int id, int code, HWND source);
  void OnNotice(const BoundControl& bound, int code);
  INT_PTR OnSetCursor();
  INT_PTR OnControlColour(HDC context, HWND window);
  INT_PTR OnDrawItem(const DRAWITEMSTRUCT& item);
  void OnDeviceChange(WPARAM event, LPARAM data);
  void TellOfDevice(DWORD type);

  bool TakesInput() const { return form_.IsOpen() && form_.Enabled(); }
  void Press(forms::CommandButton* button);
  void Toggle(const BoundControl& bound);
  /// The button that Enter presses now.
  forms::CommandButton* EnterButton() const;
  void RedrawButton(const forms::CommandButton* button);

  forms::Form& form_;
  GdiCache& gdi_;
  const forms::Pointer& pointer_;
  const Win32MessageLoop& loop_;
  HWND window_ = nullptr;
  std::vector<BoundControl> controls_;
  FocusKeeper focus_;
  TaskBarButton taskBar_;
  forms::KeyGuard keyGuard_;
  int writing_ = 0;
  std::set<DWORD> changedDevices_;  ///< types of which the form is still to be told
  bool covered_ = false;
};

}  // namespace windows
