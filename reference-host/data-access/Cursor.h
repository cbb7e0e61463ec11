// The rows of a static recordset, the filter over them, and the present row.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "common/Database.h"

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

class Cursor {
 public:
  /// Stands on the first row, where there is one.
  explicit Cursor(reference::Rows rows) : rows_(std::move(rows)) {}

  /// Shows only the rows that meet `criterion`, all of them when it is blank, and goes to the first.
  /// False, and no change, when the criterion is none, names no column, or compares a number column
  /// with a text or the other way round. Texts compare without regard to the case of A to Z.
  bool SetFilter(std::string_view criterion);

  bool AtEnd() const { return position_ >= Count(); }
  bool IsEmpty() const { return Count() == 0; }
  std::size_t Count() const { return filtered_ ? matches_.size() : rows_.cells.size(); }
  void MoveFirst() { position_ = 0; }
  /// Does nothing at the end.
  void MoveNext() { position_ += AtEnd() ? 0U : 1U; }

  const std::vector<std::string>& Columns() const { return rows_.columns; }
  /// Finds a column without regard to case.
  std::optional<std::size_t> FindColumn(std::string_view name) const;
  bool IsNumeric(std::size_t column) const { return rows_.numeric[column]; }
  /// A cell of the present row. Not to be asked at the end.
  const std::optional<std::string>& Cell(std::size_t column) const;

 private:
  using Index = std::unordered_map<std::string, std::vector<std::size_t>>;

  std::string KeyOf(std::size_t column, const std::string& cell) const;
  const Index& IndexOf(std::size_t column);
  std::vector<std::size_t> FindEqual(std::size_t column, const std::string& value);
  std::vector<std::size_t> FindOther(std::size_t column, const Criterion& criterion) const;

  reference::Rows rows_;
  bool filtered_ = false;
  std::vector<std::size_t> matches_;
  std::size_t position_ = 0;
  /// Made at a column's first equality filter: the catalogue is looked up once per text shown.
  std::unordered_map<std::size_t, Index> indexes_;
};

}  // namespace dataaccess
