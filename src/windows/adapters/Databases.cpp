// Calls of ADO and of the Access database engine.
#include "windows/adapters/Databases.h"

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
  if (parent.Get(property, result, arguments...).IsDone()) result.ToObject(object);
  return Dispatch(std::move(object));
}

}  // namespace

base::Outcome AdoCatalogueTable::Open(const std::string& connection, const std::string& tableName) {
  Abandon();
  connection_ = Dispatch(kConnectionProgId);
  recordset_ = Dispatch(kRecordsetProgId);
  const std::string none;
  base::Outcome opened = connection_.Call(L"Open", connection, none, none);
  if (opened.IsDone()) {
    opened = recordset_.Call(L"Open", tableName, connection_, kOpenStatic, kLockReadOnly, kCommandTable);
  }
  if (!opened.IsDone()) Abandon();
  return opened;
}

base::Outcome AdoCatalogueTable::SetFilter(const std::string& criterion) {
  return recordset_.Put(L"Filter", criterion);
}

bool AdoCatalogueTable::AtEnd() {
  constexpr std::int32_t kNotKnown = 1;  // where nothing can be read, nothing is left
  return recordset_.CallNumber(kNotKnown, L"EOF") != 0;
}

std::optional<std::string> AdoCatalogueTable::StringField() {
  const Dispatch field = Child(Child(recordset_, L"Fields"), L"Item", std::string("String"));
  Variant value;
  std::string text;
  if (!field.Get(L"Value", value).IsDone() || value.IsNull() || !value.ToText(text)) return std::nullopt;
  return text;
}

void AdoCatalogueTable::Close() {
  recordset_.Tell(L"Close");
  connection_.Tell(L"Close");
  Abandon();
}

void AdoCatalogueTable::Abandon() {
  recordset_ = Dispatch();
  connection_ = Dispatch();
}

base::Outcome DaoDatabaseCompactor::Compact(const std::string& source, const std::string& target,
                                            const std::string& locale) {
  base::Outcome compacted;
  for (const wchar_t* progId : kDatabaseEngineProgIds) {
    const Dispatch engine(progId);
    compacted = engine.Call(L"CompactDatabase", source, target, locale);
    if (engine) break;
  }
  if (!compacted.IsDone()) compacted.cause = source + ": " + compacted.cause;
  return compacted;
}

}  // namespace windows
