// A recordset's filter: one comparison of a column with a value.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace dataaccess {

enum class Comparison { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual };

struct Criterion {
  std::string column;
  Comparison comparison = Comparison::Equal;
  std::string value;
  bool isText = false;  ///< the value stood in quotes
};

/// Understands "ID = 66000", "[Group No] >= 1.5" and "NAME <> 'O''Neill'". Nothing for anything else.
std::optional<Criterion> ParseCriterion(std::string_view text);

/// The value of a plain decimal number; nothing when `text` is anything else.
std::optional<double> ParseNumber(std::string_view text);

}  // namespace dataaccess
