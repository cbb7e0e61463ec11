// The data access classes as the program uses them, through the program's own adapters, and their names.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "common/Database.h"
#include "common/Host.h"
#include "windows/adapters/AdoCatalogueTable.h"
#include "windows/adapters/DaoDatabaseCompactor.h"
#include "windows/adapters/Dispatch.h"
#include "windows/adapters/ProgIds.h"

#include <objbase.h>

namespace {

namespace fs = std::filesystem;

using reference::kDone;
using reference::kFailed;

class CatalogueTest : public testing::Test {
 protected:
  windows::ComApartment apartment_;
  /// With blanks behind it, as start-up passes it.
  const std::string connection_ = *reference::ReadPathEntry("LangStrDB") + std::string(100, ' ');
};

// Tables and texts that are missing are planted in the tests of the host check.
TEST_F(CatalogueTest, FindsTextsByFilter) {
  const auto database = reference::Database::Open(connection_);
  ASSERT_TRUE(database->Run("INSERT OR REPLACE INTO MSG_GERMAN VALUES (69999, 1, 'information', NULL)"));
  windows::AdoCatalogueTable table;
  ASSERT_EQ(table.Open(connection_, "MSG_GERMAN"), kDone);
  EXPECT_EQ(table.SetFilter("ID LIKE 1"), kFailed);
  EXPECT_EQ(table.SetFilter("ID = 66053"), kDone);
  EXPECT_EQ(table.StringField(), "&Menüs");
  EXPECT_EQ(table.SetFilter("ID = 69999"), kDone);
  EXPECT_EQ(table.StringField(), std::nullopt);
  EXPECT_FALSE(table.AtEnd());
  table.Close();
  EXPECT_EQ(table.SetFilter("ID = 10000"), kFailed);
}

TEST_F(CatalogueTest, KnowsItsStates) {
  const windows::Dispatch recordset(windows::kRecordsetProgId);
  const std::string source = "SELECT ID, String FROM MSG_ENGLISH WHERE ID <= 10001";
  enum { kClosed = 0, kOpen = 1, kUnanswered = -1 };
  const auto state = [&] { return recordset.CallNumber(kUnanswered, L"State"); };
  EXPECT_EQ(state(), kClosed);
  EXPECT_TRUE(FAILED(recordset.Call(L"MoveNext")));
  EXPECT_TRUE(FAILED(recordset.Call(L"Open", source, connection_, 3, 3)));  // a lock for writing
  EXPECT_TRUE(SUCCEEDED(recordset.Call(L"Open", source, connection_, 3, 1)));
  EXPECT_TRUE(FAILED(recordset.Call(L"Open", source, connection_, 3, 1)));
  EXPECT_EQ(state(), kOpen);
  EXPECT_EQ(recordset.CallNumber(kUnanswered, L"RecordCount"), 2);
  EXPECT_TRUE(SUCCEEDED(recordset.Call(L"MoveNext")));
  windows::Variant field;
  windows::DispatchPointer object;
  ASSERT_TRUE(SUCCEEDED(recordset.Get(L"Fields", field, std::string("ID"))) && field.ToObject(object));
  EXPECT_EQ(windows::Dispatch(std::move(object)).CallNumber(kUnanswered, L"Value"), 10001);
  EXPECT_TRUE(SUCCEEDED(recordset.Call(L"MoveNext")));
  EXPECT_TRUE(FAILED(recordset.Call(L"MoveNext")));
}

class CompactorTest : public testing::Test {
 protected:
  CompactorTest() {
    CopyFileA("C:\\Tarsus\\Config\\Equipment.mdb", kSource, FALSE);
    fs::remove(kTarget);
  }

  std::int32_t Compact(const std::string& source = kSource) {
    return compactor_.Compact(source, kTarget, ";LANGID=0x0409;CP=1252;COUNTRY=0");
  }

  static constexpr char kSource[] = "C:\\Tarsus\\Temp\\source.mdb", kTarget[] = "C:\\Tarsus\\Temp\\target.mdb";
  windows::ComApartment apartment_;
  windows::DaoDatabaseCompactor compactor_;
};

TEST_F(CompactorTest, MakesASmallerCopyWithTheSameRowsAndNeverReplacesIt) {
  const std::uintmax_t before = fs::file_size(kSource);
  ASSERT_EQ(Compact(), kDone);
  EXPECT_EQ(fs::file_size(kSource), before);
  EXPECT_LT(fs::file_size(kTarget), before / 2);
  EXPECT_EQ(Compact("C:\\Tarsus\\Param\\Viewer.mdb"), kFailed);
  const auto database = reference::Database::Open("DRIVER=SQLite3;Database=" + std::string(kTarget));
  ASSERT_TRUE(database);
  EXPECT_EQ(database->Run("SELECT * FROM T_SETTING")->cells.size(), 40U);
}

TEST_F(CompactorTest, RefusesASourceInUseAndWhatIsNoDatabase) {
  {
    const auto other = reference::Database::Open("DRIVER=SQLite3;Database=" + std::string(kSource));
    ASSERT_TRUE(other->Run("BEGIN EXCLUSIVE"));
    EXPECT_EQ(Compact(), kFailed);
  }
  {
    const std::ifstream other(kSource);
    EXPECT_EQ(Compact(), kFailed);
  }
  EXPECT_EQ(Compact("C:\\Tarsus\\Temp\\none.mdb"), kFailed);
  EXPECT_EQ(Compact("C:\\Tarsus\\System\\Directory.ini"), kFailed);
  EXPECT_FALSE(fs::exists(kTarget));
  EXPECT_EQ(Compact(), kDone);
}

HRESULT CallServer(const char* name) {
  const FARPROC address = GetProcAddress(GetModuleHandleW(L"TarsusDataAccess.dll"), name);
  return address ? reinterpret_cast<HRESULT(__stdcall*)()>(reinterpret_cast<void*>(address))() : E_POINTER;
}

std::wstring ClassBehind(const wchar_t* name) {
  CLSID id = {};
  wchar_t text[40] = L"(none)";
  if (SUCCEEDED(CLSIDFromProgID(name, &id))) StringFromGUID2(id, text, 40);
  return text;
}

// Through the code that both of the host's servers have their exports from.
TEST(Registration, GivesTheNamesBack) {
  const windows::ComApartment apartment;
  const windows::Dispatch loaded(windows::kRecordsetProgId);
  const std::wstring own = ClassBehind(L"ADODB.Recordset");
  ASSERT_EQ(CallServer("DllUnregisterServer"), S_OK);
  const std::wstring wines = ClassBehind(L"ADODB.Recordset");
  EXPECT_NE(wines, own);
  EXPECT_NE(wines, L"(none)");
  EXPECT_EQ(ClassBehind(L"DAO.DBEngine.36"), L"(none)");
  EXPECT_EQ(CallServer("DllUnregisterServer"), S_OK) << "nothing to remove is no failure";
  ASSERT_EQ(CallServer("DllRegisterServer"), S_OK);
  EXPECT_EQ(ClassBehind(L"ADODB.Recordset"), own);
}

}  // namespace
