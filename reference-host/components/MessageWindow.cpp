// Shows the message window and takes its answer.
#include "components/MessageWindow.h"

#include "components/Components.h"
#include "components/MessageDialogIds.h"
#include "windows/adapters/Text.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace components {
namespace {

HINSTANCE Module() {
  return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

// A dialog class of our own name. Its procedure is the system's, so nothing dangles when the
// server is unloaded and the class is still known.
void RegisterWindowClass() {
  WNDCLASSEXW windowClass = {};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = DefDlgProcW;
  windowClass.cbWndExtra = DLGWINDOWEXTRA;
  windowClass.hInstance = Module();
  windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  windowClass.lpszClassName = L"" TARSUS_MESSAGE_CLASS;
  RegisterClassExW(&windowClass);
}

}  // namespace

std::int32_t MessageWindow::Show(HWND owner) {
  RegisterWindowClass();
  const INT_PTR code = DialogBoxParamW(Module(), MAKEINTRESOURCEW(TARSUS_MESSAGE_TEMPLATE), owner, &Procedure,
                                       reinterpret_cast<LPARAM>(this));
  return code > 0 ? static_cast<std::int32_t>(code) : MessageDialog::kNotShown;
}

INT_PTR CALLBACK MessageWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(window, DWLP_USER, lParam);
    reinterpret_cast<MessageWindow*>(lParam)->window_ = window;
  }
  auto* self = reinterpret_cast<MessageWindow*>(GetWindowLongPtrW(window, DWLP_USER));
  return self ? self->Handle(message, wParam, lParam) : FALSE;
}

INT_PTR MessageWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      Start();
      return FALSE;  // the focus has been set
    case WM_DPICHANGED: {
      dpi_ = HIWORD(wParam);
      const RECT& proposed = *reinterpret_cast<RECT*>(lParam);
      const POINT corner = {proposed.left, proposed.top};
      Arrange(&corner);
      return TRUE;
    }
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN: {
      const auto context = reinterpret_cast<HDC>(wParam);
      const bool isId = GetDlgCtrlID(reinterpret_cast<HWND>(lParam)) == TARSUS_MESSAGE_ID;
      SetTextColor(context, isId ? Faded(look_, look_.back, 65) : look_.text);
      SetBkMode(context, TRANSPARENT);
      return reinterpret_cast<INT_PTR>(background_.get());
    }
    case WM_DRAWITEM: {
      const auto& item = *reinterpret_cast<DRAWITEMSTRUCT*>(lParam);
      if (item.CtlID == TARSUS_MESSAGE_TEXT) {
        PaintText(item);
      } else {
        DrawLookButton(item, look_, IsDefault(item.hwndItem));
      }
      return TRUE;
    }
    case WM_COMMAND:
      OnCommand(LOWORD(wParam), HIWORD(wParam));
      return TRUE;
    default:
      return FALSE;
  }
}

void MessageWindow::Start() {
  dpi_ = DpiOf(window_);
  background_.reset(CreateSolidBrush(look_.back));
  Fill();
  Arrange(nullptr);
  // What cannot be undone wants a deliberate answer: there Enter refuses.
  const Message& message = content_.message;
  const bool refuseFirst = message.isQuestion && message.icon == MessageIcon::kWarning;
  const int first = refuseFirst ? TARSUS_MESSAGE_REFUSE : TARSUS_MESSAGE_CONSENT;
  SendMessageW(window_, DM_SETDEFID, static_cast<WPARAM>(first), 0);
  SetFocus(GetDlgItem(window_, first));
  if (!GetWindow(window_, GW_OWNER)) SetWindowPos(window_, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  MessageBeep(PictureOf(message.icon).sound);
  NotifyWinEvent(EVENT_SYSTEM_ALERT, window_, OBJID_WINDOW, CHILDID_SELF);
}

void MessageWindow::Fill() {
  const auto set = [&](int control, const std::string& text) {
    SetDlgItemTextW(window_, control, windows::Utf16(text).c_str());
  };
  const Message& message = content_.message;
  SetWindowTextW(window_, windows::Utf16(content_.words.title).c_str());
  set(TARSUS_MESSAGE_TEXT, message.text);
  set(TARSUS_MESSAGE_CONSENT, message.isQuestion ? content_.words.consent : content_.words.ok);
  set(TARSUS_MESSAGE_REFUSE, content_.words.refuse);
  set(TARSUS_MESSAGE_ID, content_.showId ? "ID " + std::to_string(content_.id) : std::string());
  ShowWindow(GetDlgItem(window_, TARSUS_MESSAGE_REFUSE), message.isQuestion ? SW_SHOW : SW_HIDE);
}

void MessageWindow::OnCommand(int control, int notice) {
  // Owner-drawn buttons do not take over Enter by themselves when they get the focus.
  if (notice == BN_SETFOCUS) {
    SendMessageW(window_, DM_SETDEFID, static_cast<WPARAM>(control), 0);
    InvalidateRect(GetDlgItem(window_, TARSUS_MESSAGE_CONSENT), nullptr, FALSE);
    InvalidateRect(GetDlgItem(window_, TARSUS_MESSAGE_REFUSE), nullptr, FALSE);
  }
  if (notice != BN_CLICKED) return;
  if (control == TARSUS_MESSAGE_CONSENT) Answer(content_.message.isQuestion);
  if (control == TARSUS_MESSAGE_REFUSE) Answer(false);
}

bool MessageWindow::IsDefault(HWND button) const {
  const LRESULT result = SendMessageW(window_, DM_GETDEFID, 0, 0);
  return HIWORD(result) == DC_HASDEFID && LOWORD(result) == GetDlgCtrlID(button);
}

void MessageWindow::Answer(bool consent) {
  EndDialog(window_, consent ? MessageDialog::kConsent : MessageDialog::kOkOrRefusal);
}

}  // namespace components
