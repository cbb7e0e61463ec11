#include "operator/Keyboard.h"

#include "windows/adapters/Text.h"

namespace endtoend {
namespace {

void Stroke(WORD key, DWORD flags) {
  SendKey(key, flags);
  SendKey(key, flags | KEYEVENTF_KEYUP);
  Sleep(30);  // a quick typist
}

}  // namespace

void SendKey(WORD key, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  ((flags & KEYEVENTF_UNICODE) != 0 ? input.ki.wScan : input.ki.wVk) = key;
  input.ki.dwFlags = flags;
  SendInput(1, &input, sizeof(input));
}

void PressKey(WORD key) {
  Stroke(key, 0);
}

void TypeText(const std::string& text) {
  for (wchar_t character : windows::Utf16(text)) Stroke(character, KEYEVENTF_UNICODE);
}

}  // namespace endtoend
