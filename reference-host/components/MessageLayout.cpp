// Where things stand in the message window.

#include <algorithm>

#include "components/MessageDialogIds.h"
#include "components/MessageWindow.h"
#include "windows/adapters/Text.h"

namespace components {
namespace {

constexpr UINT kTextFormat = DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX | DT_EXPANDTABS;

// Pixels at 96 dots per inch.
constexpr int kMargin = 18, kGap = 14, kSmallGap = 10, kIcon = 32;
constexpr int kNarrowText = 240, kUsualText = 430;
constexpr int kSmoothing = 24;  // one part in so many is left free for it
constexpr int kButton = 96, kButtonPaddingX = 30, kButtonPaddingY = 14;

}  // namespace

SIZE MessageWindow::Measure(const std::wstring& text, int width, UINT format) const {
  const HDC context = GetDC(window_);
  const HGDIOBJ before = SelectObject(context, font_.get());
  RECT area = {0, 0, width, 0};
  DrawTextW(context, text.c_str(), static_cast<int>(text.size()), &area, format | DT_CALCRECT);
  SelectObject(context, before);
  ReleaseDC(window_, context);
  return {area.right, area.bottom};
}

// The usual width, and more only for a text that would not fit on the screen in it.
SIZE MessageWindow::MeasureText(int widest) {
  const std::wstring text = windows::Utf16(content_.message.text);
  const RECT work = WorkArea();
  const int tallest = (work.bottom - work.top) * 2 / 3;
  textWidth_ = std::min(Scale(kUsualText), widest);
  SIZE size = Measure(text, textWidth_, kTextFormat);
  if (size.cy > tallest) {
    textWidth_ = widest;
    size = Measure(text, textWidth_, kTextFormat);
  }
  // Smoothed characters may be drawn a little further apart than the system measures them, so that a long line ends
  // behind its measured end.
  size.cx = std::max<LONG>(size.cx + size.cx / kSmoothing + Scale(4), Scale(kNarrowText));
  return size;
}

// By the call that has measured it, with its width: a control that breaks lines by its own width could need one line
// more than were measured, or lose the end of one.
void MessageWindow::PaintText(const DRAWITEMSTRUCT& item) const {
  FillRect(item.hDC, &item.rcItem, static_cast<HBRUSH>(background_.get()));
  const std::wstring text = windows::Utf16(content_.message.text);
  const HGDIOBJ before = SelectObject(item.hDC, font_.get());
  SetTextColor(item.hDC, look_.text);
  SetBkMode(item.hDC, TRANSPARENT);
  RECT area = item.rcItem;
  area.right = area.left + textWidth_;
  DrawTextW(item.hDC, text.c_str(), static_cast<int>(text.size()), &area, kTextFormat | DT_NOCLIP);
  SelectObject(item.hDC, before);
}

MessageWindow::ButtonRow MessageWindow::MeasureButtons() const {
  ButtonRow row;
  row.width = Scale(kButton);
  for (const std::string* caption : {&content_.words.ok, &content_.words.consent, &content_.words.refuse}) {
    const SIZE size = Measure(windows::Utf16(*caption), 0, DT_SINGLELINE);
    row.width = std::max(row.width, static_cast<int>(size.cx) + Scale(kButtonPaddingX));
    row.height = std::max(row.height, static_cast<int>(size.cy) + Scale(kButtonPaddingY));
  }
  row.total = content_.message.isQuestion ? 2 * row.width + Scale(kSmallGap) : row.width;
  return row;
}

void MessageWindow::Arrange(const POINT* corner) {
  UseFont();
  const int margin = Scale(kMargin), gap = Scale(kGap), icon = Scale(kIcon), textLeft = margin + icon + gap;
  const RECT work = WorkArea();
  const ButtonRow row = MeasureButtons();
  const SIZE text = MeasureText((work.right - work.left) * 8 / 10 - textLeft - margin);
  const SIZE id = Measure(L"ID " + std::to_wstring(content_.id), 0, DT_SINGLELINE);

  const int width =
      std::max(textLeft + static_cast<int>(text.cx), margin + static_cast<int>(id.cx) + 2 * gap + row.total) + margin;
  const int footer = row.height + 2 * Scale(kSmallGap);
  const int tallest = static_cast<int>(work.bottom - work.top) * 9 / 10 - footer - 2 * margin;
  const int body = std::clamp(static_cast<int>(text.cy), icon, tallest);
  const int lineTop = margin + body + margin, height = lineTop + footer;

  const int textTop = margin + std::max(0, (icon - static_cast<int>(text.cy)) / 2);
  const int buttonTop = lineTop + Scale(kSmallGap), buttonLeft = width - margin - row.width;
  const bool question = content_.message.isQuestion;
  Place(TARSUS_MESSAGE_ICON, {margin, margin, margin + icon, margin + icon});
  Place(TARSUS_MESSAGE_TEXT, {textLeft, textTop, width - margin, margin + body});
  Place(TARSUS_MESSAGE_LINE, {0, lineTop, width, lineTop + 2});
  Place(TARSUS_MESSAGE_REFUSE, {buttonLeft, buttonTop, buttonLeft + row.width, buttonTop + row.height});
  const int consentLeft = question ? buttonLeft - Scale(kSmallGap) - row.width : buttonLeft;
  Place(TARSUS_MESSAGE_CONSENT, {consentLeft, buttonTop, consentLeft + row.width, buttonTop + row.height});
  const int idTop = buttonTop + (row.height - static_cast<int>(id.cy)) / 2;
  Place(TARSUS_MESSAGE_ID, {margin, idTop, margin + static_cast<int>(id.cx) + gap, idTop + static_cast<int>(id.cy)});

  const DWORD style = static_cast<DWORD>(GetWindowLongW(window_, GWL_STYLE));
  const DWORD extended = static_cast<DWORD>(GetWindowLongW(window_, GWL_EXSTYLE));
  RECT frame = {0, 0, width, height};
  AdjustWindowRectEx(&frame, style, FALSE, extended);
  const SIZE size = {frame.right - frame.left, frame.bottom - frame.top};
  const POINT place = corner ? *corner : MiddleOfOwner(size);
  SetWindowPos(window_, nullptr, place.x, place.y, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

void MessageWindow::UseFont() {
  font_ = CreateLookFont(look_, dpi_);
  for (const int control : {TARSUS_MESSAGE_TEXT, TARSUS_MESSAGE_ID, TARSUS_MESSAGE_CONSENT, TARSUS_MESSAGE_REFUSE}) {
    SendDlgItemMessageW(window_, control, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), TRUE);
  }
  const int size = Scale(kIcon);
  const HANDLE icon = LoadImageW(nullptr, PictureOf(content_.message.icon).icon, IMAGE_ICON, size, size, LR_SHARED);
  SendDlgItemMessageW(window_, TARSUS_MESSAGE_ICON, STM_SETICON, reinterpret_cast<WPARAM>(icon), 0);
}

void MessageWindow::Place(int control, const RECT& area) const {
  SetWindowPos(GetDlgItem(window_, control), nullptr, area.left, area.top, area.right - area.left,
               area.bottom - area.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT MessageWindow::WorkArea() const {
  const HWND owner = GetWindow(window_, GW_OWNER);
  MONITORINFO info = {};
  info.cbSize = sizeof info;
  GetMonitorInfoW(MonitorFromWindow(owner ? owner : window_, MONITOR_DEFAULTTOPRIMARY), &info);
  return info.rcWork;
}

POINT MessageWindow::MiddleOfOwner(SIZE size) const {
  const RECT work = WorkArea();
  RECT around = work;
  const HWND owner = GetWindow(window_, GW_OWNER);
  if (owner && !IsIconic(owner)) GetWindowRect(owner, &around);
  const auto middle = [](LONG low, LONG high, LONG length, LONG lowest, LONG highest) {
    return std::max(std::min((low + high - length) / 2, highest - length), lowest);
  };
  return {middle(around.left, around.right, size.cx, work.left, work.right),
          middle(around.top, around.bottom, size.cy, work.top, work.bottom)};
}

}  // namespace components
