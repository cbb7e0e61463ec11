// How far a job is, on the program's button in the task bar.
#pragma once

#include <memory>

#include "forms/Controls.h"
#include "windows/adapters/Win32.h"
// After Win32.h, on which it rests.
#include <shobjidl.h>

namespace windows {

/// Where the system has no such button, nothing happens.
class TaskBarButton {
 public:
  /// Shows what `bar` shows, which stands in `dialog`; nothing while that is hidden.
  void Show(HWND dialog, const forms::ProgressBar& bar);

 private:
  struct Releaser {
    void operator()(ITaskbarList3* list) const { list->Release(); }
  };

  std::unique_ptr<ITaskbarList3, Releaser> list_;
  bool asked_ = false;  ///< for the list
};

}  // namespace windows
