// Looks a message up and shows it over the window of its caller.
#include <windows.h>

#include "components/Components.h"
#include "components/MessageWindow.h"

namespace components {
namespace {

BOOL CALLBACK TakeFirstVisible(HWND window, LPARAM found) {
  if (!IsWindowVisible(window)) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

// The calling thread's active window. While another program is in front there is none; then the
// topmost window of the thread, for the message must block the caller's dialog all the same.
HWND CallersWindow() {
  HWND window = GetActiveWindow();
  if (!window) EnumThreadWindows(GetCurrentThreadId(), &TakeFirstVisible, reinterpret_cast<LPARAM>(&window));
  return window ? GetLastActivePopup(window) : nullptr;
}

}  // namespace

MessageDialog::MessageDialog() {
  AddProperty(L"DisplayOption1", &MessageDialog::SetDisplayOption1);
  AddProperty(L"DisplayOption2", &MessageDialog::SetDisplayOption2);
  AddMethod(L"ShowMessage", &MessageDialog::ShowMessage);
}

std::int32_t MessageDialog::ShowMessage(std::int32_t id, const std::string& text1, const std::string& text2,
                                        const std::string& text3) {
  MessageWindow::Content content;
  {
    MessageCatalogue catalogue;  // closed again before the operator takes time to answer
    content.message = catalogue.Find(id, {text1, text2, text3});
    content.words = catalogue.Words();
  }
  content.id = id;
  content.showId = showId_;
  return MessageWindow(std::move(content), MessageLook::Read()).Show(owned_ ? CallersWindow() : nullptr);
}

}  // namespace components
