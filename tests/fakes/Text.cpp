#include "fakes/Text.h"

#include <bit>
#include <cstddef>
#include <iomanip>
#include <sstream>

namespace fakes {
namespace {

std::u32string Decode(const std::string& utf8) {
  std::u32string points;
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    const int leadingOnes = std::countl_one(byte);
    if (leadingOnes == 1 && !points.empty())
      points.back() = points.back() << 6 | (byte & 0x3Fu);
    else
      points.push_back(byte & 0x7Fu >> leadingOnes);
  }
  return points;
}

bool Fits(const std::u32string& name, std::size_t n, const std::u32string& pattern, std::size_t p) {
  if (p == pattern.size()) return n == name.size();
  if (pattern[p] == U'*') return Fits(name, n, pattern, p + 1) || (n < name.size() && Fits(name, n + 1, pattern, p));
  return n < name.size() && (pattern[p] == U'?' || pattern[p] == name[n]) && Fits(name, n + 1, pattern, p + 1);
}

}  // namespace

std::u32string Fold(const std::string& utf8) {
  std::u32string points = Decode(utf8);
  for (char32_t& point : points)
    if ((point >= U'a' && point <= U'z') || (point >= U'à' && point <= U'þ' && point != U'÷')) point -= 0x20;
  return points;
}

bool SameFold(const std::string& left, const std::string& right) {
  return Fold(left) == Fold(right);
}

std::string ToCodePage(const std::string& utf8) {
  std::string bytes;
  for (const char32_t point : Decode(utf8)) bytes.push_back(point > 0xFF ? '?' : static_cast<char>(point));
  return bytes;
}

std::string FromCodePage(const std::string& bytes) {
  std::string utf8;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x80) utf8.push_back(static_cast<char>(0xC0 | byte >> 6));
    utf8.push_back(static_cast<char>(byte >= 0x80 ? 0x80 | (byte & 0x3F) : byte));
  }
  return utf8;
}

bool FitsWildcard(const std::string& name, const std::string& pattern) {
  return pattern == "*.*" || Fits(Fold(name), 0, Fold(pattern), 0);
}

std::vector<std::string> SplitCommandLine(const std::string& commandLine) {
  std::vector<std::string> words;
  std::istringstream line(commandLine);
  for (std::string word; line >> std::quoted(word, '"', '\0');) words.push_back(word);
  return words;
}

}  // namespace fakes
