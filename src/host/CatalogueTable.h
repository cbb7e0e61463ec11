// The message catalogue's table: one static, read-only recordset that stays
// open until the program ends.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace host {

class CatalogueTable {
 public:
  virtual ~CatalogueTable() = default;

  /// Opens the connection (empty user and password) and the whole table.
  /// Returns 0, or -1 when either fails.
  virtual std::int32_t Open(const std::string& connection, const std::string& tableName) = 0;

  /// Shows only the rows that meet `criterion`, such as "ID = 66000"; an empty
  /// text shows all. Returns -1 when the criterion cannot be set.
  virtual std::int32_t SetFilter(const std::string& criterion) = 0;

  /// Whether no row is left under the present filter.
  virtual bool AtEnd() = 0;

  /// The field "String" of the present row; nothing when it is null.
  virtual std::optional<std::string> StringField() = 0;

  /// Closes the recordset, then its connection.
  virtual void Close() = 0;

  /// Lets both go without closing them: the way out after a failure, where a
  /// close could raise an error of its own.
  virtual void Abandon() = 0;
};

}  // namespace host
