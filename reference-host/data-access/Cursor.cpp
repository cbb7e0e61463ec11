// Filters and walks the rows of a recordset.
#include "data-access/Cursor.h"

#include <algorithm>
#include <charconv>
#include <compare>

namespace dataaccess {

namespace {

std::string LowerCase(std::string text) {
  for (char& letter : text) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return text;
}

/// One text per number, so that "66000" and "66000.0" meet.
std::string NumberKey(const std::string& text) {
  const auto number = ParseNumber(text);
  if (!number) return text;
  char buffer[32];
  const auto end = std::to_chars(buffer, buffer + sizeof(buffer), *number).ptr;
  return std::string(buffer, end);
}

bool Holds(std::partial_ordering order, Comparison comparison) {
  switch (comparison) {
    case Comparison::Equal:
      return std::is_eq(order);
    case Comparison::NotEqual:
      return std::is_neq(order);
    case Comparison::Less:
      return std::is_lt(order);
    case Comparison::LessOrEqual:
      return std::is_lteq(order);
    case Comparison::Greater:
      return std::is_gt(order);
    case Comparison::GreaterOrEqual:
      return std::is_gteq(order);
  }
  return false;
}

}  // namespace

bool Cursor::SetFilter(std::string_view text) {
  if (text.find_first_not_of(" \t") == std::string_view::npos) {
    filtered_ = false;
    position_ = 0;
    return true;
  }
  const auto criterion = ParseCriterion(text);
  const auto column = criterion ? FindColumn(criterion->column) : std::nullopt;
  if (!column || criterion->isText == IsNumeric(*column)) return false;
  matches_ = criterion->comparison == Comparison::Equal ? FindEqual(*column, criterion->value)
                                                        : FindOther(*column, *criterion);
  filtered_ = true;
  position_ = 0;
  return true;
}

std::optional<std::size_t> Cursor::FindColumn(std::string_view name) const {
  const std::string wanted = LowerCase(std::string(name));
  const auto found = std::ranges::find(rows_.columns, wanted, LowerCase);
  if (found == rows_.columns.end()) return std::nullopt;
  return static_cast<std::size_t>(found - rows_.columns.begin());
}

const std::optional<std::string>& Cursor::Cell(std::size_t column) const {
  return rows_.cells[filtered_ ? matches_[position_] : position_][column];
}

std::string Cursor::KeyOf(std::size_t column, const std::string& cell) const {
  return IsNumeric(column) ? NumberKey(cell) : LowerCase(cell);
}

const Cursor::Index& Cursor::IndexOf(std::size_t column) {
  const auto [entry, isNew] = indexes_.try_emplace(column);
  if (isNew) {
    for (std::size_t row = 0; row < rows_.cells.size(); ++row) {
      if (const auto& cell = rows_.cells[row][column]) entry->second[KeyOf(column, *cell)].push_back(row);
    }
  }
  return entry->second;
}

std::vector<std::size_t> Cursor::FindEqual(std::size_t column, const std::string& value) {
  const Index& index = IndexOf(column);
  const auto found = index.find(KeyOf(column, value));
  return found == index.end() ? std::vector<std::size_t>() : found->second;
}

std::vector<std::size_t> Cursor::FindOther(std::size_t column, const Criterion& criterion) const {
  const auto compare = [&](const std::string& cell) -> std::partial_ordering {
    if (!IsNumeric(column)) return LowerCase(cell) <=> LowerCase(criterion.value);
    const auto number = ParseNumber(cell);
    return number ? *number <=> *ParseNumber(criterion.value) : std::partial_ordering::unordered;
  };
  std::vector<std::size_t> found;
  for (std::size_t row = 0; row < rows_.cells.size(); ++row) {
    const auto& cell = rows_.cells[row][column];
    if (cell && Holds(compare(*cell), criterion.comparison)) found.push_back(row);
  }
  return found;
}

}  // namespace dataaccess
