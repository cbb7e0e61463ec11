// Start-up: every check, its message, and the order in which they come.
#include <gtest/gtest.h>

#include "unit/flows/Session.h"

namespace flows {
namespace {

/// One thing that can be wrong with the installation, and the message that says so.
struct Defect {
  const char* name;
  std::int32_t message;
  void (*plant)(Session&);
};

void PrintTo(const Defect& defect, std::ostream* out) {
  *out << defect.name;
}

// In the order in which start-up looks.
const std::vector<Defect> kDefects = {
    {"NoSystemDatabaseEntry", 60326, [](Session& s) { s.qx32.pathTable.erase("SysMasterDB"); }},
    {"SystemDatabaseNotOpened", 60321, [](Session& s) { s.qx32lib.connection = "DSN=Another"; }},
    {"NoTableName", 60325, [](Session& s) { s.qx32lib.values.clear(); }},
    {"SystemDatabaseNotClosed", 60321, [](Session& s) { s.calls.FailFrom("QX32lib", "SysDBClose"); }},
    {"NoFontSize", 60322, [](Session& s) { s.qx32.numbers.erase("BackupUtility\\BUFontSizeSS"); }},
    {"NoCatalogueEntry", 60326, [](Session& s) { s.qx32.pathTable.erase("LangStrDB"); }},
    {"NoCatalogueTable", 60320, [](Session& s) { s.catalogue.tableName = "T_OTHER"; }},
    {"SecondInstance", 60316, [](Session& s) { s.processes.previousInstance = true; }},
    {"UserUtilityRuns", 60314, [](Session& s) { s.processes.running.push_back("QXUserUtility.exe"); }},
    {"ServiceUtilityRuns", 60315, [](Session& s) { s.processes.running.push_back("QXServiceUtility.exe"); }},
    {"ScheduledBackupRuns", 61603, [](Session& s) { s.processes.running.push_back("ScheduledBackupTool.exe"); }},
    {"NoApplicationRoot", 60326, [](Session& s) { s.qx32.pathTable.erase("ApplicationRoot"); }},
    {"NoSystemEntry", 60326, [](Session& s) { s.qx32.pathTable.erase("System"); }},
    {"NoUserFolder", 60326, [](Session& s) { s.qx32.pathTable.erase("UserFolder"); }},
};

void ExpectHalt(Session& session, std::int32_t message) {
  session.person.ExpectMessage(message);
  session.Run();
  EXPECT_TRUE(session.processes.ended);
  EXPECT_EQ(session.Told().logLines, (std::vector<std::string>{"Start Backup Utility", "Halt Backup Utility"}));
  EXPECT_NE(session.disk.Read(fakes::kLogFile).find("] [Error]       Halt Backup Utility\r\n"), std::string::npos);
  EXPECT_TRUE(session.processes.started.empty());
  EXPECT_TRUE(session.Told().auditRecords.empty());
  EXPECT_NE(session.catalogue.state, fakes::FakeCatalogue::State::Closed) << "a halt drops the catalogue unclosed";
}

class StartUpDefect : public testing::TestWithParam<Defect> {};

TEST_P(StartUpDefect, IsShownAndHalts) {
  Session session;
  GetParam().plant(session);
  ExpectHalt(session, GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(All, StartUpDefect, testing::ValuesIn(kDefects),
                         [](const auto& test) { return test.param.name; });

TEST(StartUp, ShowsTheFirstOfTwoDefects) {
  for (std::size_t first = 0; first < kDefects.size(); ++first) {
    for (std::size_t second = first + 1; second < kDefects.size(); ++second) {
      SCOPED_TRACE(std::string(kDefects[first].name) + " before " + kDefects[second].name);
      Session session;
      kDefects[second].plant(session);
      kDefects[first].plant(session);
      ExpectHalt(session, kDefects[first].message);
    }
  }
}

class AppearanceValue : public testing::TestWithParam<const char*> {};

TEST_P(AppearanceValue, IsRequired) {
  Session session;
  const std::size_t removed = session.qx32.texts.erase(GetParam()) + session.qx32.numbers.erase(GetParam());
  ASSERT_EQ(removed, 1u);
  ExpectHalt(session, 60322);
}

INSTANTIATE_TEST_SUITE_P(All, AppearanceValue,
                         testing::Values("ApplicationName", "Application", "Font", "BackupUtility\\BUFontSizeSS",
                                         "BackupUtility\\BUFontSizeS", "BackupUtility\\BUFontSizeM",
                                         "BackupUtility\\BUFontSizeL", "BackupUtility\\BUFontSizeLL",
                                         "BackupUtility\\ColorBack", "BackupUtility\\ColorBtn",
                                         "BackupUtility\\ColorStr", "BackupUtility\\ColorCtrl",
                                         "BackupUtility\\ColorText", "BackupUtility\\ColorCtrlR",
                                         "BackupUtility\\ColorTextR"));

TEST(StartUp, WithoutDirectoryIniSaysSoPlainlyAndLogsNothing) {
  for (const bool keyMissing : {false, true}) {
    Session session;
    if (keyMissing)
      session.qx32.texts.erase("PathAppl");
    else
      session.disk.Remove("C:\\Tarsus\\System\\Directory.ini");
    session.person.ExpectPlainMessage("Not Exist Directory.ini. Please Reinstall Tarsus System.");
    session.Run();
    EXPECT_FALSE(session.disk.IsFile(fakes::kLogFile));
    EXPECT_EQ(session.catalogue.state, fakes::FakeCatalogue::State::Never);
    EXPECT_TRUE(session.processes.started.empty());
  }
}

// The log cannot be found, so every line asks for its folder again, and says so.
TEST(StartUp, WithoutLogFolderComplainsWithEveryLine) {
  Session session;
  session.qx32.pathTable.erase("Log");
  session.person.ExpectMessage(60326).ExpectMessage(60326).ExpectMessage(60326);
  session.Run();
  EXPECT_TRUE(session.processes.ended);
  EXPECT_FALSE(session.disk.IsFile(fakes::kLogFile));
}

TEST(StartUp, ComparesFifteenCharactersOfSiblingToolsCaseSensitively) {
  const std::vector<std::pair<const char*, std::int32_t>> cases = {
      {"QXServiceUtilityNew.exe", 60315}, {"QXServiceUtilit", 60315},       {"QXServiceUtility", 60315},
      {"QXServiceUtili.exe", 0},          {"qxserviceutility.exe", 0},      {"QXUserUtility2.exe", 0},
      {"QXUserUtility.exe", 60314},       {"ScheduledBackupper.exe", 61603}};
  for (const auto& [executable, message] : cases) {
    SCOPED_TRACE(executable);
    Session session;
    session.processes.running.push_back(executable);
    if (message != 0) {
      ExpectHalt(session, message);
      continue;
    }
    session.CancelSignIn();
    session.Run();
    EXPECT_FALSE(session.processes.ended);
  }
}

TEST(StartUp, HandsTheCatalogueAConnectionOf256Characters) {
  for (const std::size_t length : {10u, 256u, 300u}) {
    Session session;
    session.qx32.pathTable["LangStrDB"] = std::string(length, 'x');
    session.CancelSignIn();
    session.Run();
    std::string expected(length, 'x');
    expected.resize(256, ' ');
    EXPECT_EQ(session.catalogue.connection, expected);
  }
}

}  // namespace
}  // namespace flows
