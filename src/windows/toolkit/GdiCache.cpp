// Fonts and brushes, made once.
#include "windows/toolkit/GdiCache.h"

#include <algorithm>

#include "windows/adapters/Text.h"

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

}  // namespace windows
