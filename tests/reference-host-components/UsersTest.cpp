// Queries on the host's databases, passwords and rights.

#include "HostFixture.h"

namespace components_test {
namespace {

class Queries : public HostTest {};

TEST_F(Queries, ListUsersInOrder) {
  const auto query = factory_.CreateUserQuery();
  std::int32_t status = -1;
  query->Execute("SELECT DISP_NAME, USER_ID FROM V_MUSER ORDER BY USER_ORDER_NO", status);
  ASSERT_EQ(status, 0);
  ASSERT_EQ(query->RowCount(), 3);
  EXPECT_EQ(query->Value(0, 0, status), "Müller O'Neill");
  EXPECT_EQ(query->Value(1, 1, status), "keller");
  EXPECT_EQ(query->Value(2, 0, status), "") << "NULL";
  EXPECT_EQ(status, 0);
  for (const auto& [row, column] : {std::pair{3, 0}, {0, 2}, {-1, 0}, {0, -1}}) {
    query->Value(row, column, status);
    EXPECT_NE(status, 0) << row << ", " << column;
  }
}

TEST_F(Queries, UnderstandTheHostsDialect) {
  const auto query = factory_.CreateUserQuery();
  std::int32_t status = -1;
  query->Execute("SELECT USER_ID FROM V_MUSER WHERE DISP_NAME = N'Müller O''Neill'", status);
  EXPECT_EQ(query->RowCount(), 1);
  EXPECT_EQ(query->Value(0, 0, status), "mueller");
}

// The program inserts names as they are typed: a quote must end in a refusal, not in rows.
TEST_F(Queries, FailOnAQuoteInsideAName) {
  const auto query = factory_.CreateUserQuery();
  std::int32_t status = 0;
  query->Execute("SELECT USER_ID FROM V_MUSER", status);
  query->Execute("SELECT USER_ID FROM V_MUSER WHERE DISP_NAME = N'Müller O'Neill'", status);
  EXPECT_NE(status, 0);
  EXPECT_EQ(query->RowCount(), 0);
}

TEST_F(Queries, FindRecentImages) {
  const auto query = factory_.CreateStudyDatabaseQuery();
  std::int32_t error = -1;
  query->OpenQuery(
      "SELECT RIGHT(URL,LEN(URL)-7),STUDY_DATETIME FROM T_TSTUDY INNER JOIN T_TDATA_FILE ON T_TSTUDY.STUDY_SEQ = "
      "T_TDATA_FILE.STUDY_SEQ WHERE URL LIKE '%.ddo' AND STUDY_DATETIME >= DATEADD(day,-7,GETDATE())",
      error);
  ASSERT_EQ(error, 0);
  ASSERT_EQ(query->RecordCount(error), 1);
  EXPECT_EQ(query->FieldValue(0, 0, error), "C:\\Bilder\\ä 1.ddo");
  EXPECT_EQ(error, 0);
  query->FieldValue(1, 0, error);
  EXPECT_NE(error, 0);
}

TEST_F(Queries, ReportStatementsThatFail) {
  const auto query = factory_.CreateStudyDatabaseQuery();
  std::int32_t error = 0;
  query->OpenQuery("SELECT * FROM T_NOWHERE", error);
  EXPECT_NE(error, 0);
  EXPECT_EQ(query->RecordCount(error), 0);
  EXPECT_NE(error, 0);
}

class Sign : public HostTest {};

struct Attempt {
  const char *user, *password;
  std::int32_t result, kind;
};

TEST_F(Sign, VerifiesPasswords) {
  const Attempt attempts[] = {
      {"keller", "geheim", 0, 1},
      {"mueller", "Grüße 1", 0, 6},
      {"gast", "", 0, 0},
      {"keller", "Geheim", 2, 0},
      {"keller", "", 2, 0},
      {"keller", "geheim ", 2, 0},
      {"niemand", "geheim", 1, 0},
      {"", "", 1, 0},
      {"keller' OR '1'='1", "geheim", 1, 0},
      {"mueller", "' OR '1'='1", 2, 0},
  };
  const auto authenticator = factory_.CreateUserAuthenticator();
  for (const Attempt& attempt : attempts) {
    std::int32_t kind = -1;
    EXPECT_EQ(authenticator->Verify(attempt.user, attempt.password, kind), attempt.result) << attempt.user;
    EXPECT_EQ(kind, attempt.kind) << attempt.user;
  }
}

TEST_F(Sign, ChecksFunctionRights) {
  const auto authenticator = factory_.CreateUserAuthenticator();
  struct Case {
    const char* user;
    std::int32_t code, result, granted;
  };
  for (const Case& check :
       {Case{"keller", 2601, 0, 0}, {"keller", 2801, 0, 1}, {"mueller", 2801, 0, 0}, {"niemand", 2601, 1, 1}}) {
    std::int32_t granted = -1;
    EXPECT_EQ(authenticator->CheckFunction(check.user, check.code, granted), check.result) << check.user;
    EXPECT_EQ(granted, check.granted) << check.user << " " << check.code;
  }
}

TEST_F(Sign, TellsAFaultFromARefusal) {
  const WithoutDatabase gone;
  std::int32_t out = 0;
  EXPECT_EQ(factory_.CreateUserAuthenticator()->Verify("keller", "geheim", out), 9);
  EXPECT_EQ(factory_.CreateUserAuthenticator()->CheckFunction("keller", 2601, out), 9);
  EXPECT_NE(out, 0) << "a fault grants nothing";
}

}  // namespace
}  // namespace components_test
