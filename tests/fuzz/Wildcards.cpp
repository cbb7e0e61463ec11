// Patterns and texts against plain matchers that try everything. The input is a pattern, a line end, and a text.
#include <algorithm>
#include <functional>
#include <vector>

#include "FuzzTarget.h"
#include "app/TextFormat.h"
#include "app/Unicode.h"
#include "cabarc/MemberNames.h"

namespace {

using Characters = std::u32string;

bool InList(Characters list, char32_t character) {
  const bool negated = list.size() > 1 && list[0] == U'!';
  bool found = false;
  for (std::size_t i = negated ? 1 : 0; i < list.size(); ++i) {
    const bool range = i + 2 < list.size() && list[i + 1] == U'-';
    found = found || (range ? list[i] <= character && character <= list[i + 2] : list[i] == character);
    if (range) i += 2;
  }
  return found != negated;
}

bool IsPattern(const Characters& pattern) {
  for (std::size_t i = pattern.find(U'['); i != Characters::npos; i = pattern.find(U'[', i)) {
    const std::size_t end = pattern.find(U']', i);
    if (end == Characters::npos) return false;
    std::size_t at = i + 1 < end - 1 && pattern[i + 1] == U'!' ? i + 2 : i + 1;
    for (; at < end; ++at) {
      if (at + 2 >= end || pattern[at + 1] != U'-') continue;
      if (pattern[at] > pattern[at + 2]) return false;
      at += 2;
    }
    i = end;
  }
  return true;
}

// Whether pattern from `p` fits text from `t`, asked once for each pair.
class Oracle {
 public:
  Oracle(const Characters& pattern, const Characters& text, bool lists)
      : pattern_(pattern), text_(text), lists_(lists), known_((pattern.size() + 1) * (text.size() + 1)) {}

  bool Fits(std::size_t p, std::size_t t) {
    signed char& known = known_[p * (text_.size() + 1) + t];
    if (known == 0) known = Try(p, t) ? 1 : -1;
    return known > 0;
  }

 private:
  bool Try(std::size_t p, std::size_t t) {
    if (p == pattern_.size()) return t == text_.size();
    const bool more = t < text_.size();
    if (pattern_[p] == U'*') return Fits(p + 1, t) || (more && Fits(p, t + 1));
    if (lists_ && pattern_[p] == U'[') {
      const std::size_t end = pattern_.find(U']', p);
      const Characters list = pattern_.substr(p + 1, end - p - 1);
      if (list.empty()) return Fits(end + 1, t);
      return more && InList(list, text_[t]) && Fits(end + 1, t + 1);
    }
    if (!more) return false;
    const bool digit = lists_ && pattern_[p] == U'#' && text_[t] >= U'0' && text_[t] <= U'9';
    const bool itself = pattern_[p] == text_[t] && !(lists_ && pattern_[p] == U'#');
    return (pattern_[p] == U'?' || digit || itself) && Fits(p + 1, t + 1);
  }

  const Characters& pattern_;
  const Characters& text_;
  const bool lists_;
  std::vector<signed char> known_;
};

Characters Folded(const std::string& text) {
  Characters characters = app::ToCharacters(text);
  std::transform(characters.begin(), characters.end(), characters.begin(), app::FoldCase);
  return characters;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto [pattern, text] = fuzz::SplitAt(fuzz::Text(data, size), '\n');
  const Characters exactPattern = app::ToCharacters(pattern);
  const Characters exactText = app::ToCharacters(text);
  const bool fits = IsPattern(exactPattern) && Oracle(exactPattern, exactText, true).Fits(0, 0);
  fuzz::Require(app::MatchesPattern(text, pattern) == fits, "patterns with lists");

  const Characters foldedPattern = Folded(pattern);
  const Characters foldedText = Folded(text);
  const bool named = pattern == "*.*" || Oracle(foldedPattern, foldedText, false).Fits(0, 0);
  fuzz::Require(app::MatchesFileName(text, pattern) == named, "file name patterns");
  // The archiver folds the letters of ASCII alone.
  if (cabinet::IsAscii(pattern) && cabinet::IsUtf8(text)) {
    fuzz::Require(cabinet::Matches(pattern, text) == named, "the archiver's patterns");
  }
  return 0;
}
