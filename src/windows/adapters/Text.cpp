// Conversions between UTF-8, UTF-16 and the system's code page.
#include "windows/adapters/Text.h"

#include "windows/adapters/Win32.h"

namespace windows {
namespace {

std::wstring Decode(UINT codePage, std::string_view bytes) {
  const int size = static_cast<int>(bytes.size());
  const int needed = MultiByteToWideChar(codePage, 0, bytes.data(), size, nullptr, 0);
  std::wstring text(static_cast<std::size_t>(needed), L'\0');
  MultiByteToWideChar(codePage, 0, bytes.data(), size, text.data(), needed);
  return text;
}

std::string Encode(UINT codePage, DWORD flags, std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  const int needed = WideCharToMultiByte(codePage, flags, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(codePage, flags, text.data(), size, bytes.data(), needed, nullptr, nullptr);
  return bytes;
}

}  // namespace

std::wstring Utf16(std::string_view utf8) {
  return Decode(CP_UTF8, utf8);
}

std::string Utf8(std::wstring_view utf16) {
  return Encode(CP_UTF8, 0, utf16);
}

std::string ToCodePage(std::string_view utf8) {
  return Encode(CP_ACP, 0, Utf16(utf8));
}

std::string ToCodePageStrictly(std::string_view utf8) {
  // UTF-8 has every character, and takes no such flag.
  return Encode(CP_ACP, GetACP() == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS, Utf16(utf8));
}

std::string FromCodePage(std::string_view bytes) {
  return Utf8(Decode(CP_ACP, bytes));
}

}  // namespace windows
