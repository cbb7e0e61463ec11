// How the lines of the check are printed.
#include "host-check/Report.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "windows/adapters/Text.h"

namespace hostcheck {
namespace {

/// In the order of Verdict.
constexpr std::array kWords = {"MISSING", "note", "ok"};

const char* WordOf(Verdict verdict) {
  return kWords[static_cast<std::size_t>(verdict)];
}

/// A text of JSON: what is not printable ASCII by its number, so that no console's code page spoils it.
std::string JsonText(const std::string& text) {
  std::string quoted = "\"";
  for (const wchar_t unit : windows::Utf16(text)) {
    if (unit >= L' ' && unit < L'\x7F' && unit != L'"' && unit != L'\\') {
      quoted += static_cast<char>(unit);
    } else {
      char escape[16];
      std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(unit));
      quoted += escape;
    }
  }
  return quoted + "\"";
}

}  // namespace

std::size_t Report::Count(Verdict verdict) const {
  return static_cast<std::size_t>(std::ranges::count(lines_, verdict, &Line::verdict));
}

std::string Report::Text(bool all) const {
  std::string text;
  for (const Verdict verdict : {Verdict::Missing, Verdict::Note, Verdict::Ok}) {
    if (verdict == Verdict::Ok && !all) break;
    for (const Line& line : lines_) {
      if (line.verdict != verdict) continue;
      std::string word = WordOf(verdict);
      word.resize(9, ' ');
      text += word + line.subject + " - " + line.purpose + "\n";
    }
  }
  return text + std::to_string(Count(Verdict::Missing)) + " missing, " + std::to_string(Count(Verdict::Note)) +
         " notes, " + std::to_string(Count(Verdict::Ok)) + " ok\n";
}

std::string Report::Json() const {
  std::string text = "{\"missing\": " + std::to_string(Count(Verdict::Missing)) +
                     ", \"notes\": " + std::to_string(Count(Verdict::Note)) +
                     ", \"ok\": " + std::to_string(Count(Verdict::Ok)) + ", \"lines\": [";
  for (const Line& line : lines_) {
    text += std::string(&line == lines_.data() ? "" : ",") + "\n{\"verdict\": " + JsonText(WordOf(line.verdict)) +
            ", \"subject\": " + JsonText(line.subject) + ", \"purpose\": " + JsonText(line.purpose) + "}";
  }
  return text + "\n]}\n";
}

}  // namespace hostcheck
