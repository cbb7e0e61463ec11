// The window in which the host shows a message: icon, text, one or two buttons, and the
// message's number for operators to quote. It grows with its text.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "components/MessageCatalogue.h"
#include "components/MessageLook.h"

namespace components {

class MessageWindow {
 public:
  struct Content {
    Message message;
    MessageWords words;
    std::int32_t id = 0;
    bool showId = true;
  };

  MessageWindow(Content content, const MessageLook& look) : content_(std::move(content)), look_(look) {}

  /// Shows the window until the operator answers, and disables `owner` meanwhile. Without an
  /// owner the window stays above all others, so that it cannot get lost behind them. A
  /// MessageDialog::Answer; Esc and the close box refuse.
  std::int32_t Show(HWND owner);

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR Handle(UINT message, WPARAM wParam, LPARAM lParam);

  void Start();
  void Fill();
  /// Sizes everything for the present dots per inch and gives the window `corner`, or the middle
  /// of its owner.
  void Arrange(const POINT* corner);
  void UseFont();
  struct ButtonRow {
    int width = 0, height = 0;  // of one button
    int total = 0;              // width of all that are shown
  };
  ButtonRow MeasureButtons() const;
  /// The size that the text takes, and `textWidth_`, at which its lines are broken.
  SIZE MeasureText(int widest);
  void PaintText(const DRAWITEMSTRUCT& item) const;
  SIZE Measure(const std::wstring& text, int width, UINT format) const;
  RECT WorkArea() const;
  POINT MiddleOfOwner(SIZE size) const;
  void Place(int control, const RECT& area) const;
  void OnCommand(int control, int notice);
  bool IsDefault(HWND button) const;
  void Answer(bool consent);
  int Scale(int pixels) const { return MulDiv(pixels, dpi_, 96); }

  Content content_;
  MessageLook look_;
  HWND window_ = nullptr;
  int dpi_ = 96;
  int textWidth_ = 0;
  GdiObject font_, background_;
};

}  // namespace components
