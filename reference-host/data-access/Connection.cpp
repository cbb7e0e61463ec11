// Opens and closes the connection of ADODB.Connection.
#include "data-access/Classes.h"

namespace dataaccess {

namespace {

enum : DISPID { kOpen = 1, kClose, kState, kConnectionString };

constexpr Member kMembers[] = {
    {L"Open", kOpen, DISPATCH_METHOD, 0, 4},
    {L"Close", kClose, DISPATCH_METHOD, 0, 0},
    {L"State", kState, kRead, 0, 0},
    {L"ConnectionString", kConnectionString, kRead, 0, 0},
    {L"ConnectionString", kConnectionString, DISPATCH_PROPERTYPUT, 1, 1},
};

}  // namespace

Connection::Connection() : AutomationObject(kMembers) {}

HRESULT Connection::QueryInterface(REFIID id, void** object) {
  if (!object || id != kOwnConnection) return AutomationObject::QueryInterface(id, object);
  *object = this;
  AddRef();
  return S_OK;
}

Outcome Connection::Call(DISPID id, bool writes, const Arguments& arguments, VARIANT& result) {
  switch (id) {
    case kOpen:
      return OpenDatabase(arguments);
    case kClose:
      if (!database_) return kClosed;
      database_.reset();
      return {};
    case kState:
      reference::SetNumber(result, database_ ? 1 : 0);
      return {};
    default:
      break;
  }
  if (!writes) {
    reference::SetText(result, connectionString_);
    return {};
  }
  if (database_) return kAlreadyOpen;
  return arguments.Text(0, connectionString_) ? Outcome{} : kBadArgument;
}

// User and password are taken and not used: the demonstration databases are files without accounts.
Outcome Connection::OpenDatabase(const Arguments& arguments) {
  if (database_) return kAlreadyOpen;
  if (!arguments.Text(0, connectionString_)) return kBadArgument;
  database_ = reference::Database::Open(connectionString_);
  return database_ ? Outcome{} : kCannotConnect;
}

}  // namespace dataaccess
