// What of the reference host needs no Windows: connection strings, the host's SQL dialect, a recordset's filter.
#include <gtest/gtest.h>

#include "common/ConnectionText.h"
#include "common/Database.h"
#include "data-access/Cursor.h"

namespace {

using reference::ConnectionText;

TEST(ConnectionText, DropsThePaddingOfFixedFieldsAndKeepsWhatItsOwnKeysLeave) {
  const ConnectionText padded("DRIVER=SQLite3; database = C:\\a b.db" + std::string(200, ' '));
  EXPECT_EQ(padded.Value("Database"), "C:\\a b.db");
  ConnectionText text("DRIVER=SQLite3;Attach=A=C:\\a.db,B=C:\\b.db;Timeout=7;nonsense;=");
  EXPECT_EQ(text.Take("ATTACH"), "A=C:\\a.db,B=C:\\b.db");
  EXPECT_EQ(text.Take("Attach"), "");
  EXPECT_EQ(text.Value("timeout"), "7");
}

TEST(ConnectionText, ListsAttachments) {
  const auto list = reference::ParseAttachments("Patient=C:\\p.db, Study = C:\\s=1.db");
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[0].name + list[1].name, "PatientStudy");
  EXPECT_EQ(list[1].path, "C:\\s=1.db");
}

TEST(Dialect, RewritesItsFormsAndNothingElse) {
  const std::pair<const char*, const char*> cases[] = {
      {"SELECT USER_ID FROM V_MUSER WHERE DISP_NAME = N'Jürgen'",
       "SELECT USER_ID FROM V_MUSER WHERE DISP_NAME = 'Jürgen'"},
      {"SELECT N FROM T WHERE N='x' AND MIN='y'", "SELECT N FROM T WHERE N='x' AND MIN='y'"},
      {"SELECT * FROM Patient.dbo.T_TPATIENT", "SELECT * FROM Patient.T_TPATIENT"},
      {"SELECT * FROM [Patient].[dbo].[T]", "SELECT * FROM [Patient].[T]"},
      {"SELECT A.dbo, 'a.dbo.b' FROM A", "SELECT A.dbo, 'a.dbo.b' FROM A"},
      {"len( X )", "length(X)"},
      {"LEN(LEN(X))", "length(length(X))"},
      {"SELECT LEN FROM T WHERE MYLEN(X)", "SELECT LEN FROM T WHERE MYLEN(X)"},
      {"RIGHT(URL,LEN(URL)-7)", "substr(URL,max(length(URL)-(length(URL)-7),0)+1)"},
      {"RIGHT(REPLACE(A,',',')'),2)", "substr(REPLACE(A,',',')'),max(length(REPLACE(A,',',')'))-(2),0)+1)"},
      {"A RIGHT JOIN (SELECT 1) ON 1", "A RIGHT JOIN (SELECT 1) ON 1"},
      {"DATEADD(day,-7,GETDATE())", "datetime(datetime('now','localtime'),'-7 days')"},
      {"dateadd( DAY , 0 , getdate() )", "datetime(datetime('now','localtime'),'0 days')"},
      {"DATEADD(month,-1,GETDATE())", "DATEADD(month,-1,datetime('now','localtime'))"},
      {"DATEADD(day,N,GETDATE())", "DATEADD(day,N,datetime('now','localtime'))"},
      {"SELECT 'LEN(X) N''y'' GETDATE()' -- LEN(X)", "SELECT 'LEN(X) N''y'' GETDATE()' -- LEN(X)"},
      {"SELECT /* LEN(X) */ \"LEN(X)\"", "SELECT /* LEN(X) */ \"LEN(X)\""},
      {"N'Conor O'Neill'", "'Conor O'Neill'"},
      {"LEN(X", "LEN(X"},
      {"", ""}};
  for (const auto& [statement, expected] : cases) {
    EXPECT_EQ(reference::RewriteHostDialect(statement), expected);
    EXPECT_EQ(reference::RewriteHostDialect(expected), expected) << "rewritten again";
  }
}

class Cursor : public testing::Test {
 protected:
  /// The IDs that are seen on a walk from the present row to the end.
  std::string Walk() {
    std::string ids;
    for (; !cursor_.AtEnd(); cursor_.MoveNext()) ids += *cursor_.Cell(0) + " ";
    return ids;
  }

  dataaccess::Cursor cursor_{reference::Rows{
      {"ID", "String"}, {true, false}, {{"1", "one"}, {"2", std::nullopt}, {"3", "O'Neill"}, {"10", "One"}}}};
};

TEST_F(Cursor, ShowsTheRowsThatMeetTheCriterion) {
  const std::pair<const char*, const char*> cases[] = {
      {"ID = 10", "10 "},        {"id=3", "3 "},           {"ID = 3.0", "3 "},          {"ID = 4", ""},
      {"ID <> 3", "1 2 10 "},    {"ID < 3", "1 2 "},       {"ID <= 3", "1 2 3 "},       {"ID > 3", "10 "},
      {"[ID] >= 3", "3 10 "},    {"ID > -1", "1 2 3 10 "}, {"String = 'ONE'", "1 10 "}, {"String = 'O''Neill'", "3 "},
      {"String <> 'one'", "3 "}, {"", "1 2 3 10 "},        {"  ", "1 2 3 10 "}};
  for (const auto& [criterion, ids] : cases) {
    ASSERT_TRUE(cursor_.SetFilter(criterion)) << criterion;
    EXPECT_EQ(Walk(), ids) << criterion;
  }
}

TEST_F(Cursor, RefusesAnythingElseAndKeepsItsFilter) {
  ASSERT_TRUE(cursor_.SetFilter("ID > 2"));
  for (const char* criterion : {"ID", "ID =", "= 1", "NAME = 1", "ID = 'x'", "String = 1", "ID = 1 OR ID = 2",
                                "ID LIKE 1", "String = 'open", "String = 'a' b", "[ID = 1", "ID = 1x", "ID == 1"}) {
    EXPECT_FALSE(cursor_.SetFilter(criterion)) << criterion;
  }
  EXPECT_EQ(Walk(), "3 10 ");
}

TEST_F(Cursor, StandsOnTheFirstRowAgainAfterEachFilter) {
  EXPECT_EQ(Walk(), "1 2 3 10 ");
  cursor_.MoveNext();
  ASSERT_TRUE(cursor_.SetFilter("ID = 2"));
  EXPECT_EQ(cursor_.Count(), 1U);
  EXPECT_FALSE(cursor_.Cell(1).has_value());
  ASSERT_TRUE(cursor_.SetFilter("ID = 99"));
  EXPECT_TRUE(cursor_.IsEmpty());
}

}  // namespace
