// The system's list of task bar buttons.
#include "windows/toolkit/TaskBarButton.h"

#include <utility>

namespace windows {
namespace {

ITaskbarList3* NewList() {
  void* list = nullptr;
  const HRESULT made = CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList3, &list);
  if (FAILED(made)) return nullptr;
  static_cast<ITaskbarList3*>(list)->HrInit();
  return static_cast<ITaskbarList3*>(list);
}

}  // namespace

/// Dialogs are owned one by the other: the first has the button.
void TaskBarButton::Show(HWND dialog, const forms::ProgressBar& bar) {
  if (!std::exchange(asked_, true)) list_.reset(NewList());
  if (!list_) return;
  HWND first = GetAncestor(dialog, GA_ROOTOWNER);
  if (!bar.Visible()) {
    list_->SetProgressState(first, TBPF_NOPROGRESS);
    return;
  }
  list_->SetProgressValue(first, static_cast<ULONGLONG>(bar.Value()), forms::ProgressBar::kEnd);
  list_->SetProgressState(first, bar.HasFailed() ? TBPF_ERROR : TBPF_NORMAL);
}

}  // namespace windows
