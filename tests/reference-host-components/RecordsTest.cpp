// The log writer, the operation recorder and the audit trail.

#include "HostFixture.h"

namespace components_test {
namespace {

class Log : public HostTest {
 protected:
  std::int32_t Write(const std::string& line, std::int32_t mode = 1) {
    const auto writer = factory_.CreateLogWriter();
    writer->SetFilePath(path_);
    writer->SetMode(mode);
    return writer->WriteLine(line);
  }
  const std::string path_ = folder_ + "Prüf.log";
};

TEST_F(Log, AppendsLinesInTheSystemsCodePage) {
  EXPECT_EQ(Write("[2012/03/04 05:06:07] [Informatin]  Start"), 0);
  EXPECT_EQ(Write("Größe"), 0);
  EXPECT_EQ(Write(""), 0);
  const UINT codePage = GetACP();
  const std::string word = codePage == CP_UTF8 ? "Größe"
                                               : "Gr\xF6\xDF"
                                                 "e";
  ASSERT_TRUE(codePage == CP_UTF8 || codePage == 1252) << codePage;
  EXPECT_EQ(ReadFile(path_), "[2012/03/04 05:06:07] [Informatin]  Start\r\n" + word + "\r\n\r\n");
}

TEST_F(Log, BeginsAnewInOtherModes) {
  Write("old");
  EXPECT_EQ(Write("new", 0), 0);
  EXPECT_EQ(ReadFile(path_), "new\r\n");
}

TEST_F(Log, ReportsAFileThatCannotBeWritten) {
  const auto writer = factory_.CreateLogWriter();
  writer->SetFilePath(folder_ + "missing\\x.log");
  EXPECT_EQ(writer->WriteLine("x"), -1);
}

class Records : public HostTest {
 protected:
  static constexpr char kAge[] = "(julianday('now','localtime') - julianday(RECORDED_AT)) * 86400 BETWEEN -1 AND 60";
};

TEST_F(Records, KeepOperations) {
  EXPECT_EQ(factory_.CreateOperationRecorder()->Record("WS-1", "müller", "BackupUtility", "MainMenu", "O'Neill"), 0);
  const auto rows =
      Query(std::string("SELECT HOST_NAME, USER_ID, PROGRAM, SCREEN, ACTION, ") + kAge + " FROM T_OPERATION");
  EXPECT_EQ(rows, std::vector<std::string>{"WS-1|müller|BackupUtility|MainMenu|O'Neill|1"});
}

TEST_F(Records, KeepTheAuditTrail) {
  const auto audit = factory_.CreateAuditTrail();
  EXPECT_EQ(audit->RecordSignInOut("keller", "Anmeldung", "Sicherung"), 0);
  EXPECT_EQ(audit->RecordCategoryPhase("keller", "Ende", "Menüs"), 0);
  EXPECT_EQ(Query("SELECT USER_ID, WORD, TITLE FROM T_SIGN"), std::vector<std::string>{"keller|Anmeldung|Sicherung"});
  EXPECT_EQ(Query(std::string("SELECT USER_ID, PHASE, CATEGORY, ") + kAge + " FROM T_CATEGORY_PHASE"),
            std::vector<std::string>{"keller|Ende|Menüs|1"});
}

TEST_F(Records, ReportADatabaseThatIsGone) {
  const WithoutDatabase gone;
  EXPECT_EQ(factory_.CreateOperationRecorder()->Record("", "", "", "", ""), -1);
  EXPECT_EQ(factory_.CreateAuditTrail()->RecordSignInOut("", "", ""), -1);
}

}  // namespace
}  // namespace components_test
