// Widens a dialog for long captions.
#include "windows/toolkit/Widening.h"

#include <algorithm>

#include "windows/toolkit/Window.h"

namespace windows {
namespace {

using forms::ControlKind;

constexpr int kStep = 5;      // percent
constexpr int kMost = 200;    // likewise, of the template's width
constexpr int kEdge = 4;      // pixels at 96 dots per inch: of a button, on each side
constexpr int kMark = 20;     // likewise: a tick or option mark with its gap, or where a frame's text begins
constexpr int kOverhang = 3;  // likewise: behind the last letter

RECT AreaIn(HWND dialog, HWND window) {
  RECT area = {};
  GetWindowRect(window, &area);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
  return area;
}

int PaddingOf(ControlKind kind) {
  switch (kind) {
    case ControlKind::Label:
      return kOverhang;
    case ControlKind::CommandButton:
      return 2 * kEdge + kOverhang;
    default:
      return kMark + kOverhang;
  }
}

/// Whether the caption of a control that were `width` pixels wide would be seen as a whole.
bool Fits(const BoundControl& bound, HDC context, int width) {
  const ControlKind kind = bound.control->Kind();
  const auto style = static_cast<DWORD>(GetWindowLongW(bound.window, GWL_STYLE));
  const bool isShortened = kind == ControlKind::Label && (style & SS_ELLIPSISMASK) != 0;
  if (IsInput(kind) || isShortened || bound.control->Caption().empty()) return true;
  RECT own = {};
  GetClientRect(bound.window, &own);
  const int room = width - MulDiv(PaddingOf(kind), DpiOf(bound.window), USER_DEFAULT_SCREEN_DPI);
  RECT needed = {0, 0, room, 0};
  SelectObject(context, reinterpret_cast<HGDIOBJ>(SendMessageW(bound.window, WM_GETFONT, 0, 0)));
  const UINT format = kind == ControlKind::Label ? DT_WORDBREAK : DT_SINGLELINE;
  DrawTextW(context, WideTextOf(bound.window).c_str(), -1, &needed, format | DT_CALCRECT);
  TEXTMETRICW line = {};  // a label lower than that would not be helped
  GetTextMetricsW(context, &line);
  return needed.right <= room && needed.bottom <= std::max(own.bottom, line.tmHeight);
}

/// In percent of the present width.
int WidthNeeded(HWND dialog, const std::vector<BoundControl>& controls) {
  HDC context = GetDC(dialog);
  const int before = SaveDC(context);
  const auto fitsAt = [&](int percent) {
    return std::ranges::all_of(controls, [&](const BoundControl& bound) {
      const RECT area = AreaIn(dialog, bound.window);
      return Fits(bound, context, MulDiv(area.right - area.left, percent, 100));
    });
  };
  int percent = 100;
  while (percent < kMost && !fitsAt(percent)) percent += kStep;
  RestoreDC(context, before);
  ReleaseDC(dialog, context);
  return percent;
}

RECT WorkAreaOf(HWND dialog) {
  MONITORINFO monitor = {};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(dialog, MONITOR_DEFAULTTONEAREST), &monitor);
  return monitor.rcWork;
}

void StretchControls(HWND dialog, int percent) {
  for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    const RECT area = AreaIn(dialog, child);
    const int left = MulDiv(area.left, percent, 100);
    const int right = MulDiv(area.right, percent, 100);
    SetWindowPos(child, nullptr, left, area.top, right - left, area.bottom - area.top, SWP_NOZORDER | SWP_NOACTIVATE);
  }
}

}  // namespace

void WidenForCaptions(HWND dialog, const std::vector<BoundControl>& controls) {
  const int wanted = WidthNeeded(dialog, controls);
  if (wanted == 100) return;
  RECT frame = {};
  RECT inside = {};
  GetWindowRect(dialog, &frame);
  GetClientRect(dialog, &inside);
  const RECT work = WorkAreaOf(dialog);
  const LONG border = frame.right - frame.left - inside.right;
  const int percent = std::min(wanted, static_cast<int>((work.right - work.left - border) * 100 / inside.right));
  if (percent <= 100) return;
  StretchControls(dialog, percent);
  const int width = MulDiv(inside.right, percent, 100) + border;
  const LONG left = std::max(work.left, std::min(frame.left, work.right - width));
  SetWindowPos(dialog, nullptr, left, frame.top, width, frame.bottom - frame.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace windows
