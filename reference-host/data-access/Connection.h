// ADODB.Connection: one ODBC connection.
#pragma once

#include <memory>
#include <string>

#include "common/Database.h"
#include "data-access/Automation.h"

namespace dataaccess {

/// What a recordset asks of the object that it is given, to know one of ours.
inline constexpr IID kOwnConnection = {0x6b1c1f52, 0x4b0e, 0x4d0c, {0x9a, 0x41, 0x7d, 0x0f, 0x5c, 0x53, 0x2e, 0x18}};

class Connection final : public AutomationObject {
 public:
  Connection();

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  /// Null while the connection is closed.
  reference::Database* Open() const { return database_.get(); }

 private:
  Outcome Call(DISPID id, bool writes, const Arguments& arguments, VARIANT& result) override;
  Outcome OpenDatabase(const Arguments& arguments);

  std::string connectionString_;
  std::unique_ptr<reference::Database> database_;
};

}  // namespace dataaccess
