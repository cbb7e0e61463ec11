// The data access classes as the program uses them, through the program's own adapters.
#include <gtest/gtest.h>
#include <windows.h>

#include "common/Database.h"
#include "common/HostPaths.h"
#include "windows/adapters/AdoCatalogueTable.h"
#include "windows/adapters/DaoDatabaseCompactor.h"
#include "windows/adapters/Dispatch.h"
#include "windows/adapters/ProgIds.h"

namespace {

class CatalogueTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(table_.Open(Padded(), "MSG_ENGLISH"), 0); }

  /// The connection string as start-up passes it, in a field of 256 characters.
  static std::string Padded() {
    std::string connection = *reference::ReadPathEntry("LangStrDB");
    connection.resize(256, ' ');
    return connection;
  }

  windows::ComApartment apartment_;
  windows::AdoCatalogueTable table_;
};

TEST_F(CatalogueTest, FindsTextsByFilter) {
  EXPECT_FALSE(table_.AtEnd());
  EXPECT_EQ(table_.SetFilter("ID = 66000"), 0);
  EXPECT_FALSE(table_.AtEnd());
  EXPECT_EQ(table_.StringField(), "Tarsus Backup Utility");
  EXPECT_EQ(table_.SetFilter("ID = 12345"), 0);
  EXPECT_TRUE(table_.AtEnd());
  EXPECT_EQ(table_.StringField(), std::nullopt);
  EXPECT_EQ(table_.SetFilter(""), 0);
  EXPECT_EQ(table_.SetFilter("ID = 10000"), 0);
  EXPECT_EQ(table_.StringField(), "Sign-in");
  EXPECT_EQ(table_.SetFilter("ID LIKE 1"), -1);
  table_.Close();
  EXPECT_EQ(table_.SetFilter("ID = 10000"), -1);
}

TEST_F(CatalogueTest, ReadsUmlautsAndNothingForNull) {
  const auto database = reference::Database::Open(*reference::ReadPathEntry("LangStrDB"));
  ASSERT_TRUE(database->Run("INSERT OR REPLACE INTO MSG_GERMAN VALUES (69999, 1, 'information', NULL)"));
  ASSERT_EQ(table_.Open(Padded(), "MSG_GERMAN"), 0);
  EXPECT_EQ(table_.SetFilter("ID = 66053"), 0);
  EXPECT_EQ(table_.StringField(), "&Menüs");
  EXPECT_EQ(table_.SetFilter("ID = 69999"), 0);
  EXPECT_FALSE(table_.AtEnd());
  EXPECT_EQ(table_.StringField(), std::nullopt);
}

TEST_F(CatalogueTest, RefusesWhatIsNotThere) {
  windows::AdoCatalogueTable other;
  EXPECT_EQ(other.Open(Padded(), "NO_SUCH_TABLE"), -1);
  EXPECT_EQ(other.Open("DRIVER=SQLite3;Database=C:\\none.db", "MSG_ENGLISH"), -1);
}

TEST_F(CatalogueTest, KnowsItsStates) {
  const windows::Dispatch recordset(windows::kRecordsetProgId);
  const std::string source = "SELECT ID, String FROM MSG_ENGLISH WHERE ID <= 10001";
  EXPECT_EQ(recordset.CallNumber(-1, L"State"), 0);
  EXPECT_TRUE(FAILED(recordset.Call(L"MoveNext")));
  EXPECT_TRUE(FAILED(recordset.Call(L"Open", source, Padded(), 3, 3)));  // a lock for writing
  EXPECT_TRUE(SUCCEEDED(recordset.Call(L"Open", source, Padded(), 3, 1)));
  EXPECT_TRUE(FAILED(recordset.Call(L"Open", source, Padded(), 3, 1)));
  EXPECT_EQ(recordset.CallNumber(-1, L"State"), 1);
  EXPECT_EQ(recordset.CallNumber(-1, L"RecordCount"), 2);
  EXPECT_TRUE(SUCCEEDED(recordset.Call(L"MoveNext")));
  windows::Variant text;
  std::string word;
  windows::Variant field;
  windows::DispatchPointer object;
  ASSERT_TRUE(SUCCEEDED(recordset.Get(L"Fields", field, std::string("String"))));
  ASSERT_TRUE(field.ToObject(object));
  EXPECT_TRUE(SUCCEEDED(windows::Dispatch(std::move(object)).Get(L"Value", text)) && text.ToText(word));
  EXPECT_EQ(word, "Sign-out");
  EXPECT_TRUE(SUCCEEDED(recordset.Call(L"MoveNext")));
  EXPECT_TRUE(FAILED(recordset.Call(L"MoveNext")));
}

