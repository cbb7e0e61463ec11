// Patterns and texts against plain matchers that try everything. The input is lines: a pattern, a text, and so on.
#include "FuzzTarget.h"
#include "base/Text.h"
#include "base/Unicode.h"
#include "base/Wildcard.h"
#include "cabarc/MemberNames.h"

namespace {

using Characters = std::u32string;

// One place of a pattern: one character within the ranges (or outside), or, with `many`, any number of any characters.
struct Place {
  bool many = false, outside = false;
  std::vector<std::pair<char32_t, char32_t>> ranges{};

  bool Holds(char32_t character) const {
    return outside != std::any_of(ranges.begin(), ranges.end(), [&](const auto& range) {
             return range.first <= character && character <= range.second;
           });
  }
};

// `lists`: whether "[" and "#" mean something. A list that is not closed and a range upside down fit nothing.
std::vector<Place> Places(const Characters& pattern, bool lists) {
  std::vector<Place> places;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const char32_t wanted = pattern[i];
    if (!lists || wanted != U'[') {
      Place place{wanted == U'*', wanted == U'*' || wanted == U'?'};
      if (!place.outside) place.ranges = {lists && wanted == U'#' ? std::pair(U'0', U'9') : std::pair(wanted, wanted)};
      places.push_back(place);
      continue;
    }
    const std::size_t end = pattern.find(U']', i);
    if (end == Characters::npos) return {Place()};
    Place place{false, end > i + 2 && pattern[i + 1] == U'!'};
    for (std::size_t at = i + (place.outside ? 2 : 1); at < end; ++at) {
      const std::size_t last = at + 2 < end && pattern[at + 1] == U'-' ? at + 2 : at;
      if (pattern[at] > pattern[last]) return {Place()};
      place.ranges.emplace_back(pattern[at], pattern[last]);
      at = last;
    }
    if (end > i + 1) places.push_back(place);
    i = end;
  }
  return places;
}

bool Fits(const std::vector<Place>& places, const Characters& text) {
  std::vector<bool> fits(text.size() + 1);  // whether the places so far fit the first t characters
  fits[0] = true;
  for (const Place& place : places) {
    std::vector<bool> next(fits.size());
    for (std::size_t t = 0; t < fits.size(); ++t) {
      next[t] = place.many ? fits[t] || (t > 0 && next[t - 1]) : t > 0 && fits[t - 1] && place.Holds(text[t - 1]);
    }
    fits = next;
  }
  return fits.back();
}

Characters Folded(const std::string& text) {
  Characters characters = base::ToCharacters(text);
  std::transform(characters.begin(), characters.end(), characters.begin(), base::FoldCase);
  return characters;
}

void Compare(const std::string& pattern, const std::string& text) {
  const bool fits = Fits(Places(base::ToCharacters(pattern), true), base::ToCharacters(text));
  fuzz::Require(base::MatchesPattern(text, pattern) == fits, "patterns with lists");

  const bool named = pattern == "*.*" || Fits(Places(Folded(pattern), false), Folded(text));
  fuzz::Require(base::MatchesFileName(text, pattern) == named, "file name patterns");
  // The archiver folds the letters of ASCII alone.
  if (cabinet::IsAscii(pattern) && cabinet::IsUtf8(text)) {
    fuzz::Require(cabarc::Matches(pattern, text) == named, "the archiver's patterns");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::string> lines = base::Split(std::string(data, data + size), '\n');
  for (std::size_t i = 1; i < lines.size(); i += 2) Compare(lines[i - 1], lines[i]);
  return 0;
}
