// Finds fields and reads their values.
#include "data-access/Classes.h"

#include <cmath>
#include <limits>

namespace dataaccess {

namespace {

enum : DISPID { kDefault = DISPID_VALUE, kCount = 1, kName };

constexpr Member kFieldsMembers[] = {
    {L"Item", kDefault, kRead, 1, 1},
    {L"Count", kCount, kRead, 0, 0},
};

constexpr Member kFieldMembers[] = {
    {L"Value", kDefault, kRead, 0, 0},
    {L"Name", kName, kRead, 0, 0},
};

void SetCell(VARIANT& result, const std::optional<std::string>& cell, bool numeric) {
  const auto number = numeric && cell ? ParseNumber(*cell) : std::nullopt;
  if (!cell) {
    result.vt = VT_NULL;
  } else if (!number) {
    reference::SetText(result, *cell);
  } else if (*number == std::floor(*number) && std::abs(*number) <= std::numeric_limits<std::int32_t>::max()) {
    reference::SetNumber(result, static_cast<std::int32_t>(*number));
  } else {
    result.vt = VT_R8;
    result.dblVal = *number;
  }
}

}  // namespace

Outcome FindField(const SharedCursor& cursor, const Arguments& arguments, VARIANT& result) {
  if (!*cursor) return kClosed;
  const VARIANT* const argument = arguments.At(0);
  if (!argument) return kBadArgument;
  std::optional<std::size_t> column;
  std::string name;
  std::int32_t number = 0;
  if (argument->vt == VT_BSTR || argument->vt == (VT_BYREF | VT_BSTR)) {
    if (arguments.Text(0, name)) column = (*cursor)->FindColumn(name);
  } else if (arguments.Number(0, number) && number >= 0 &&
             static_cast<std::size_t>(number) < (*cursor)->Columns().size()) {
    column = static_cast<std::size_t>(number);
  }
  if (!column) return kItemNotFound;
  SetObject(result, new Field(cursor, *column));
  return {};
}

Fields::Fields(SharedCursor cursor) : AutomationObject(kFieldsMembers), cursor_(std::move(cursor)) {}

Outcome Fields::Call(DISPID id, bool, const Arguments& arguments, VARIANT& result) {
  if (id == kDefault) return FindField(cursor_, arguments, result);
  if (!*cursor_) return kClosed;
  reference::SetNumber(result, static_cast<std::int32_t>((*cursor_)->Columns().size()));
  return {};
}

Field::Field(SharedCursor cursor, std::size_t column)
    : AutomationObject(kFieldMembers), cursor_(std::move(cursor)), column_(column) {}

Outcome Field::Call(DISPID id, bool, const Arguments&, VARIANT& result) {
  // A recordset that was closed and opened on another table may have fewer columns.
  if (!*cursor_ || column_ >= (*cursor_)->Columns().size()) return kClosed;
  const Cursor& cursor = **cursor_;
  if (id == kName) {
    reference::SetText(result, cursor.Columns()[column_]);
    return {};
  }
  if (cursor.AtEnd()) return kNoCurrentRecord;
  SetCell(result, cursor.Cell(column_), cursor.IsNumeric(column_));
  return {};
}

}  // namespace dataaccess
