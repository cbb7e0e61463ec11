// Shows forms as Windows dialogs.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "forms/Toolkit.h"
#include "windows/adapters/Win32Desktop.h"
#include "windows/toolkit/DialogView.h"

namespace windows {

class Win32Toolkit : public forms::Toolkit, public Dialogs {
 public:
  /// Makes itself known to `loop`, so that keys work while a long job serves events, too.
  explicit Win32Toolkit(Win32MessageLoop& loop);
  ~Win32Toolkit() override;
  Win32Toolkit(const Win32Toolkit&) = delete;
  Win32Toolkit& operator=(const Win32Toolkit&) = delete;

  /// A form without a template stays without a view.
  void CreateView(forms::Form& form) override;
  void RunModal(forms::Form& form) override;
  void DestroyView(forms::Form& form) override;
  /// Of the primary monitor.
  int ScreenWidth() override;
  int ScreenHeight() override;
  void SetFont(const std::string& name, std::uint32_t points) override;
  void SetPointer(forms::Pointer pointer) override;
  void ShowPlainMessage(const std::string& text, const std::string& title) override;

  bool PreTranslate(MSG& message) override;
  HWND FrontWindow() const override;

 private:
  using Views = std::vector<std::unique_ptr<DialogView>>;

  /// The end of the list when the form has none.
  Views::iterator FindView(const forms::Form& form);
  void ServeUntilClosed(const forms::Form& form);

  Win32MessageLoop& loop_;
  GdiCache gdi_;
  LayoutFont font_;
  forms::Pointer pointer_ = forms::Pointer::Default;
  Views views_;
  std::vector<DialogView*> shown_;  ///< the one in front last
};

}  // namespace windows
