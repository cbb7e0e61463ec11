// A recordset's fields and the values of its present row.
#pragma once

#include "data-access/Automation.h"
#include "data-access/Recordset.h"

namespace dataaccess {

/// The collection: Count, and Item by name or by number from 0.
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

}  // namespace dataaccess
