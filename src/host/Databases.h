// Databases that are reached through the system's own engines: the message catalogue, and the compaction of the host's
// small databases.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/Outcome.h"

namespace host {

/// The message catalogue's table: one static, read-only recordset that stays open until the program ends.
class CatalogueTable {
 public:
  virtual ~CatalogueTable() = default;

  /// Opens the connection (empty user and password) and the whole table.
  virtual base::Outcome Open(const std::string& connection, const std::string& tableName) = 0;

  /// Shows only the rows that meet `criterion`, such as "ID = 66000"; an empty text shows all.
  virtual base::Outcome SetFilter(const std::string& criterion) = 0;

  /// Whether no row is left under the present filter.
  virtual bool AtEnd() = 0;

  /// The field "String" of the present row; nothing when it is null.
  virtual std::optional<std::string> StringField() = 0;

  /// Closes the recordset, then its connection.
  virtual void Close() = 0;

  /// Lets both go without closing them: the way out after a failure, where a close could raise an error of its own.
  virtual void Abandon() = 0;
};

/// The compact operation of the Access database engine.
class DatabaseCompactor {
 public:
  virtual ~DatabaseCompactor() = default;

  /// Compacts the database `source` into the new file `target`. `locale` is the target's locale, such as
  /// ";LANGID=0x0409;CP=1252;COUNTRY=0". Fails when the engine is missing or refuses (a database in use).
  virtual base::Outcome Compact(const std::string& source, const std::string& target, const std::string& locale) = 0;
};

}  // namespace host
