// Reads a filter's text.
#include <algorithm>
#include <charconv>
#include <utility>

#include "data-access/Cursor.h"

namespace dataaccess {

namespace {

/// What is left to read of a criterion.
class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  void SkipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size())); }

  bool Take(std::string_view word) {
    if (!rest_.starts_with(word)) return false;
    rest_.remove_prefix(word.size());
    return true;
  }

  /// Takes everything before the first of `letters`, or all that is left.
  std::string TakeUntil(std::string_view letters) {
    std::string taken(rest_.substr(0, rest_.find_first_of(letters)));
    rest_.remove_prefix(taken.size());
    return taken;
  }

  bool AtEnd() const { return rest_.empty(); }

 private:
  std::string_view rest_;
};

std::optional<std::string> TakeColumn(Reader& reader) {
  if (!reader.Take("[")) {
    std::string name = reader.TakeUntil(" \t=<>'[]()");
    if (name.empty()) return std::nullopt;
    return name;
  }
  std::string name = reader.TakeUntil("]");
  if (name.empty() || !reader.Take("]")) return std::nullopt;
  return name;
}

std::optional<Comparison> TakeComparison(Reader& reader) {
  // The longer signs first: "<" also begins "<=".
  static constexpr std::pair<std::string_view, Comparison> kSigns[] = {
      {"<>", Comparison::NotEqual}, {"<=", Comparison::LessOrEqual}, {">=", Comparison::GreaterOrEqual},
      {"=", Comparison::Equal},     {"<", Comparison::Less},         {">", Comparison::Greater}};
  for (const auto& [sign, comparison] : kSigns) {
    if (reader.Take(sign)) return comparison;
  }
  return std::nullopt;
}

/// A text in quotes, in which a doubled quote stands for one.
std::optional<std::string> TakeQuoted(Reader& reader) {
  if (!reader.Take("'")) return std::nullopt;
  std::string value = reader.TakeUntil("'");
  while (reader.Take("''")) value += '\'' + reader.TakeUntil("'");
  if (!reader.Take("'")) return std::nullopt;
  return value;
}

}  // namespace

std::optional<Criterion> ParseCriterion(std::string_view text) {
  Reader reader(text);
  reader.SkipBlanks();
  const auto column = TakeColumn(reader);
  reader.SkipBlanks();
  const auto comparison = TakeComparison(reader);
  if (!column || !comparison) return std::nullopt;
  reader.SkipBlanks();
  Criterion criterion{*column, *comparison, {}, false};
  if (auto quoted = TakeQuoted(reader)) {
    criterion.value = std::move(*quoted);
    criterion.isText = true;
  } else {
    criterion.value = reader.TakeUntil(" \t");
    if (!ParseNumber(criterion.value)) return std::nullopt;
  }
  reader.SkipBlanks();
  if (!reader.AtEnd()) return std::nullopt;
  return criterion;
}

std::optional<double> ParseNumber(std::string_view text) {
  double number = 0;
  const char* const end = text.data() + text.size();
  const auto [at, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || at != end) return std::nullopt;
  return number;
}

}  // namespace dataaccess
