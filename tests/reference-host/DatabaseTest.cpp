// The demonstration databases: text that survives, names across databases, failures.
#include "common/Database.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace {

using reference::Database;

constexpr char kUsers[] = "DRIVER=SQLite3;Database=C:\\Tarsus\\Database\\Users.db";

/// The first cell of the first row; "(none)" when there is none.
std::string First(const std::optional<reference::Rows>& rows) {
  if (!rows || rows->cells.empty()) return "(none)";
  return rows->cells[0][0].value_or("NULL");
}

TEST(Database, KeepsTextsThatAreNotPlain) {
  const auto database = Database::Open(kUsers);
  ASSERT_TRUE(database);
  EXPECT_EQ(First(database->Run("SELECT USER_ID FROM T_MUSER WHERE DISP_NAME = 'Jürgen Müller'")), "müller");
  EXPECT_EQ(First(database->Run("SELECT DISP_NAME FROM T_MUSER WHERE USER_ID = ?", {"oneill"})), "Conor O'Neill");
  EXPECT_EQ(First(database->Run("SELECT ?", {"撮影 手順"})), "撮影 手順");
  EXPECT_EQ(First(database->Run("SELECT ? || 'x'", {""})), "x");
  EXPECT_EQ(First(database->Run("SELECT NULL")), "NULL");
  EXPECT_EQ(First(database->Run("SELECT 1.5")), "1.5");
  const std::string large = First(database->Run("SELECT printf('%.5000c', 'ä')"));
  EXPECT_EQ(large.size(), 10000U);
  EXPECT_EQ(large.find_first_not_of("ä"), std::string::npos);
}

TEST(Database, TellsWhyAStatementFailed) {
  const auto database = Database::Open(kUsers);
  ASSERT_TRUE(database);
  std::string error;
  EXPECT_FALSE(database->Run("SELECT * FROM NO_SUCH_TABLE", &error));
  EXPECT_NE(error.find("NO_SUCH_TABLE"), std::string::npos) << error;
  EXPECT_TRUE(database->Run("DELETE FROM T_MUSER WHERE 0", &error));
}

TEST(Database, NeitherOpensNorCreatesAMissingFile) {
  EXPECT_FALSE(Database::Open("DRIVER=SQLite3;Database=C:\\Tarsus\\Temp\\none.db"));
  EXPECT_FALSE(Database::Open(std::string(kUsers) + ";Attach=Other=C:\\Tarsus\\Temp\\none.db"));
  EXPECT_EQ(GetFileAttributesW(L"C:\\Tarsus\\Temp\\none.db"), INVALID_FILE_ATTRIBUTES);
  EXPECT_FALSE(Database::Open(""));
}

// The images of the last month: some, not all, and at known places.
TEST(Database, HasStudiesOfLatelyAndOfOldAcrossItsFiles) {
  const auto database = Database::OpenEntry("StudyDB");
  ASSERT_TRUE(database);
  EXPECT_EQ(First(database->Run(reference::RewriteHostDialect(
                "SELECT COUNT(*) BETWEEN 11 AND 59 AND MIN(RIGHT(URL,LEN(URL)-7) LIKE 'C:\\Tarsus\\Data\\Image.ddo\\%' "
                "OR RIGHT(URL,LEN(URL)-7) LIKE '\\\\ARCHIVE\\%') FROM Study.dbo.T_TSTUDY S INNER JOIN T_TDATA_FILE D "
                "ON S.STUDY_SEQ = D.STUDY_SEQ WHERE URL LIKE '%.ddo' AND STUDY_DATETIME >= "
                "DATEADD(day,-30,GETDATE())"))),
            "1");
}

}  // namespace
