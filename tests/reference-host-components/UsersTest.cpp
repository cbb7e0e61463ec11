// Queries on the host's databases, passwords and rights.
#include "HostFixture.h"

namespace {

class Queries : public HostTest {
 protected:
  static constexpr std::int32_t kSuccess = 0;

  std::int32_t status_ = kFailed;
};

TEST_F(Queries, ListUsersInOrder) {
  const auto query = factory_.CreateUserQuery();
  query->Execute("SELECT DISP_NAME, USER_ID FROM V_MUSER ORDER BY USER_ORDER_NO", status_);
  ASSERT_EQ(status_, kSuccess);
  ASSERT_EQ(query->RowCount(), 3);
  EXPECT_EQ(query->Value(0, 0, status_), "Müller O'Neill");
  EXPECT_EQ(query->Value(1, 1, status_), "keller");
  EXPECT_EQ(query->Value(2, 0, status_), "") << "NULL";
  EXPECT_EQ(status_, kSuccess);
  for (const auto& [row, column] : {std::pair{3, 0}, {0, 2}, {-1, 0}, {0, -1}}) {
    query->Value(row, column, status_);
    EXPECT_NE(status_, kSuccess) << row << ", " << column;
  }
}

TEST_F(Queries, FindRecentImages) {
  const auto query = factory_.CreateStudyDatabaseQuery();
  query->OpenQuery(
      "SELECT RIGHT(URL,LEN(URL)-7),STUDY_DATETIME FROM T_TSTUDY INNER JOIN T_TDATA_FILE ON T_TSTUDY.STUDY_SEQ = "
      "T_TDATA_FILE.STUDY_SEQ WHERE URL LIKE '%.ddo' AND STUDY_DATETIME >= DATEADD(day,-7,GETDATE())",
      status_);
  ASSERT_EQ(status_, kSuccess);
  ASSERT_EQ(query->RecordCount(status_), 1);
  EXPECT_EQ(query->FieldValue(0, 0, status_), "C:\\Bilder\\ä 1.ddo");
  EXPECT_EQ(status_, kSuccess);
  query->FieldValue(1, 0, status_);
  EXPECT_NE(status_, kSuccess);
  query->OpenQuery("SELECT * FROM T_NOWHERE", status_);
  EXPECT_NE(status_, kSuccess);
  EXPECT_EQ(query->RecordCount(status_), 0);
  EXPECT_NE(status_, kSuccess);
}

using components::UserAuthenticator;

class Sign : public HostTest {
 protected:
  enum : std::int32_t { kMay = 0, kMayNot = 1 };

  const std::unique_ptr<host::UserAuthenticator> authenticator_ = factory_.CreateUserAuthenticator();
};

TEST_F(Sign, VerifiesPasswords) {
  const struct {
    const char *user, *password;
    std::int32_t result, kind;
  } attempts[] = {
      {"keller", "geheim", kDone, 1},
      {"mueller", "Grüße 1", kDone, 6},
      {"gast", "", kDone, 0},
      {"keller", "Geheim", UserAuthenticator::kWrongPassword, 0},
      {"keller", "", UserAuthenticator::kWrongPassword, 0},
      {"keller", "geheim ", UserAuthenticator::kWrongPassword, 0},
      {"niemand", "geheim", UserAuthenticator::kUnknownUser, 0},
      {"", "", UserAuthenticator::kUnknownUser, 0},
      {"keller' OR '1'='1", "geheim", UserAuthenticator::kUnknownUser, 0},
      {"mueller", "' OR '1'='1", UserAuthenticator::kWrongPassword, 0},
  };
  for (const auto& [user, password, result, kind] : attempts) {
    std::int32_t found = kFailed;
    EXPECT_EQ(authenticator_->Verify(user, password, found), result) << user;
    EXPECT_EQ(found, kind) << user;
  }
}

TEST_F(Sign, ChecksFunctionRights) {
  const std::tuple<const char*, std::int32_t, std::int32_t, std::int32_t> cases[] = {
      {"keller", 2601, kDone, kMay},
      {"keller", 2801, kDone, kMayNot},
      {"mueller", 2801, kDone, kMay},
      {"niemand", 2601, UserAuthenticator::kUnknownUser, kMayNot}};
  for (const auto& [user, code, result, refused] : cases) {
    std::int32_t granted = kFailed;
    EXPECT_EQ(authenticator_->CheckFunction(user, code, granted), result) << user;
    EXPECT_EQ(granted, refused) << user << " " << code;
  }
}

TEST_F(Sign, TellsAFaultFromARefusal) {
  const Fault gone = Altered(kDatabase);
  std::int32_t out = kMay;
  EXPECT_EQ(authenticator_->Verify("keller", "geheim", out), UserAuthenticator::kDatabaseFault);
  EXPECT_EQ(authenticator_->CheckFunction("keller", 2601, out), UserAuthenticator::kDatabaseFault);
  EXPECT_EQ(out, kMayNot) << "a fault grants nothing";
}

}  // namespace
