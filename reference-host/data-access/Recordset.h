// ADODB.Recordset: a static, read-only set of rows.
#pragma once

#include <memory>
#include <string>

#include "data-access/Automation.h"
#include "data-access/Cursor.h"

namespace dataaccess {

/// Shared with the recordset's fields, which show the row that it stands on. Empty while it is closed.
using SharedCursor = std::shared_ptr<std::optional<Cursor>>;

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

}  // namespace dataaccess
