// State of one control, from its member to its window and back.
#include "windows/toolkit/BoundControl.h"

#include <commctrl.h>
#include <uxtheme.h>

#include "windows/adapters/Text.h"
#include "windows/toolkit/Window.h"

namespace windows {

namespace {

using forms::Aspect;
using forms::ControlKind;

bool IsToggle(ControlKind kind) {
  return kind == ControlKind::CheckBox || kind == ControlKind::OptionButton;
}

/// The labels in which a form says what went wrong are named for that.
bool TellsOfAnError(const forms::Control& control) {
  return control.Name().starts_with("lblError");
}
constexpr forms::Colour kErrorColour = 0x0000C0;  // dark red

/// A group box does not clear what it drew before, nor does a transparent text: the dialog behind must.
void RedrawWithBackground(HWND window) {
  RECT area = {};
  GetWindowRect(window, &area);
  HWND dialog = GetParent(window);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
  RedrawWindow(dialog, &area, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

/// Frames and toggles are clipped to the measured width of their text, which cuts the overhang of
/// a last letter in some fonts; the blank is the room for it.
std::string ShownCaption(const forms::Control& control) {
  const bool clipped = control.Kind() == ControlKind::Frame || IsToggle(control.Kind());
  return clipped && !control.Caption().empty() ? control.Caption() + " " : control.Caption();
}

void WriteCaption(const BoundControl& bound) {
  if (IsInput(bound.control->Kind())) return;
  ShowText(bound.window, ShownCaption(*bound.control));
  RedrawWithBackground(bound.window);
}

void WriteText(const BoundControl& bound) {
  if (bound.control->Kind() == ControlKind::TextBox) {
    ShowText(bound.window, static_cast<const forms::TextBox*>(bound.control)->Text());
  } else if (bound.control->Kind() == ControlKind::ComboBox) {
    ShowText(bound.window, static_cast<const forms::ComboBox*>(bound.control)->Text());
  }
}

/// In a theme the colour of a failure is the theme's, without one it is ours.
void WriteProgress(HWND window, const forms::ProgressBar& bar) {
  SendMessageW(window, PBM_SETRANGE32, 0, forms::ProgressBar::kEnd);
  SendMessageW(window, PBM_SETPOS, static_cast<WPARAM>(bar.Value()), 0);
  SendMessageW(window, PBM_SETSTATE, bar.HasFailed() ? PBST_ERROR : PBST_NORMAL, 0);
  SendMessageW(window, PBM_SETBARCOLOR, 0, static_cast<LPARAM>(bar.HasFailed() ? kErrorColour : CLR_DEFAULT));
}

void WriteValue(const BoundControl& bound) {
  if (bound.control->Kind() == ControlKind::ProgressBar) {
    return WriteProgress(bound.window, *static_cast<const forms::ProgressBar*>(bound.control));
  }
  if (bound.control->Kind() == ControlKind::ListBox) {
    SendMessageW(bound.window, LB_SETCURSEL, static_cast<const forms::ListBox*>(bound.control)->PickedItem(), 0);
  }
  if (!IsToggle(bound.control->Kind())) return;
  const WPARAM value = static_cast<const forms::ToggleControl*>(bound.control)->Value() ? BST_CHECKED : BST_UNCHECKED;
  // To clear an option button, clear already or not, takes its tab stop away.
  if (SendMessageW(bound.window, BM_GETCHECK, 0, 0) != static_cast<LRESULT>(value)) {
    SendMessageW(bound.window, BM_SETCHECK, value, 0);
  }
}

void WriteList(const BoundControl& bound) {
  SendMessageW(bound.window, LB_RESETCONTENT, 0, 0);
  for (const std::string& item : static_cast<const forms::ListBox*>(bound.control)->Items()) {
    SendMessageW(bound.window, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Utf16(item).c_str()));
  }
  WriteValue(bound);
}

/// Items of a combo box are only ever added at the end or all removed.
void WriteItems(const BoundControl& bound) {
  if (bound.control->Kind() == ControlKind::ListBox) return WriteList(bound);
  if (bound.control->Kind() != ControlKind::ComboBox) return;
  const auto& combo = *static_cast<const forms::ComboBox*>(bound.control);
  auto shown = static_cast<std::size_t>(SendMessageW(bound.window, CB_GETCOUNT, 0, 0));
  if (shown > combo.Items().size()) {
    SendMessageW(bound.window, CB_RESETCONTENT, 0, 0);
    shown = 0;
    WriteText(bound);
  }
  for (; shown < combo.Items().size(); ++shown) {
    SendMessageW(bound.window, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Utf16(combo.Items()[shown]).c_str()));
  }
}

void WriteLook(const BoundControl& bound, GdiCache& gdi) {
  const forms::Appearance& look = bound.control->Look();
  HFONT font = gdi.Font(look.fontName, look.fontSize, DpiOf(bound.window));
  SendMessageW(bound.window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  RedrawWithBackground(bound.window);
}

}  // namespace

bool IsInput(ControlKind kind) {
  return kind == ControlKind::TextBox || kind == ControlKind::ComboBox || kind == ControlKind::ListBox;
}

forms::Appearance TemplateLook(HWND window, bool isInput) {
  LOGFONTW font = {};
  GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0)), sizeof font, &font);
  forms::Appearance look;
  look.fontName = Utf8(font.lfFaceName);
  look.fontSize = static_cast<std::uint32_t>(MulDiv(std::abs(font.lfHeight), 72, DpiOf(window)));
  look.background = GetSysColor(isInput ? COLOR_WINDOW : COLOR_BTNFACE);
  look.foreground = GetSysColor(isInput ? COLOR_WINDOWTEXT : COLOR_BTNTEXT);
  return look;
}

