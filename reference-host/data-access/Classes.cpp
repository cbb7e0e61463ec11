// The list of this server's classes.
#include "data-access/Classes.h"

#include "data-access/Connection.h"
#include "data-access/DatabaseEngine.h"
#include "data-access/Recordset.h"

namespace dataaccess {

namespace {

template <typename Class>
AutomationObject* Create() {
  return new Class();
}

constexpr ServedClass kClasses[] = {
    {{0x8a0f6e31, 0x52c7, 0x4b7e, {0xb2, 0x0d, 0x3f, 0x64, 0x19, 0xd5, 0x7a, 0x01}},
     L"ADODB.Connection",
     Create<Connection>},
    {{0x8a0f6e31, 0x52c7, 0x4b7e, {0xb2, 0x0d, 0x3f, 0x64, 0x19, 0xd5, 0x7a, 0x02}},
     L"ADODB.Recordset",
     Create<Recordset>},
    {{0x8a0f6e31, 0x52c7, 0x4b7e, {0xb2, 0x0d, 0x3f, 0x64, 0x19, 0xd5, 0x7a, 0x03}},
     L"DAO.DBEngine.36",
     Create<DatabaseEngine>},
};

}  // namespace

std::span<const ServedClass> ServedClasses() {
  return kClasses;
}

}  // namespace dataaccess
