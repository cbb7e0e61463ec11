// What start-up does when something of the host is missing: the message that
// belongs to it, "Halt Backup Utility" in the log, and nothing else started.

#include <gtest/gtest.h>

#include <memory>

#include "cases/EndToEndTest.h"

namespace endtoend {
namespace {

const fs::path kDirectoryIni = kTarsus / "System" / "Directory.ini";

/// Directory.ini with the entry `name` renamed away, or with another value.
std::unique_ptr<Altered> WithoutEntry(const std::string& name) {
  return std::make_unique<Altered>(kDirectoryIni,
                                   Replaced(ReadBytes(kDirectoryIni), "\n" + name + "=", "\nx" + name + "="));
}

std::unique_ptr<Altered> WithEntry(const std::string& name, const std::string& value) {
  return std::make_unique<Altered>(
      kDirectoryIni, Replaced(ReadBytes(kDirectoryIni), "\n" + name + "=", "\n" + name + "=" + value + ";"));
}

class StartUp : public EndToEndTest {
 protected:
  void ExpectHalt(int message) {
    Program program(kProgram);
    EXPECT_EQ(program.AnswerMessage(Answer::Refuse).id, message);
    program.WaitForEnd();
    EXPECT_FALSE(IsRunning(L"Tarsus.exe"));
  }

  // The log's folder is only known once the database before it was read.
  void ExpectHaltInLog() {
    const auto lines = LogLines();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back(), "[Error]       Halt Backup Utility");
  }
};

TEST_F(StartUp, WithoutDirectoryIniShowsOnePlainBoxAndEnds) {
  const Missing directory(kDirectoryIni);
  Program program(kProgram);
  const Window box = program.WaitForMessageBox();
  EXPECT_EQ(box.Title(), "QXBackupUtility");
  EXPECT_EQ(box.Text(0xFFFF), "Not Exist Directory.ini. Please Reinstall Tarsus System.");
  box.Key(VK_RETURN);
  program.WaitForEnd();
  EXPECT_TRUE(LogLines().empty());
}

TEST_F(StartUp, UnreadablePathTableEntriesHalt) {
  for (const char* name : {"SysMasterDB", "LangStrDB", "ApplicationRoot", "System", "UserFolder"}) {
    SCOPED_TRACE(name);
    const auto missing = WithoutEntry(name);
    ExpectHalt(60326);
    ExpectHaltInLog();
  }
}

TEST_F(StartUp, UnreachableDatabasesHalt) {
  {
    SCOPED_TRACE("system configuration database");
    const auto elsewhere = WithEntry("SysMasterDB", "DRIVER=SQLite3;Database=C:\\nowhere.db");
    ExpectHalt(60321);
  }
  {
    SCOPED_TRACE("message catalogue");
    const auto elsewhere = WithEntry("LangStrDB", "DRIVER=SQLite3;Database=C:\\nowhere.db");
    ExpectHalt(60320);
    ExpectHaltInLog();
  }
}

TEST_F(StartUp, MissingAppearanceValueHaltsAlthoughNothingAppliesIt) {
  const MissingRegistryValue value(L"BackupUtility", L"ColorTextR");
  ExpectHalt(60322);
  ExpectHaltInLog();
}

TEST_F(StartUp, MissingHostLibraries) {
  {
    SCOPED_TRACE("QX32lib.dll");
    const Missing library(kTarsus / "Program" / "QX32lib.dll");
    ExpectHalt(60321);
  }
  {
    SCOPED_TRACE("QX32.dll: the installation cannot even be looked for");
    const Missing library(kTarsus / "Program" / "QX32.dll");
    Program program(kProgram);
    EXPECT_EQ(program.WaitForMessageBox().Title(), "QXBackupUtility");
  }
}

TEST_F(StartUp, MissingComponentsAreSurvived) {
  const Missing components(kTarsus / "Program" / "TarsusComponents.dll");
  Program program(kProgram);
  // No message dialog, no log writer, no user list: the sign-in still opens and can be left.
  const Window dialog = program.WaitForDialog(ID_frmUserAuthentication_cmdCancel);
  dialog.PressWithShift(ID_frmUserAuthentication_cmdCancel);
  program.WaitForEnd();
}

TEST_F(StartUp, RefusesToRunBesideAnotherInstance) {
  Operator first;
  first.SignInDialog();
  ExpectHalt(60316);
}

TEST_F(StartUp, RefusesToRunBesideSiblingTools) {
  const struct {
    const char* executable;
    int message;
  } siblings[] = {{"QXUserUtility.exe", 60314},
                  {"QXServiceUtility.exe", 60315},
                  {"QXServiceUtilities.exe", 60315},  // the same in its first 15 characters
                  {"ScheduledBackupTool.exe", 61603}};
  for (const auto& sibling : siblings) {
    SCOPED_TRACE(sibling.executable);
    const RunningSibling running(sibling.executable);
    ExpectHalt(sibling.message);
    ExpectHaltInLog();
  }
  const RunningSibling user("QXUserUtility.exe");
  const RunningSibling service("QXServiceUtility.exe");
  ExpectHalt(60314);
}

}  // namespace
}  // namespace endtoend
