// The log writer, the operation recorder and the audit trail.
#include "HostFixture.h"

namespace {

class Log : public HostTest {
 protected:
  enum : std::int32_t { kNew = 0, kAppend = 1 };

  base::Outcome Write(const std::string& path, const std::string& line, std::int32_t mode = kAppend) {
    const auto writer = factory_.CreateLogWriter();
    writer->SetFilePath(path);
    writer->SetMode(mode);
    return writer->WriteLine(line);
  }
};

TEST_F(Log, AppendsLinesInTheSystemsCodePageOrBeginsAnew) {
  const std::string path = folder_ + "Prüf.log";
  EXPECT_EQ(Write(path, "[2012/03/04 05:06:07] [Informatin]  Start"), Done);
  EXPECT_EQ(Write(path, "Größe"), Done);
  EXPECT_EQ(Write(path, ""), Done);
  EXPECT_EQ(ReadFile(path),
            "[2012/03/04 05:06:07] [Informatin]  Start\r\n" + windows::ToCodePage("Größe") + "\r\n\r\n");
  EXPECT_EQ(Write(path, "new", kNew), Done);
  EXPECT_EQ(ReadFile(path), "new\r\n");
  EXPECT_EQ(Write(folder_ + "missing\\x.log", "x"), Failed);
}

class Records : public HostTest {
 protected:
  const std::string age_ = "(julianday('now','localtime') - julianday(RECORDED_AT)) * 86400 BETWEEN -1 AND 60";
};

TEST_F(Records, KeepOperations) {
  EXPECT_EQ(factory_.CreateOperationRecorder()->Record("WS-1", "müller", "BackupUtility", "MainMenu", "O'Neill"), Done);
  EXPECT_EQ(Query("SELECT HOST_NAME, USER_ID, PROGRAM, SCREEN, ACTION, " + age_ + " FROM T_OPERATION"),
            "WS-1|müller|BackupUtility|MainMenu|O'Neill|1|\n");
}

TEST_F(Records, KeepTheAuditTrail) {
  const auto audit = factory_.CreateAuditTrail();
  EXPECT_EQ(audit->RecordSignInOut("keller", "Anmeldung", "Sicherung"), Done);
  EXPECT_EQ(audit->RecordCategoryPhase("keller", "Ende", "Menüs"), Done);
  EXPECT_EQ(Query("SELECT USER_ID, WORD, TITLE FROM T_SIGN"), "keller|Anmeldung|Sicherung|\n");
  EXPECT_EQ(Query("SELECT USER_ID, PHASE, CATEGORY, " + age_ + " FROM T_CATEGORY_PHASE"), "keller|Ende|Menüs|1|\n");
}

TEST_F(Records, ReportADatabaseThatIsGone) {
  const Fault gone = Altered(kDatabase);
  EXPECT_EQ(factory_.CreateOperationRecorder()->Record("", "", "", "", ""), Failed);
  EXPECT_EQ(factory_.CreateAuditTrail()->RecordSignInOut("", "", ""), Failed);
}

}  // namespace
