// The two wildcard languages: text patterns with lists, and file name patterns.
#include "base/Wildcard.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/Unicode.h"

namespace base {
namespace {

/// One place of a pattern: any run of characters, or one character out of `ranges`
/// (with `negated`, out of all others).
struct Element {
  bool anyRun = false;
  bool negated = false;
  std::vector<std::pair<char32_t, char32_t>> ranges;
};

Element AnyRun() {
  return {true, false, {}};
}
Element AnyCharacter() {
  return {false, true, {}};
}
Element Between(char32_t first, char32_t last) {
  return {false, false, {{first, last}}};
}

bool Fits(char32_t character, const Element& element) {
  const bool listed = std::any_of(element.ranges.begin(), element.ranges.end(), [&](const auto& range) {
    return range.first <= character && character <= range.second;
  });
  return listed != element.negated;
}

/// On a mismatch only the latest run of any characters can still give way.
bool Fits(const std::u32string& text, const std::vector<Element>& pattern) {
  std::size_t place = 0;
  std::size_t element = 0;
  std::optional<std::pair<std::size_t, std::size_t>> run;  // where the run ends so far, and its element
  while (place < text.size()) {
    if (element < pattern.size() && pattern[element].anyRun) {
      run = {place, element++};
    } else if (element < pattern.size() && Fits(text[place], pattern[element])) {
      ++place;
      ++element;
    } else if (run) {
      place = ++run->first;
      element = run->second + 1;
    } else {
      return false;
    }
  }
  return std::all_of(pattern.begin() + static_cast<std::ptrdiff_t>(element), pattern.end(),
                     [](const Element& rest) { return rest.anyRun; });
}

/// The inside of a bracket list. Nothing when a range runs backwards.
std::optional<Element> ParseList(std::u32string_view list) {
  Element element;
  // A lone "!" is listed itself: there is nothing for it to exclude.
  if (list.size() > 1 && list.front() == U'!') {
    element.negated = true;
    list.remove_prefix(1);
  }
  while (!list.empty()) {
    const bool range = list.size() > 2 && list[1] == U'-';
    element.ranges.emplace_back(list[0], list[range ? 2 : 0]);
    if (element.ranges.back().first > element.ranges.back().second) return std::nullopt;
    list.remove_prefix(range ? 3 : 1);
  }
  return element;
}

/// Nothing when the pattern is none.
std::optional<std::vector<Element>> ParsePattern(std::u32string_view pattern) {
  std::vector<Element> elements;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] == U'*') {
      elements.push_back(AnyRun());
    } else if (pattern[i] == U'?') {
      elements.push_back(AnyCharacter());
    } else if (pattern[i] == U'#') {
      elements.push_back(Between(U'0', U'9'));
    } else if (pattern[i] == U'[') {
      const std::size_t end = pattern.find(U']', i);
      if (end == std::u32string_view::npos) return std::nullopt;
      const std::u32string_view list = pattern.substr(i + 1, end - i - 1);
      const std::optional<Element> element = ParseList(list);
      if (!element) return std::nullopt;
      if (!list.empty()) elements.push_back(*element);  // "[]" stands for no character at all
      i = end;
    } else {
      elements.push_back(Between(pattern[i], pattern[i]));
    }
  }
  return elements;
}

}  // namespace

bool MatchesPattern(std::string_view text, std::string_view pattern) {
  const std::optional<std::vector<Element>> elements = ParsePattern(ToCharacters(pattern));
  return elements && Fits(ToCharacters(text), *elements);
}

bool MatchesFileName(std::string_view name, std::string_view pattern) {
  // To Windows "*.*" means every name, those without a point included.
  if (pattern == "*.*") return true;
  std::vector<Element> elements;
  for (const char32_t character : Folded(pattern)) {
    if (character == U'*') {
      elements.push_back(AnyRun());
    } else {
      elements.push_back(character == U'?' ? AnyCharacter() : Between(character, character));
    }
  }
  return Fits(Folded(name), elements);
}

}  // namespace base
