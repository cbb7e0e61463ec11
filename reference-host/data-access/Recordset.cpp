// Opens, filters and walks ADODB.Recordset.
#include "data-access/Classes.h"

namespace dataaccess {

namespace {

enum : DISPID { kOpen = 1, kClose, kMoveFirst, kMoveNext, kFilter, kEof, kBof, kState, kRecordCount, kFields };

constexpr Member kMembers[] = {
    {L"Open", kOpen, DISPATCH_METHOD, 2, 5},
    {L"Close", kClose, DISPATCH_METHOD, 0, 0},
    {L"MoveFirst", kMoveFirst, DISPATCH_METHOD, 0, 0},
    {L"MoveNext", kMoveNext, DISPATCH_METHOD, 0, 0},
    {L"Filter", kFilter, kRead, 0, 0},
    {L"Filter", kFilter, DISPATCH_PROPERTYPUT, 1, 1},
    {L"EOF", kEof, kRead, 0, 0},
    {L"BOF", kBof, kRead, 0, 0},
    {L"State", kState, kRead, 0, 0},
    {L"RecordCount", kRecordCount, kRead, 0, 0},
    {L"Fields", kFields, kRead, 0, 1},
};

// ADO's numbers.
constexpr std::int32_t kUnspecified = -1;
constexpr std::int32_t kLockReadOnly = 1;
constexpr std::int32_t kCommandText = 1;
constexpr std::int32_t kCommandTable = 2;
constexpr std::int32_t kCommandUnknown = 8;

/// The statement that reads `source`; a source of unknown kind is a table unless it has blanks.
std::string StatementOf(const std::string& source, std::int32_t kind) {
  const bool isTable =
      kind == kCommandTable || (kind != kCommandText && source.find_first_of(" \t\r\n") == std::string::npos);
  return isTable ? "SELECT * FROM \"" + source + '"' : reference::RewriteHostDialect(source);
}

/// A connection for the time of one statement: one of ours, or one opened from a connection string.
class BorrowedConnection {
 public:
  explicit BorrowedConnection(const Arguments& arguments) {
    const VARIANT& argument = *arguments.At(1);
    if (argument.vt == VT_DISPATCH || argument.vt == VT_UNKNOWN) {
      void* own = nullptr;
      if (argument.punkVal) argument.punkVal->QueryInterface(kOwnConnection, &own);
      connection_ = static_cast<Connection*>(own);
      return;
    }
    std::string text;
    if (arguments.Text(1, text)) opened_ = reference::Database::Open(text);
  }
  ~BorrowedConnection() {
    if (connection_) connection_->Release();
  }
  BorrowedConnection(const BorrowedConnection&) = delete;
  BorrowedConnection& operator=(const BorrowedConnection&) = delete;

  reference::Database* Get() const { return connection_ ? connection_->Open() : opened_.get(); }

 private:
  Connection* connection_ = nullptr;
  std::unique_ptr<reference::Database> opened_;
};

}  // namespace

Recordset::Recordset() : AutomationObject(kMembers) {}

Outcome Recordset::Call(DISPID id, bool writes, const Arguments& arguments, VARIANT& result) {
  if (id == kOpen) return Open(arguments);
  if (id == kState) {
    reference::SetNumber(result, *cursor_ ? 1 : 0);
    return {};
  }
  if (!*cursor_) return kClosed;
  if (id == kClose) return Close();
  if (id == kMoveFirst || id == kMoveNext) return Move(id);
  return writes ? SetFilter(arguments) : Read(id, arguments, result);
}

Outcome Recordset::Read(DISPID id, const Arguments& arguments, VARIANT& result) {
  const Cursor& cursor = **cursor_;
  if (id == kFields) return GetFields(arguments, result);
  if (id == kEof) SetFlag(result, cursor.AtEnd());
  // Nothing moves before the first row, so only an empty set is at its beginning.
  if (id == kBof) SetFlag(result, cursor.IsEmpty());
  if (id == kRecordCount) reference::SetNumber(result, static_cast<std::int32_t>(cursor.Count()));
  if (id == kFilter) reference::SetText(result, filter_);
  return {};
}

Outcome Recordset::Open(const Arguments& arguments) {
  if (*cursor_) return kAlreadyOpen;
  std::string source;
  std::int32_t cursorType = kUnspecified, lockType = kUnspecified, kind = kUnspecified;
  if (!arguments.Has(0) || !arguments.Has(1) || !arguments.Text(0, source) || !arguments.Number(2, cursorType) ||
      !arguments.Number(3, lockType) || !arguments.Number(4, kind)) {
    return kBadArgument;
  }
  if (lockType != kUnspecified && lockType != kLockReadOnly) return kNotSupported;
  if (kind != kUnspecified && kind != kCommandText && kind != kCommandTable && kind != kCommandUnknown) {
    return kNotSupported;
  }
  const BorrowedConnection connection(arguments);
  if (!connection.Get()) return kCannotConnect;
  auto rows = connection.Get()->Run(StatementOf(source, kind));
  if (!rows) return kStatementFailed;
  cursor_->emplace(std::move(*rows));
  filter_.clear();
  return {};
}

Outcome Recordset::Close() {
  cursor_->reset();
  return {};
}

Outcome Recordset::Move(DISPID id) {
  Cursor& cursor = **cursor_;
  if (id == kMoveNext ? cursor.AtEnd() : cursor.IsEmpty()) return kNoCurrentRecord;
  id == kMoveNext ? cursor.MoveNext() : cursor.MoveFirst();
  return {};
}

Outcome Recordset::SetFilter(const Arguments& arguments) {
  std::string filter;
  if (!arguments.Has(0) || !arguments.Text(0, filter)) return kBadArgument;
  // The number 0 means no filter, like the empty text.
  if (filter == "0") filter.clear();
  if (!(*cursor_)->SetFilter(filter)) return kBadArgument;
  filter_ = filter;
  return {};
}

Outcome Recordset::GetFields(const Arguments& arguments, VARIANT& result) {
  if (arguments.Has(0)) return FindField(cursor_, arguments, result);
  SetObject(result, new Fields(cursor_));
  return {};
}

}  // namespace dataaccess