class CompactorTest : public testing::Test {
 protected:
  CompactorTest() {
    CopyFileW(L"C:\\Tarsus\\Config\\Equipment.mdb", L"C:\\Tarsus\\Temp\\source.mdb", FALSE);
    DeleteFileW(L"C:\\Tarsus\\Temp\\target.mdb");
  }

  static std::int64_t Size(const wchar_t* path) {
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    if (!GetFileAttributesExW(path, GetFileExInfoStandard, &data)) return -1;
    return static_cast<std::int64_t>(data.nFileSizeLow);
  }

  std::int32_t Compact(const std::string& source = kSource) {
    return compactor_.Compact(source, kTarget, ";LANGID=0x0409;CP=1252;COUNTRY=0");
  }

  static constexpr char kSource[] = "C:\\Tarsus\\Temp\\source.mdb";
  static constexpr char kTarget[] = "C:\\Tarsus\\Temp\\target.mdb";
  static constexpr wchar_t kWideSource[] = L"C:\\Tarsus\\Temp\\source.mdb";
  static constexpr wchar_t kWideTarget[] = L"C:\\Tarsus\\Temp\\target.mdb";
  windows::ComApartment apartment_;
  windows::DaoDatabaseCompactor compactor_;
};

TEST_F(CompactorTest, MakesASmallerCopyWithTheSameRows) {
  const std::int64_t before = Size(kWideSource);
  ASSERT_EQ(Compact(), 0);
  EXPECT_EQ(Size(kWideSource), before);
  EXPECT_LT(Size(kWideTarget), before / 2);
  const auto database = reference::Database::Open("DRIVER=SQLite3;Database=" + std::string(kTarget));
  ASSERT_TRUE(database);
  EXPECT_EQ(database->Run("SELECT * FROM T_SETTING")->cells.size(), 40U);
}

TEST_F(CompactorTest, NeverReplacesATarget) {
  ASSERT_EQ(Compact(), 0);
  const std::int64_t size = Size(kWideTarget);
  EXPECT_EQ(Compact("C:\\Tarsus\\Param\\Viewer.mdb"), -1);
  EXPECT_EQ(Size(kWideTarget), size);
}

TEST_F(CompactorTest, RefusesASourceInUse) {
  {
    const auto other = reference::Database::Open("DRIVER=SQLite3;Database=" + std::string(kSource));
    ASSERT_TRUE(other->Run("BEGIN EXCLUSIVE"));
    EXPECT_EQ(Compact(), -1);
  }
  const HANDLE handle = CreateFileW(kWideSource, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_EQ(Compact(), -1);
  CloseHandle(handle);
  EXPECT_EQ(Size(kWideTarget), -1);
  EXPECT_EQ(Compact(), 0);
}

TEST_F(CompactorTest, RefusesWhatIsNoDatabase) {
  EXPECT_EQ(Compact("C:\\Tarsus\\Temp\\none.mdb"), -1);
  EXPECT_EQ(Compact("C:\\Tarsus\\System\\Directory.ini"), -1);
  EXPECT_EQ(Size(kWideTarget), -1);
}

}  // namespace
