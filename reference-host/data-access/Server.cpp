// The list of this server's classes.
#include "com/Server.h"

#include "data-access/Classes.h"

namespace {

using namespace dataaccess;

template <typename Class>
IUnknown* Create() {
  return new Class();
}

// {8A0F6E31-52C7-4B7E-B20D-3F6419D57Ann}
constexpr CLSID ClassId(unsigned char last) {
  return {0x8A0F6E31, 0x52C7, 0x4B7E, {0xB2, 0x0D, 0x3F, 0x64, 0x19, 0xD5, 0x7A, last}};
}

constexpr reference::ServedClass kClasses[] = {
    {L"ADODB.Connection", ClassId(0x01), Create<Connection>},
    {L"ADODB.Recordset", ClassId(0x02), Create<Recordset>},
    {L"DAO.DBEngine.36", ClassId(0x03), Create<DatabaseEngine>},
};

}  // namespace

const reference::Server& reference::ThisServer() {
  static constexpr Server kServer{kClasses, true};
  return kServer;
}
