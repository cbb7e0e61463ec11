// The data access classes as the program uses them, through the program's own adapters, and their names.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "common/Database.h"
#include "common/Host.h"
#include "fakes/Printing.h"
#include "windows/adapters/Databases.h"

#include <objbase.h>

namespace {

namespace fs = std::filesystem;

using enum base::Result;

class CatalogueTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(table_.Open(connection_, "MSG_ENGLISH"), Done); }

  std::string Text(const std::string& criterion) {
    EXPECT_EQ(table_.SetFilter(criterion), Done) << criterion;
    return table_.StringField().value_or(table_.AtEnd() ? "(end)" : "(null)");
  }

  windows::ComApartment apartment_;
  windows::AdoCatalogueTable table_;
  /// With blanks behind it, as start-up passes it.
  const std::string connection_ = *reference::ReadPathEntry("LangStrDB") + std::string(100, ' ');
};

TEST_F(CatalogueTest, FindsTextsByFilter) {
  EXPECT_FALSE(table_.AtEnd());
  EXPECT_EQ(Text("ID = 66000"), "Tarsus Backup Utility");
  EXPECT_EQ(Text("ID = 12345"), "(end)");
  EXPECT_EQ(Text(""), "Sign-in");
  EXPECT_EQ(table_.SetFilter("ID LIKE 1"), Failed);
  table_.Close();
  EXPECT_EQ(table_.SetFilter("ID = 10000"), Failed);
  const auto database = reference::Database::Open(connection_);
  ASSERT_TRUE(database->Run("INSERT OR REPLACE INTO MSG_GERMAN VALUES (69999, 1, 'information', NULL)"));
  ASSERT_EQ(table_.Open(connection_, "MSG_GERMAN"), Done);
  EXPECT_EQ(Text("ID = 66053"), "&Menüs");
  EXPECT_EQ(Text("ID = 69999"), "(null)");
  EXPECT_EQ(table_.Open(connection_, "NO_SUCH_TABLE"), Failed);
}

TEST_F(CatalogueTest, KnowsItsStates) {
  const windows::Dispatch recordset(windows::kRecordsetProgId);
  const std::string source = "SELECT ID, String FROM MSG_ENGLISH WHERE ID <= 10001";
  enum { kClosed = 0, kOpen = 1, kUnanswered = -1 };
  const auto state = [&] { return recordset.CallNumber(kUnanswered, L"State"); };
  EXPECT_EQ(state(), kClosed);
  EXPECT_EQ(recordset.Call(L"MoveNext"), Failed);
  EXPECT_EQ(recordset.Call(L"Open", source, connection_, 3, 3), Failed);  // a lock for writing
  EXPECT_EQ(recordset.Call(L"Open", source, connection_, 3, 1), Done);
  EXPECT_EQ(recordset.Call(L"Open", source, connection_, 3, 1), Failed);
  EXPECT_EQ(state(), kOpen);
  EXPECT_EQ(recordset.CallNumber(kUnanswered, L"RecordCount"), 2);
  EXPECT_EQ(recordset.Call(L"MoveNext"), Done);
  windows::Variant field;
  windows::DispatchPointer object;
  ASSERT_TRUE(recordset.Get(L"Fields", field, std::string("ID")).IsDone() && field.ToObject(object));
  EXPECT_EQ(windows::Dispatch(std::move(object)).CallNumber(kUnanswered, L"Value"), 10001);
  EXPECT_EQ(recordset.Call(L"MoveNext"), Done);
  EXPECT_EQ(recordset.Call(L"MoveNext"), Failed);
}

class CompactorTest : public testing::Test {
 protected:
  CompactorTest() {
    CopyFileA("C:\\Tarsus\\Config\\Equipment.mdb", kSource, FALSE);
    fs::remove(kTarget);
  }

  base::Outcome Compact(const std::string& source = kSource) {
    return compactor_.Compact(source, kTarget, ";LANGID=0x0409;CP=1252;COUNTRY=0");
  }

  static constexpr char kSource[] = "C:\\Tarsus\\Temp\\source.mdb", kTarget[] = "C:\\Tarsus\\Temp\\target.mdb";
  windows::ComApartment apartment_;
  windows::DaoDatabaseCompactor compactor_;
};

TEST_F(CompactorTest, MakesASmallerCopyWithTheSameRowsAndNeverReplacesIt) {
  const std::uintmax_t before = fs::file_size(kSource);
  ASSERT_EQ(Compact(), Done);
  EXPECT_EQ(fs::file_size(kSource), before);
  EXPECT_LT(fs::file_size(kTarget), before / 2);
  EXPECT_EQ(Compact("C:\\Tarsus\\Param\\Viewer.mdb"), Failed);
  const auto database = reference::Database::Open("DRIVER=SQLite3;Database=" + std::string(kTarget));
  ASSERT_TRUE(database);
  EXPECT_EQ(database->Run("SELECT * FROM T_SETTING")->cells.size(), 40U);
}

TEST_F(CompactorTest, RefusesASourceInUseAndWhatIsNoDatabase) {
  {
    const auto other = reference::Database::Open("DRIVER=SQLite3;Database=" + std::string(kSource));
    ASSERT_TRUE(other->Run("BEGIN EXCLUSIVE"));
    EXPECT_EQ(Compact(), Failed);
  }
  {
    const std::ifstream other(kSource);
    EXPECT_EQ(Compact(), Failed);
  }
  EXPECT_EQ(Compact("C:\\Tarsus\\Temp\\none.mdb"), Failed);
  EXPECT_EQ(Compact("C:\\Tarsus\\System\\Directory.ini"), Failed);
  EXPECT_FALSE(fs::exists(kTarget));
  EXPECT_EQ(Compact(), Done);
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
