// Conversions between UTF-8, UTF-16 and the system's code page.
#include "common/Text.h"

#include <windows.h>

namespace reference {

namespace {

std::wstring Widen(UINT codePage, std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(codePage, 0, text.data(), size, nullptr, 0)), L'\0');
  MultiByteToWideChar(codePage, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string Narrow(UINT codePage, DWORD flags, std::wstring_view wide) {
  const int size = static_cast<int>(wide.size());
  std::string text(
      static_cast<std::size_t>(WideCharToMultiByte(codePage, flags, wide.data(), size, nullptr, 0, nullptr, nullptr)),
      '\0');
  WideCharToMultiByte(codePage, flags, wide.data(), size, text.data(), static_cast<int>(text.size()), nullptr, nullptr);
  return text;
}

}  // namespace

std::wstring Utf16(std::string_view utf8) {
  return Widen(CP_UTF8, utf8);
}

std::string Utf8(std::wstring_view utf16) {
  return Narrow(CP_UTF8, 0, utf16);
}

// No best fits: a similar-looking letter in a path or a name would be another file or another person.
std::string ToAnsi(std::string_view utf8) {
  return Narrow(CP_ACP, WC_NO_BEST_FIT_CHARS, Utf16(utf8));
}

std::string FromAnsi(std::string_view ansi) {
  return Utf8(Widen(CP_ACP, ansi));
}

}  // namespace reference
