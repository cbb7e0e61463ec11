// The demonstration databases through ODBC: text that survives, names across databases, failures.
#include "common/Database.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <map>

#include "common/Host.h"

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

TEST(Database, AnswersThePathTablesQueries) {
  const std::map<std::string, std::map<std::string, std::string>> answers = {
      {"UserDB",
       {{"SELECT DISP_NAME FROM V_MUSER ORDER BY USER_ORDER_NO", "Emily Brown"},
        {"SELECT USER_ID FROM V_MUSER WHERE DISP_NAME = N'Thomas Keller'", "keller"},
        {"SELECT COUNT(*) FROM T_MUSER WHERE USER_KIND = 6", "1"}}},
      {"StudyDB",
       {{"SELECT COUNT(*) FROM Patient.dbo.T_TPATIENT", "120"},
        {"SELECT COUNT(*) FROM Study.dbo.T_TSTUDY", "300"},
        {"SELECT COUNT(*) FROM UserData.dbo.T_MUSER", "6"},
        {"SELECT COUNT(*) FROM T_TSTUDY WHERE STUDY_DATETIME >= DATEADD(day,0,GETDATE())", "0"},
        // The images of the last month: some, not all, and at known places.
        {"SELECT COUNT(*) BETWEEN 11 AND 59 AND MIN(RIGHT(URL,LEN(URL)-7) LIKE 'C:\\Tarsus\\Data\\Image.ddo\\%' OR "
         "RIGHT(URL,LEN(URL)-7) LIKE '\\\\ARCHIVE\\%') FROM T_TSTUDY INNER JOIN T_TDATA_FILE ON T_TSTUDY.STUDY_SEQ = "
         "T_TDATA_FILE.STUDY_SEQ WHERE URL LIKE '%.ddo' AND STUDY_DATETIME >= DATEADD(day,-30,GETDATE())",
         "1"}}},
      {"AuditDB", {{"SELECT COUNT(*) FROM T_SIGN", "0"}}}};
  for (const auto& [entry, statements] : answers) {
    const auto database = Database::Open(*reference::ReadPathEntry(entry));
    ASSERT_TRUE(database) << entry;
    for (const auto& [statement, expected] : statements) {
      EXPECT_EQ(First(database->Run(reference::RewriteHostDialect(statement))), expected) << statement;
    }
  }
}

}  // namespace
