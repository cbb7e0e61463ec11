// The message catalogue's table through ADO.
#include "windows/adapters/AdoCatalogueTable.h"

#include "windows/adapters/ProgIds.h"
#include "windows/adapters/Results.h"

namespace windows {
namespace {

// ADO's numbers.
constexpr std::int32_t kOpenStatic = 3;
constexpr std::int32_t kLockReadOnly = 1;
constexpr std::int32_t kCommandTable = 2;

/// The object that a property of `parent` names; empty when there is none.
template <typename... Arguments>
Dispatch Child(const Dispatch& parent, const wchar_t* property, const Arguments&... arguments) {
  Variant result;
  DispatchPointer object;
  if (SUCCEEDED(parent.Get(property, result, arguments...))) result.ToObject(object);
  return Dispatch(std::move(object));
}

}  // namespace

std::int32_t AdoCatalogueTable::Open(const std::string& connection, const std::string& tableName) {
  Abandon();
  connection_ = Dispatch(kConnectionProgId);
  recordset_ = Dispatch(kRecordsetProgId);
  const std::string none;
  HRESULT result = connection_.Call(L"Open", connection, none, none);
  if (SUCCEEDED(result)) {
    result = recordset_.Call(L"Open", tableName, connection_, kOpenStatic, kLockReadOnly, kCommandTable);
  }
  if (FAILED(result)) Abandon();
  return ResultOfCom(result);
}

std::int32_t AdoCatalogueTable::SetFilter(const std::string& criterion) {
  return ResultOfCom(recordset_.Put(L"Filter", criterion));
}

bool AdoCatalogueTable::AtEnd() {
  return recordset_.CallNumber(1, L"EOF") != 0;
}

std::optional<std::string> AdoCatalogueTable::StringField() {
  const Dispatch field = Child(Child(recordset_, L"Fields"), L"Item", std::string("String"));
  Variant value;
  std::string text;
  if (FAILED(field.Get(L"Value", value)) || value.IsNull() || !value.ToText(text)) return std::nullopt;
  return text;
}

void AdoCatalogueTable::Close() {
  recordset_.Call(L"Close");
  connection_.Call(L"Close");
  Abandon();
}

void AdoCatalogueTable::Abandon() {
  recordset_ = Dispatch();
  connection_ = Dispatch();
}

}  // namespace windows
