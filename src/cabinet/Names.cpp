// How the names of a cabinet's members are written.
#include "cabinet/Names.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "base/Unicode.h"

namespace cabinet {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& text, char32_t code) {
  const auto continuation = [&](unsigned shift) { text += static_cast<char>(0x80 | (code >> shift & 0x3F)); };
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += static_cast<char>(0xC0 | code >> 6);
    continuation(0);
  } else if (code < 0x10000) {
    text += static_cast<char>(0xE0 | code >> 12);
    continuation(6);
    continuation(0);
  } else {
    text += static_cast<char>(0xF0 | code >> 18);
    continuation(12);
    continuation(6);
    continuation(0);
  }
}

/// What base::TakeCharacter makes of a byte that belongs to no character: nothing that well-formed text yields.
bool IsMalformed(char32_t character) {
  return character >= 0xD800 && character < 0xE000;
}

bool IsBetween(char32_t character, char32_t first, char32_t last) {
  return character >= first && character <= last;
}

/// Control characters beyond ASCII, and marks that turn the direction of what follows or break the line.
bool MisleadsTerminal(char32_t character) {
  return IsBetween(character, 0x7F, 0x9F) || IsBetween(character, 0x200E, 0x200F) ||
         IsBetween(character, 0x2028, 0x202E) || IsBetween(character, 0x2066, 0x2069);
}

}  // namespace

std::string FromCodePage1252(std::string_view bytes) {
  constexpr std::array<std::uint16_t, 32> kFrom80 = {0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD,
                                                     0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};
  std::string text;
  for (const char character : bytes) {
    const auto byte = static_cast<unsigned char>(character);
    AppendUtf8(text, byte >= 0x80 && byte < 0xA0 ? kFrom80[byte - 0x80u] : byte);
  }
  return text;
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    if (IsMalformed(base::TakeCharacter(text))) return false;
  }
  return true;
}

std::string Printable(std::string_view text) {
  std::string printable;
  while (!text.empty()) {
    const char32_t character = base::TakeCharacter(text);
    if (character < 0x20) {
      AppendUtf8(printable, 0x2400 + character);
    } else {
      AppendUtf8(printable, IsMalformed(character) || MisleadsTerminal(character) ? kReplacement : character);
    }
  }
  return printable;
}

}  // namespace cabinet
