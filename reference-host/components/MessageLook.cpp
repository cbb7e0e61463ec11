// Reads font and colours, and draws with them.
#include "components/MessageLook.h"

#include <algorithm>

#include "common/Host.h"
#include "windows/adapters/Text.h"

namespace components {
namespace {

bool IsHighContrast() {
  HIGHCONTRASTW setting = {};
  setting.cbSize = sizeof setting;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, setting.cbSize, &setting, 0) &&
         (setting.dwFlags & HCF_HIGHCONTRASTON);
}

COLORREF Colour(const char* name, int systemColour, bool useSystem) {
  const auto number = useSystem ? std::nullopt : reference::ReadRegistryNumber(name);
  return number ? static_cast<COLORREF>(*number & 0xFFFFFF) : GetSysColor(systemColour);
}

/// `share` percent of `over` on `under`.
COLORREF Mix(COLORREF over, COLORREF under, int share) {
  const auto part = [&](int overPart, int underPart) {
    return static_cast<BYTE>((overPart * share + underPart * (100 - share)) / 100);
  };
  return RGB(part(GetRValue(over), GetRValue(under)), part(GetGValue(over), GetGValue(under)),
             part(GetBValue(over), GetBValue(under)));
}

void Frame(HDC context, RECT area, COLORREF colour, int thickness) {
  const GdiObject brush(CreateSolidBrush(colour));
  for (; thickness > 0; --thickness) {
    FrameRect(context, &area, static_cast<HBRUSH>(brush.get()));
    InflateRect(&area, -1, -1);
  }
}

}  // namespace

MessageLook MessageLook::Read() {
  const bool system = IsHighContrast();
  MessageLook look;
  look.isHighContrast = system;
  look.fontName = windows::Utf16(reference::ReadRegistryText("Font").value_or("Segoe UI"));
  const unsigned long points = reference::ReadRegistryNumber("BackupUtility\\BUFontSizeSS").value_or(9);
  look.fontPoints = static_cast<int>(std::clamp(points, 6UL, 36UL));
  look.back = Colour("BackupUtility\\ColorBack", COLOR_BTNFACE, system);
  look.text = Colour("BackupUtility\\ColorStr", COLOR_BTNTEXT, system);
  look.button = Colour("BackupUtility\\ColorBtn", COLOR_BTNFACE, system);
  return look;
}

MessagePicture PictureOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kQuestion:
      return {IDI_QUESTION, MB_ICONQUESTION};
    case MessageIcon::kWarning:
      return {IDI_WARNING, MB_ICONWARNING};
    case MessageIcon::kError:
      return {IDI_ERROR, MB_ICONERROR};
    case MessageIcon::kInformation:
      break;
  }
  return {IDI_INFORMATION, MB_ICONINFORMATION};
}

COLORREF Faded(const MessageLook& look, COLORREF under, int share) {
  if (look.isHighContrast) return look.text;
  return Mix(look.text, under, share);
}

int DpiOf(HWND window) {
  using GetDpiForWindowRoutine = UINT(WINAPI*)(HWND);
  const FARPROC routine = GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow");
  if (routine) {
    // Through void*: the two pointer types have nothing in common.
    const UINT dpi = reinterpret_cast<GetDpiForWindowRoutine>(reinterpret_cast<void*>(routine))(window);
    if (dpi) return static_cast<int>(dpi);
  }
  const HDC context = GetDC(window);
  const int dpi = GetDeviceCaps(context, LOGPIXELSY);
  ReleaseDC(window, context);
  return dpi;
}

GdiObject CreateLookFont(const MessageLook& look, int dpi) {
  return GdiObject(CreateFontW(-MulDiv(look.fontPoints, dpi, 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                               DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                               DEFAULT_PITCH | FF_DONTCARE, look.fontName.c_str()));
}

void DrawLookButton(const DRAWITEMSTRUCT& item, const MessageLook& look, bool isDefault) {
  const bool pressed = (item.itemState & ODS_SELECTED) != 0;
  const GdiObject fill(CreateSolidBrush(pressed ? Mix(look.text, look.button, 20) : look.button));
  RECT area = item.rcItem;
  FillRect(item.hDC, &area, static_cast<HBRUSH>(fill.get()));
  Frame(item.hDC, area, Faded(look, look.button, isDefault ? 90 : 40), isDefault ? 2 : 1);

  wchar_t caption[128] = {};
  GetWindowTextW(item.hwndItem, caption, 128);
  SetBkMode(item.hDC, TRANSPARENT);
  SetTextColor(item.hDC, look.text);
  UINT format = DT_CENTER | DT_VCENTER | DT_SINGLELINE;
  if (item.itemState & ODS_NOACCEL) format |= DT_HIDEPREFIX;
  DrawTextW(item.hDC, caption, -1, &area, format);
  if ((item.itemState & ODS_FOCUS) && !(item.itemState & ODS_NOFOCUSRECT)) {
    InflateRect(&area, -4, -4);
    DrawFocusRect(item.hDC, &area);
  }
}

}  // namespace components
