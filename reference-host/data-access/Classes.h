// The classes of this server, as programs know them from ADO and DAO.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "common/Database.h"
#include "data-access/Automation.h"
#include "data-access/Cursor.h"

namespace dataaccess {

/// What a recordset asks of the object that it is given, to know one of ours.
inline constexpr IID kOwnConnection = {0x6b1c1f52, 0x4b0e, 0x4d0c, {0x9a, 0x41, 0x7d, 0x0f, 0x5c, 0x53, 0x2e, 0x18}};

/// ADODB.Connection: one connection to a database.
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

/// Shared with the recordset's fields, which show the row that it stands on. Empty while it is closed.
using SharedCursor = std::shared_ptr<std::optional<Cursor>>;

/// ADODB.Recordset: a static, read-only set of rows.
class Recordset final : public AutomationObject {
 public:
  Recordset();

 private:
  Outcome Call(DISPID id, bool writes, const Arguments& arguments, VARIANT& result) override;
  Outcome Read(DISPID id, const Arguments& arguments, VARIANT& result);
  Outcome Open(const Arguments& arguments);
  Outcome Close();
  Outcome Move(DISPID id);
  Outcome SetFilter(const Arguments& arguments);
  Outcome GetFields(const Arguments& arguments, VARIANT& result);

  SharedCursor cursor_ = std::make_shared<std::optional<Cursor>>();
  std::string filter_;
};

/// A recordset's fields: Count, and Item by name or by number from 0.
class Fields final : public AutomationObject {
 public:
  explicit Fields(SharedCursor cursor);

 private:
  Outcome Call(DISPID id, bool writes, const Arguments& arguments, VARIANT& result) override;

  SharedCursor cursor_;
};

/// One column: Name, and Value in the present row, which is NULL where the database has none.
class Field final : public AutomationObject {
 public:
  Field(SharedCursor cursor, std::size_t column);

 private:
  Outcome Call(DISPID id, bool writes, const Arguments& arguments, VARIANT& result) override;

  SharedCursor cursor_;
  std::size_t column_;
};

/// Hands out the field that the first argument names or numbers.
Outcome FindField(const SharedCursor& cursor, const Arguments& arguments, VARIANT& result);

/// DAO.DBEngine.36: compacts one database file into another, which must not exist yet.
class DatabaseEngine final : public AutomationObject {
 public:
  DatabaseEngine();

 private:
  Outcome Call(DISPID id, bool writes, const Arguments& arguments, VARIANT& result) override;
};

}  // namespace dataaccess
