// Making of fonts and brushes, and drawing of a command button in every state.
#include "windows/toolkit/Drawing.h"

#include <algorithm>

#include "windows/adapters/Text.h"
#include "windows/toolkit/Window.h"

namespace windows {

namespace {

HFONT MakeFont(const std::string& name, std::uint32_t points, int dpi) {
  constexpr int kPointsPerInch = 72;
  LOGFONTW font = {};
  font.lfHeight = -MulDiv(static_cast<int>(points), dpi, kPointsPerInch);
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = DEFAULT_CHARSET;
  font.lfQuality = CLEARTYPE_QUALITY;
  const std::wstring face = Utf16(name);
  std::copy_n(face.begin(), std::min<std::size_t>(face.size(), LF_FACESIZE - 1), font.lfFaceName);
  return CreateFontIndirectW(&font);
}

/// `colour` moved towards `target` by `percent`.
COLORREF Mix(COLORREF colour, COLORREF target, int percent) {
  const auto channel = [percent](int from, int to) { return static_cast<BYTE>(from + (to - from) * percent / 100); };
  return RGB(channel(GetRValue(colour), GetRValue(target)), channel(GetGValue(colour), GetGValue(target)),
             channel(GetBValue(colour), GetBValue(target)));
}

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kBlack = RGB(0, 0, 0);

COLORREF Light(COLORREF face) {
  return Mix(face, kWhite, 75);
}
COLORREF Shadow(COLORREF face) {
  return Mix(face, kBlack, 35);
}
COLORREF DarkShadow(COLORREF face) {
  return Mix(face, kBlack, 65);
}

/// One-pixel lines: `upper` along the top and left, `lower` along the bottom and right. Shrinks `area`.
void DrawBevel(HDC context, RECT& area, HBRUSH upper, HBRUSH lower) {
  const RECT top = {area.left, area.top, area.right, area.top + 1};
  const RECT left = {area.left, area.top, area.left + 1, area.bottom};
  const RECT bottom = {area.left, area.bottom - 1, area.right, area.bottom};
  const RECT right = {area.right - 1, area.top, area.right, area.bottom};
  FillRect(context, &top, upper);
  FillRect(context, &left, upper);
  FillRect(context, &bottom, lower);
  FillRect(context, &right, lower);
  InflateRect(&area, -1, -1);
}

void DrawFace(HDC context, RECT& area, const ButtonColours& colours, bool pushed, GdiCache& gdi) {
  const COLORREF face = colours.face;
  FillRect(context, &area, gdi.Brush(face));
  if (colours.plain) {
    DrawBevel(context, area, gdi.Brush(colours.text), gdi.Brush(colours.text));
    InflateRect(&area, -1, -1);
  } else if (pushed) {
    DrawBevel(context, area, gdi.Brush(DarkShadow(face)), gdi.Brush(Light(face)));
    DrawBevel(context, area, gdi.Brush(Shadow(face)), gdi.Brush(face));
  } else {
    DrawBevel(context, area, gdi.Brush(Light(face)), gdi.Brush(DarkShadow(face)));
    DrawBevel(context, area, gdi.Brush(face), gdi.Brush(Shadow(face)));
  }
}

/// Centred in `area`, over as many lines as it takes.
void DrawCaption(HDC context, RECT area, const std::wstring& caption, COLORREF colour, UINT format) {
  RECT needed = {0, 0, area.right - area.left, 0};
  DrawTextW(context, caption.c_str(), -1, &needed, format | DT_CALCRECT);
  const LONG spare = (area.bottom - area.top) - (needed.bottom - needed.top);
  if (spare > 0) area.top += spare / 2;
  SetTextColor(context, colour);
  DrawTextW(context, caption.c_str(), -1, &area, format);
}

void DrawDisabledCaption(HDC context, const RECT& area, const std::wstring& caption, const ButtonColours& colours,
                         UINT format) {
  if (colours.plain) return DrawCaption(context, area, caption, GetSysColor(COLOR_GRAYTEXT), format);
  RECT lower = area;
  OffsetRect(&lower, 1, 1);
  DrawCaption(context, lower, caption, Light(colours.face), format);
  DrawCaption(context, area, caption, Shadow(colours.face), format);
}

}  // namespace

HFONT GdiCache::Font(const std::string& name, std::uint32_t points, int dpi) {
  auto& font = fonts_[{name, points, dpi}];
  if (!font) font.reset(MakeFont(name, points, dpi));
  return font.get();
}

HBRUSH GdiCache::Brush(COLORREF colour) {
  auto& brush = brushes_[colour];
  if (!brush) brush.reset(CreateSolidBrush(colour));
  return brush.get();
}

bool IsHighContrast() {
  HIGHCONTRASTW contrast = {};
  contrast.cbSize = sizeof contrast;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) != FALSE &&
         (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

void PaintButton(const DRAWITEMSTRUCT& item, const ButtonColours& colours, bool isDefault, GdiCache& gdi) {
  const bool pushed = (item.itemState & ODS_SELECTED) != 0;
  RECT area = item.rcItem;
  if (isDefault) DrawBevel(item.hDC, area, gdi.Brush(colours.text), gdi.Brush(colours.text));
  DrawFace(item.hDC, area, colours, pushed, gdi);

  const SelectScope font(item.hDC, reinterpret_cast<HGDIOBJ>(SendMessageW(item.hwndItem, WM_GETFONT, 0, 0)));
  SetBkMode(item.hDC, TRANSPARENT);
  InflateRect(&area, -2, -1);
  RECT text = area;
  if (pushed) OffsetRect(&text, 1, 1);
  UINT format = DT_CENTER | DT_WORDBREAK;
  if ((item.itemState & ODS_NOACCEL) != 0) format |= DT_HIDEPREFIX;
  const std::wstring caption = WideTextOf(item.hwndItem);
  if ((item.itemState & ODS_DISABLED) != 0) {
    DrawDisabledCaption(item.hDC, text, caption, colours, format);
  } else {
    DrawCaption(item.hDC, text, caption, colours.text, format);
  }
  if ((item.itemState & (ODS_FOCUS | ODS_NOFOCUSRECT)) == ODS_FOCUS) DrawFocusRect(item.hDC, &area);
}

}  // namespace windows
