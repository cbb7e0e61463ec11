// The log writer, the operation recorder and the audit trail.
#include "HostFixture.h"

namespace {

class Log : public HostTest {
 protected:
  std::int32_t Write(const std::string& path, const std::string& line, std::int32_t mode = 1) {
    const auto writer = factory_.CreateLogWriter();
    writer->SetFilePath(path);
    writer->SetMode(mode);
    return writer->WriteLine(line);
  }
};

TEST_F(Log, AppendsLinesInTheSystemsCodePageOrBeginsAnew) {
  const std::string path = folder_ + "Prüf.log";
  EXPECT_EQ(Write(path, "[2012/03/04 05:06:07] [Informatin]  Start"), 0);
  EXPECT_EQ(Write(path, "Größe"), 0);
  EXPECT_EQ(Write(path, ""), 0);
  ASSERT_TRUE(GetACP() == CP_UTF8 || GetACP() == 1252) << GetACP();
  const std::string word = GetACP() == CP_UTF8 ? "Größe"
                                               : "Gr\xF6\xDF"
                                                 "e";
  EXPECT_EQ(ReadFile(path), "[2012/03/04 05:06:07] [Informatin]  Start\r\n" + word + "\r\n\r\n");
  EXPECT_EQ(Write(path, "new", 0), 0);
  EXPECT_EQ(ReadFile(path), "new\r\n");
  EXPECT_EQ(Write(folder_ + "missing\\x.log", "x"), -1);
}

class Records : public HostTest {
 protected:
  const std::string age_ = "(julianday('now','localtime') - julianday(RECORDED_AT)) * 86400 BETWEEN -1 AND 60";
};

TEST_F(Records, KeepOperations) {
  EXPECT_EQ(factory_.CreateOperationRecorder()->Record("WS-1", "müller", "BackupUtility", "MainMenu", "O'Neill"), 0);
  EXPECT_EQ(Query("SELECT HOST_NAME, USER_ID, PROGRAM, SCREEN, ACTION, " + age_ + " FROM T_OPERATION"),
            "WS-1|müller|BackupUtility|MainMenu|O'Neill|1|\n");
}

TEST_F(Records, KeepTheAuditTrail) {
  const auto audit = factory_.CreateAuditTrail();
  EXPECT_EQ(audit->RecordSignInOut("keller", "Anmeldung", "Sicherung"), 0);
  EXPECT_EQ(audit->RecordCategoryPhase("keller", "Ende", "Menüs"), 0);
  EXPECT_EQ(Query("SELECT USER_ID, WORD, TITLE FROM T_SIGN"), "keller|Anmeldung|Sicherung|\n");
  EXPECT_EQ(Query("SELECT USER_ID, PHASE, CATEGORY, " + age_ + " FROM T_CATEGORY_PHASE"), "keller|Ende|Menüs|1|\n");
}

TEST_F(Records, ReportADatabaseThatIsGone) {
  const Without gone(kDatabase);
  EXPECT_EQ(factory_.CreateOperationRecorder()->Record("", "", "", "", ""), -1);
  EXPECT_EQ(factory_.CreateAuditTrail()->RecordSignInOut("", "", ""), -1);
}

}  // namespace