void TakeFromTemplate(const BoundControl& bound) {
  forms::Control& control = *bound.control;
  const ControlKind kind = control.Kind();
  if (control.Caption().empty() && !IsInput(kind)) control.SetCaption(TextOf(bound.window));
  const LONG style = GetWindowLongW(bound.window, GWL_STYLE);
  if ((style & WS_DISABLED) != 0) control.SetEnabled(false);
  if ((style & WS_VISIBLE) == 0) control.SetVisible(false);
  if (control.Look().fontSize == 0) {
    forms::Appearance look = TemplateLook(bound.window, IsInput(kind));
    if (TellsOfAnError(control)) look.foreground = kErrorColour;
    control.SetLook(look);
  }
  // Visual styles draw these in colours of their own, whatever the dialog answers.
  if (kind == ControlKind::Frame || IsToggle(kind)) SetWindowTheme(bound.window, L"", L"");
}

void WriteAspect(const BoundControl& bound, Aspect aspect, GdiCache& gdi) {
  switch (aspect) {
    case Aspect::Caption:
      return WriteCaption(bound);
    case Aspect::Text:
      return WriteText(bound);
    case Aspect::Value:
      return WriteValue(bound);
    case Aspect::Items:
      return WriteItems(bound);
    case Aspect::Enabled:
      EnableWindow(bound.window, bound.control->Enabled() ? TRUE : FALSE);
      return;
    case Aspect::Visible:
      ShowWindow(bound.window, bound.control->Visible() ? SW_SHOWNA : SW_HIDE);
      return;
    case Aspect::Appearance:
      return WriteLook(bound, gdi);
    case Aspect::Focus:
      return;
  }
}

void WriteAll(const BoundControl& bound, GdiCache& gdi) {
  for (Aspect aspect : {Aspect::Caption, Aspect::Items, Aspect::Text, Aspect::Value, Aspect::Enabled, Aspect::Visible,
                        Aspect::Appearance}) {
    WriteAspect(bound, aspect, gdi);
  }
}

void ReadText(const BoundControl& bound) {
  if (bound.control->Kind() == ControlKind::TextBox) {
    static_cast<forms::TextBox*>(bound.control)->SetText(TextOf(bound.window));
  } else if (bound.control->Kind() == ControlKind::ComboBox) {
    static_cast<forms::ComboBox*>(bound.control)->SetText(TextOf(bound.window));
  }
}

void ReadPick(const BoundControl& bound) {
  if (bound.control->Kind() == ControlKind::ListBox) {
    const LRESULT item = SendMessageW(bound.window, LB_GETCURSEL, 0, 0);
    if (item >= 0) static_cast<forms::ListBox*>(bound.control)->Pick(static_cast<std::size_t>(item));
    return;
  }
  auto& combo = *static_cast<forms::ComboBox*>(bound.control);
  const LRESULT picked = SendMessageW(bound.window, CB_GETCURSEL, 0, 0);
  if (picked < 0 || static_cast<std::size_t>(picked) >= combo.Items().size()) return ReadText(bound);
  combo.SetText(combo.Items()[static_cast<std::size_t>(picked)]);
}

}  // namespace windows
