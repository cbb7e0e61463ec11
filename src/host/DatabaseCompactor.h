// The compact operation of the Access database engine.
#pragma once

#include <cstdint>
#include <string>

namespace host {

class DatabaseCompactor {
 public:
  virtual ~DatabaseCompactor() = default;

  /// Compacts the database `source` into the new file `target`. `locale` is the
  /// target's locale, such as ";LANGID=0x0409;CP=1252;COUNTRY=0".
  /// Returns 0, or -1 when the engine is missing or refuses (a database in use).
  virtual std::int32_t Compact(const std::string& source, const std::string& target, const std::string& locale) = 0;
};

}  // namespace host
