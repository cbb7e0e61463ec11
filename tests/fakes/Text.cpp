#include "fakes/Text.h"

#include <array>
#include <cstddef>

namespace fakes {
namespace {

std::u32string Decode(const std::string& utf8) {
  std::u32string points;
  for (std::size_t i = 0; i < utf8.size();) {
    const auto lead = static_cast<unsigned char>(utf8[i++]);
    const int trailing = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    char32_t point = trailing == 3 ? lead & 0x07u : trailing == 2 ? lead & 0x0Fu : trailing == 1 ? lead & 0x1Fu : lead;
    for (int k = 0; k < trailing && i < utf8.size(); ++k)
      point = point << 6 | (static_cast<unsigned char>(utf8[i++]) & 0x3Fu);
    points.push_back(point);
  }
  return points;
}

void Encode(char32_t point, std::string& utf8) {
  const auto add = [&](char32_t byte) { utf8.push_back(static_cast<char>(byte)); };
  if (point < 0x80) return add(point);
  if (point < 0x800) {
    add(0xC0 | point >> 6);
  } else {
    add(0xE0 | point >> 12);
    add(0x80 | (point >> 6 & 0x3F));
  }
  add(0x80 | (point & 0x3F));
}

char32_t UpperCase(char32_t point) {
  const bool latin = (point >= U'a' && point <= U'z') || (point >= 0xE0 && point <= 0xFE && point != 0xF7);
  const bool greekOrCyrillic =
      (point >= 0x3B1 && point <= 0x3C9 && point != 0x3C2) || (point >= 0x430 && point <= 0x44F);
  if (latin || greekOrCyrillic) return point - 0x20;
  return point >= 0x450 && point <= 0x45F ? point - 0x50 : point;
}

// The places 0x80 to 0x9F, where the code page differs from Latin-1.
constexpr std::array<char32_t, 32> kUpperControls = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                                     0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

char ToCodePagePoint(char32_t point) {
  if (point < 0x80 || (point >= 0xA0 && point <= 0xFF)) return static_cast<char>(point);
  for (std::size_t i = 0; i < kUpperControls.size(); ++i)
    if (kUpperControls[i] == point) return static_cast<char>(0x80 + i);
  return '?';
}

bool Fits(const std::u32string& name, std::size_t n, const std::u32string& pattern, std::size_t p) {
  if (p == pattern.size()) return n == name.size();
  if (pattern[p] == U'*') return Fits(name, n, pattern, p + 1) || (n < name.size() && Fits(name, n + 1, pattern, p));
  return n < name.size() && (pattern[p] == U'?' || pattern[p] == name[n]) && Fits(name, n + 1, pattern, p + 1);
}

}  // namespace

std::u32string Fold(const std::string& utf8) {
  std::u32string points = Decode(utf8);
  for (char32_t& point : points) point = UpperCase(point);
  return points;
}

bool SameFold(const std::string& left, const std::string& right) {
  return Fold(left) == Fold(right);
}

std::string ToCodePage(const std::string& utf8) {
  std::string bytes;
  for (char32_t point : Decode(utf8)) bytes.push_back(ToCodePagePoint(point));
  return bytes;
}

std::string FromCodePage(const std::string& bytes) {
  std::string utf8;
  for (char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    Encode(byte >= 0x80 && byte < 0xA0 ? kUpperControls[byte - 0x80u] : byte, utf8);
  }
  return utf8;
}

bool FitsWildcard(const std::string& name, const std::string& pattern) {
  return pattern == "*.*" || Fits(Fold(name), 0, Fold(pattern), 0);
}

std::vector<std::string> SplitCommandLine(const std::string& commandLine) {
  std::vector<std::string> words;
  bool quoted = false;
  bool inWord = false;
  for (char c : commandLine) {
    const bool ends = c == ' ' && !quoted;
    if (!ends && !inWord) words.emplace_back();
    inWord = !ends;
    if (c == '"')
      quoted = !quoted;
    else if (!ends)
      words.back().push_back(c);
  }
  return words;
}

}  // namespace fakes
