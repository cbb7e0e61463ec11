// The database driver that stands behind data access on Windows, called as Windows' driver manager calls it: Wine's own
// takes drivers of the system below only.
#include <gtest/gtest.h>
#include <windows.h>
// Behind windows.h, which they need.
#include <sql.h>
#include <sqlext.h>

#include <stdexcept>
#include <string>

#include "common/Host.h"
#include "windows/adapters/Text.h"

namespace {

class DriverTest : public testing::Test {
 protected:
  template <typename Call>
  Call* Find(const char* name) const {
    Call* const found = reinterpret_cast<Call*>(reinterpret_cast<void*>(GetProcAddress(driver_, name)));
    if (!found) throw std::runtime_error(name);
    return found;
  }

  const HMODULE driver_ = LoadLibraryW(L"sqlite3odbc.dll");
};

// As data access asks for the catalogue: a table, a static cursor, texts as UTF-16.
TEST_F(DriverTest, ReadsTheCatalogueByThePathTablesConnection) {
  ASSERT_TRUE(driver_);
  const auto allocate = Find<decltype(SQLAllocHandle)>("SQLAllocHandle");
  const auto release = Find<decltype(SQLFreeHandle)>("SQLFreeHandle");
  SQLHENV environment = nullptr;
  SQLHDBC connection = nullptr;
  SQLHSTMT statement = nullptr;
  ASSERT_EQ(allocate(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment), SQL_SUCCESS);
  Find<decltype(SQLSetEnvAttr)>("SQLSetEnvAttr")(environment, SQL_ATTR_ODBC_VERSION,
                                                 reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
  ASSERT_EQ(allocate(SQL_HANDLE_DBC, environment, &connection), SQL_SUCCESS);
  std::wstring text = windows::Utf16(*reference::ReadPathEntry("LangStrDB"));
  wchar_t completed[1024] = {};
  SQLSMALLINT length = 0;
  const auto connect = Find<decltype(SQLDriverConnectW)>("SQLDriverConnectW");
  ASSERT_TRUE(
      SQL_SUCCEEDED(connect(connection, nullptr, text.data(), SQL_NTS, completed, 1024, &length, SQL_DRIVER_NOPROMPT)));

  ASSERT_EQ(allocate(SQL_HANDLE_STMT, connection, &statement), SQL_SUCCESS);
  EXPECT_TRUE(SQL_SUCCEEDED(Find<decltype(SQLSetStmtAttrW)>("SQLSetStmtAttrW")(
      statement, SQL_ATTR_CURSOR_TYPE, reinterpret_cast<SQLPOINTER>(SQL_CURSOR_STATIC), 0)));
  std::wstring query = L"SELECT String FROM MSG_GERMAN WHERE ID = 66053";
  ASSERT_TRUE(SQL_SUCCEEDED(Find<decltype(SQLExecDirectW)>("SQLExecDirectW")(statement, query.data(), SQL_NTS)));
  ASSERT_TRUE(SQL_SUCCEEDED(Find<decltype(SQLFetch)>("SQLFetch")(statement)));
  wchar_t value[64] = {};
  SQLLEN size = 0;
  EXPECT_EQ(Find<decltype(SQLGetData)>("SQLGetData")(statement, 1, SQL_C_WCHAR, value, sizeof value, &size),
            SQL_SUCCESS);
  EXPECT_EQ(windows::Utf8(value), "&Menüs");
  release(SQL_HANDLE_STMT, statement);
  Find<decltype(SQLDisconnect)>("SQLDisconnect")(connection);
  release(SQL_HANDLE_DBC, connection);
  release(SQL_HANDLE_ENV, environment);
}

}  // namespace
