// The guard of DialogView, for the view's own files.
#pragma once

#include "windows/toolkit/DialogView.h"

namespace windows {

/// While one lives, the window's notices are echoes of the view's own writing.
class DialogView::Writing {
 public:
  explicit Writing(DialogView& view) : view_(view) { ++view_.writing_; }
  ~Writing() { --view_.writing_; }
  Writing(const Writing&) = delete;
  Writing& operator=(const Writing&) = delete;

 private:
  DialogView& view_;
};

}  // namespace windows
