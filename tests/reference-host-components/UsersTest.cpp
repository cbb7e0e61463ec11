// Queries on the host's databases, passwords and rights.
#include "HostFixture.h"

namespace {

using Queries = HostTest;

TEST_F(Queries, ListUsersInOrder) {
  const auto query = factory_.CreateUserQuery();
  ASSERT_EQ(query->Execute("SELECT DISP_NAME, USER_ID FROM V_MUSER ORDER BY USER_ORDER_NO"), Done);
  ASSERT_EQ(query->RowCount(), 3);
  EXPECT_EQ(query->Value(0, 0), "Müller O'Neill");
  EXPECT_EQ(query->Value(1, 1), "keller");
  EXPECT_EQ(query->Value(2, 0), "") << "NULL";
  for (const auto& [row, column] : {std::pair{3, 0}, {0, 2}, {-1, 0}, {0, -1}}) {
    EXPECT_EQ(query->Value(row, column), std::nullopt) << row << ", " << column;
  }
}

TEST_F(Queries, FindRecentImages) {
  const auto query = factory_.CreateStudyDatabaseQuery();
  ASSERT_EQ(query->OpenQuery("SELECT RIGHT(URL,LEN(URL)-7),STUDY_DATETIME FROM T_TSTUDY INNER JOIN T_TDATA_FILE ON "
                             "T_TSTUDY.STUDY_SEQ = T_TDATA_FILE.STUDY_SEQ WHERE URL LIKE '%.ddo' AND STUDY_DATETIME >= "
                             "DATEADD(day,-7,GETDATE())"),
            Done);
  std::int32_t count = 0;
  std::string value;
  EXPECT_EQ(query->RecordCount(count), Done);
  ASSERT_EQ(count, 1);
  EXPECT_EQ(query->FieldValue(0, 0, value), Done);
  EXPECT_EQ(value, "C:\\Bilder\\ä 1.ddo");
  EXPECT_EQ(query->FieldValue(1, 0, value), Failed);
  EXPECT_EQ(query->OpenQuery("SELECT * FROM T_NOWHERE"), Failed);
  EXPECT_EQ(query->RecordCount(count), Failed);
  EXPECT_EQ(count, 0);
}

using components::UserAuthenticator;

class Sign : public HostTest {
 protected:
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
  const std::tuple<const char*, std::int32_t, bool> cases[] = {
      {"keller", 2601, true}, {"keller", 2801, false}, {"mueller", 2801, true}, {"niemand", 2601, false}};
  for (const auto& [user, code, may] : cases) {
    bool granted = !may;
    EXPECT_EQ(authenticator_->CheckFunction(user, code, granted), Done) << user;
    EXPECT_EQ(granted, may) << user << " " << code;
  }
}

TEST_F(Sign, TellsAFaultFromARefusal) {
  const Fault gone = Altered(kDatabase);
  std::int32_t kind = 0;
  bool granted = true;
  EXPECT_EQ(authenticator_->Verify("keller", "geheim", kind), UserAuthenticator::kDatabaseFault);
  EXPECT_EQ(authenticator_->CheckFunction("keller", 2601, granted), Done) << "only -1 is none of an answer";
  EXPECT_FALSE(granted) << "a fault grants nothing";
}

}  // namespace
