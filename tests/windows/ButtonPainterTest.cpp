// The drawn button: what an operator must be able to tell apart looks different.
#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "windows/toolkit/Drawing.h"

namespace windows_tests {

namespace {

constexpr int kWidth = 60;
constexpr int kHeight = 24;
constexpr windows::ButtonColours kColours = {RGB(200, 220, 240), RGB(10, 20, 30)};

std::vector<COLORREF> Paint(UINT state, bool isDefault, const wchar_t* caption,
                            const windows::ButtonColours& colours = kColours) {
  HWND button =
      CreateWindowExW(0, L"BUTTON", caption, BS_OWNERDRAW, 0, 0, kWidth, kHeight, nullptr, nullptr, nullptr, nullptr);
  HDC context = CreateCompatibleDC(nullptr);
  HBITMAP bitmap = CreateBitmap(kWidth, kHeight, 1, 32, nullptr);
  std::vector<COLORREF> pixels;
  {
    const windows::SelectScope picture(context, bitmap);
    windows::GdiCache gdi;
    windows::PaintButton({ODT_BUTTON, 0, 0, 0, state, button, context, {0, 0, kWidth, kHeight}, 0}, colours, isDefault,
                         gdi);
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x) pixels.push_back(GetPixel(context, x, y));
  }
  DeleteObject(bitmap);
  DeleteDC(context);
  DestroyWindow(button);
  return pixels;
}

}  // namespace

TEST(ButtonPainterTest, EveryStateLooksDifferent) {
  // As configured, and under high contrast.
  for (const windows::ButtonColours& colours : {kColours, windows::ButtonColours{0, RGB(255, 255, 255), true}}) {
    std::set<std::vector<COLORREF>> pictures = {Paint(0, true, L"OK", colours), Paint(0, false, L"Cancel", colours)};
    for (const UINT state : {0U, UINT{ODS_SELECTED}, UINT{ODS_DISABLED}, UINT{ODS_FOCUS}})
      pictures.insert(Paint(state, false, L"OK", colours));
    EXPECT_EQ(pictures.size(), 6U);
  }
}

TEST(ButtonPainterTest, UsesTheConfiguredColours) {
  const auto pixels = Paint(0, true, L"");
  EXPECT_EQ(pixels.front(), kColours.text) << "the default button's frame";
  EXPECT_EQ(pixels[kWidth * kHeight / 2 + kWidth / 2], kColours.face);
  EXPECT_NE(Paint(0, false, L"").front(), kColours.text);
  const auto black = Paint(0, false, L"", {0, RGB(255, 255, 255), true});
  for (const int corner : {0, kWidth - 1, kWidth * (kHeight - 1), kWidth * kHeight - 1})
    EXPECT_EQ(black.at(static_cast<std::size_t>(corner)), RGB(255, 255, 255))
        << "an edge on a black face, at " << corner;
}

}  // namespace windows_tests
