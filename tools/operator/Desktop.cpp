// Strokes keys, moves the mouse, and has the machine below take pictures.
#include "operator/Desktop.h"

#include <stdexcept>

#include "operator/Workstation.h"

namespace endtoend {
namespace {

void Stroke(WORD key, DWORD flags) {
  SendKey(key, flags);
  SendKey(key, flags | KEYEVENTF_KEYUP);
  Sleep(30);  // a quick typist
}

/// The part of the screen that the window takes, as ImageMagick names it.
std::string CropTo(const Window& window) {
  RECT area{};
  if (!GetWindowRect(window.Handle(), &area)) return {};
  return " -crop " + std::to_string(area.right - area.left) + "x" + std::to_string(area.bottom - area.top) + "+" +
         std::to_string(area.left) + "+" + std::to_string(area.top) + " +repage";
}

BOOL CALLBACK StopAtUnpainted(HWND window, LPARAM) {
  return !IsWindowVisible(window) || !GetUpdateRect(window, nullptr, FALSE);
}

/// Whether nothing of the window waits to be painted.
bool IsPainted(HWND window) {
  return !GetUpdateRect(window, nullptr, FALSE) && EnumChildWindows(window, StopAtUnpainted, 0);
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

void RunNative(const std::string& command) {
  // Wine starts a program of the machine like any other, but cannot wait for it.
  std::wstring line = Utf16("Z:\\bin\\sh -c \"" + Replaced(command, "\"", "\\\"") + "\"");
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
    throw std::runtime_error("cannot run " + command);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

void TakeScreenshot(const std::string& picture, const Window& window, Part part) {
  WaitUntil([&] { return GetForegroundWindow() == window.Handle() && IsPainted(window.Handle()); });
  Sleep(300);  // what is painted is on the screen a moment later
  // The picture gets its name when it is whole.
  RunNative("import -window root" + (part == Part::Window ? CropTo(window) : "") + " '" + picture +
            ".new.png' && mv '" + picture + ".new.png' '" + picture + "'");
  if (!WaitUntil([&] { return fs::exists("Z:" + picture); })) throw std::runtime_error("no picture " + picture);
}

void MoveMouseAway() {
  // Wine moves the mouse only for a program with a window, and takes it to be at 0, 0 before the first move.
  HWND window =
      CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
  SetCursorPos(1, 1);
  DestroyWindow(window);
}

}  // namespace endtoend
