// The host dialect's statements in the demonstration database's words.
#include <gtest/gtest.h>

#include "common/Database.h"

namespace {

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

}  // namespace
