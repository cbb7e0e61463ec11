// The thread's message queue.
#include "windows/adapters/Win32MessageLoop.h"

namespace windows {
namespace {

constexpr ULONGLONG kServeEvery = 10;  // milliseconds

}  // namespace

void Win32MessageLoop::Yield() {
  const std::optional<int> quit = ServeWaiting();
  if (quit) PostQuitMessage(*quit);
}

void Win32MessageLoop::Dispatch(MSG& message) {
  if (filter_ != nullptr && filter_->PreTranslate(message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

std::optional<int> Win32MessageLoop::ServeWaiting() {
  std::optional<int> quit;
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    if (message.message == WM_QUIT) {
      quit = static_cast<int>(message.wParam);
    } else {
      Dispatch(message);
    }
  }
  return quit;
}

void Win32MessageLoop::ServeWithoutInput() {
  const ULONGLONG now = GetTickCount64();
  if (now - servedAt_ < kServeEvery) return;
  servedAt_ = now;
  servingWithoutInput_ = true;
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_PAINT | PM_QS_SENDMESSAGE) != FALSE) Dispatch(message);
  servingWithoutInput_ = false;
}

}  // namespace windows
