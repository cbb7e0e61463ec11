// The base of the tests that show forms as real windows.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "forms/Form.h"
#include "windows/adapters/Win32.h"
#include "windows/adapters/Win32Desktop.h"
#include "windows/toolkit/Win32Toolkit.h"

namespace windows_tests {

class WindowTest : public testing::Test {
 protected:
  ~WindowTest() override { Hold(); }

  /// Shows the form modally and runs `script` in its modal loop, once; then closes the form
  /// if the script has not.
  void Show(forms::Form& form, std::function<void()> script);

  /// The window of a loaded form; the title tells forms apart.
  static HWND WindowOf(const forms::Form& form);
  static HWND ItemOf(const forms::Form& form, const forms::Control& control);

  // The operator. Each returns when the program has dealt with the input.
  void Post(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
  void Key(WPARAM key);
  void Type(HWND window, const std::wstring& text);
  void Click(HWND window) { Post(window, BM_CLICK); }
  /// As if the keys were held down; none by default.
  static void Hold(std::initializer_list<int> keys = {});

  windows::Win32MessageLoop loop_;
  windows::Win32Toolkit toolkit_{loop_};
};

}  // namespace windows_tests
