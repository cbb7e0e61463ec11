// QX32lib.dll: the system configuration database. Start-up reads one value from it.
//
// Texts are UTF-8. A missing library or export answers -1.
#pragma once

#include <cstdint>
#include <string>

namespace host {

class QX32lib {
 public:
  virtual ~QX32lib() = default;

  /// `QXSysDBConnect`: opens the database; `connection` is the path-table entry "SysMasterDB".
  /// Returns -1 on failure.
  virtual std::int32_t SysDBConnect(const std::string& connection) = 0;

  /// `QXSysDBReadszValue`: reads the text `name` of `group`, cut at its first NUL.
  /// Returns -1 on failure, and then leaves `value` alone.
  virtual std::int32_t SysDBReadszValue(const std::string& group, const std::string& name, std::string& value) = 0;

  /// `QXSysDBClose`. Returns -1 on failure.
  virtual std::int32_t SysDBClose() = 0;
};

}  // namespace host
