#include "operator/Keyboard.h"

#include "operator/Window.h"

namespace endtoend {
namespace {

constexpr DWORD kBetweenKeys = 30;  // milliseconds; a quick typist

void Send(WORD key, WORD character, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.wScan = character;
  input.ki.dwFlags = flags;
  SendInput(1, &input, sizeof(input));
}

}  // namespace

void PressKey(WORD key, WORD held) {
  if (held != 0) Send(held, 0, 0);
  Send(key, 0, 0);
  Send(key, 0, KEYEVENTF_KEYUP);
  if (held != 0) Send(held, 0, KEYEVENTF_KEYUP);
  Sleep(kBetweenKeys);
}

void TypeText(const std::string& text) {
  for (wchar_t character : Utf16(text)) {
    Send(0, character, KEYEVENTF_UNICODE);
    Send(0, character, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP);
    Sleep(kBetweenKeys);
  }
}

}  // namespace endtoend
