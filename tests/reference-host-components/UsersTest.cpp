// Queries on the host's databases, passwords and rights.
#include "HostFixture.h"

namespace {

class Queries : public HostTest {
 protected:
  std::int32_t status_ = -1;
};

TEST_F(Queries, ListUsersInOrder) {
  const auto query = factory_.CreateUserQuery();
  query->Execute("SELECT DISP_NAME, USER_ID FROM V_MUSER ORDER BY USER_ORDER_NO", status_);
  ASSERT_EQ(status_, 0);
  ASSERT_EQ(query->RowCount(), 3);
  EXPECT_EQ(query->Value(0, 0, status_), "Müller O'Neill");
  EXPECT_EQ(query->Value(1, 1, status_), "keller");
  EXPECT_EQ(query->Value(2, 0, status_), "") << "NULL";
  EXPECT_EQ(status_, 0);
  for (const auto& [row, column] : {std::pair{3, 0}, {0, 2}, {-1, 0}, {0, -1}}) {
    query->Value(row, column, status_);
    EXPECT_NE(status_, 0) << row << ", " << column;
  }
}

// The program inserts names as they are typed: a quote must end in a refusal, not in rows.
TEST_F(Queries, FailOnAQuoteInsideAName) {
  const auto query = factory_.CreateUserQuery();
  query->Execute("SELECT USER_ID FROM V_MUSER WHERE DISP_NAME = N'Müller O''Neill'", status_);
  EXPECT_EQ(query->RowCount(), 1);
  EXPECT_EQ(query->Value(0, 0, status_), "mueller");
  query->Execute("SELECT USER_ID FROM V_MUSER WHERE DISP_NAME = N'Müller O'Neill'", status_);
  EXPECT_NE(status_, 0);
  EXPECT_EQ(query->RowCount(), 0);
}

TEST_F(Queries, FindRecentImages) {
  const auto query = factory_.CreateStudyDatabaseQuery();
  query->OpenQuery(
      "SELECT RIGHT(URL,LEN(URL)-7),STUDY_DATETIME FROM T_TSTUDY INNER JOIN T_TDATA_FILE ON T_TSTUDY.STUDY_SEQ = "
      "T_TDATA_FILE.STUDY_SEQ WHERE URL LIKE '%.ddo' AND STUDY_DATETIME >= DATEADD(day,-7,GETDATE())",
      status_);
  ASSERT_EQ(status_, 0);
  ASSERT_EQ(query->RecordCount(status_), 1);
  EXPECT_EQ(query->FieldValue(0, 0, status_), "C:\\Bilder\\ä 1.ddo");
  EXPECT_EQ(status_, 0);
  query->FieldValue(1, 0, status_);
  EXPECT_NE(status_, 0);
  query->OpenQuery("SELECT * FROM T_NOWHERE", status_);
  EXPECT_NE(status_, 0);
  EXPECT_EQ(query->RecordCount(status_), 0);
  EXPECT_NE(status_, 0);
}

class Sign : public HostTest {
 protected:
  const std::unique_ptr<host::UserAuthenticator> authenticator_ = factory_.CreateUserAuthenticator();
};

TEST_F(Sign, VerifiesPasswords) {
  const struct {
    const char *user, *password;
    std::int32_t result, kind;
  } attempts[] = {
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
  for (const auto& [user, password, result, kind] : attempts) {
    std::int32_t found = -1;
    EXPECT_EQ(authenticator_->Verify(user, password, found), result) << user;
    EXPECT_EQ(found, kind) << user;
  }
}

TEST_F(Sign, ChecksFunctionRights) {
  const std::tuple<const char*, std::int32_t, std::int32_t, std::int32_t> cases[] = {
      {"keller", 2601, 0, 0}, {"keller", 2801, 0, 1}, {"mueller", 2801, 0, 0}, {"niemand", 2601, 1, 1}};
  for (const auto& [user, code, result, refused] : cases) {
    std::int32_t granted = -1;
    EXPECT_EQ(authenticator_->CheckFunction(user, code, granted), result) << user;
    EXPECT_EQ(granted, refused) << user << " " << code;
  }
}

TEST_F(Sign, TellsAFaultFromARefusal) {
  const Without gone(kDatabase);
  std::int32_t out = 0;
  EXPECT_EQ(authenticator_->Verify("keller", "geheim", out), 9);
  EXPECT_EQ(authenticator_->CheckFunction("keller", 2601, out), 9);
  EXPECT_NE(out, 0) << "a fault grants nothing";
}

}  // namespace
