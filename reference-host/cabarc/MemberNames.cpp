// The names of a cabinet's members: safety, wildcards.
#include "cabarc/MemberNames.h"

#include <algorithm>
#include <cstddef>

namespace cabarc {

namespace {

char LowerAscii(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool EqualsAscii(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return LowerAscii(a) == LowerAscii(b); });
}

bool IsContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// Windows finds a device whatever follows its name: "NUL.txt" and "nul .x" are the device too.
bool IsDevice(std::string_view part) {
  std::string_view stem = part.substr(0, part.find('.'));
  while (stem.ends_with(' ')) stem.remove_suffix(1);
  constexpr std::string_view kDevices[] = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$", "CLOCK$"};
  if (std::any_of(std::begin(kDevices), std::end(kDevices), [&](auto name) { return EqualsAscii(name, stem); })) {
    return true;
  }
  if (!EqualsAscii(stem.substr(0, 3), "COM") && !EqualsAscii(stem.substr(0, 3), "LPT")) return false;
  const std::string_view number = stem.substr(3);
  return (number.size() == 1 && number[0] >= '0' && number[0] <= '9') || number == "\u00B9" || number == "\u00B2" ||
         number == "\u00B3";  // superscripts count as digits
}

std::optional<std::string_view> WhyUnsafePart(std::string_view part) {
  if (part.empty()) return "an empty part in its path";
  if (part == "..") return "it leads out of the folder";
  if (part.ends_with('.') || part.ends_with(' ')) return "a blank or a dot at the end of a name";
  if (IsDevice(part)) return "it is the name of a device";
  return std::nullopt;
}

}  // namespace

std::optional<std::string_view> WhyUnsafe(std::string_view name) {
  if (name.empty()) return "it is empty";
  if (name.front() == '\\' || name.front() == '/') return "it is an absolute path";
  for (const char character : name) {
    if (character == ':') return "a drive or a stream";
    if (static_cast<unsigned char>(character) < 0x20 ||
        std::string_view("<>\"|?*\x7F").find(character) != std::string_view::npos) {
      return "a character that no file name may have";
    }
  }
  for (;;) {
    const std::size_t end = name.find_first_of("\\/");
    if (const auto reason = WhyUnsafePart(name.substr(0, end))) return reason;
    if (end == std::string_view::npos) return std::nullopt;
    name.remove_prefix(end + 1);
  }
}

std::string_view BaseName(std::string_view name) {
  return name.substr(name.rfind('\\') + 1);
}

bool Matches(std::string_view pattern, std::string_view text) {
  if (pattern == "*.*") return true;
  // On a mismatch the last "*" takes one character more: never more than pattern times text steps.
  std::size_t p = 0;
  std::size_t t = 0;
  std::size_t star = std::string_view::npos;
  std::size_t starText = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      starText = t;
    } else if (p < pattern.size() && pattern[p] == '?') {
      ++p;
      do ++t;
      while (t < text.size() && IsContinuation(text[t]));
    } else if (p < pattern.size() && LowerAscii(pattern[p]) == LowerAscii(text[t])) {
      ++p;
      ++t;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      t = ++starText;
    } else {
      return false;
    }
  }
  return pattern.substr(p).find_first_not_of('*') == std::string_view::npos;
}

bool HasWildcard(std::string_view text) {
  return text.find_first_of("*?") != std::string_view::npos;
}

}  // namespace cabarc
