// The integrator's check tool: it finds nothing wrong with a complete host, and names each thing that is missing.

#include "EndToEndTest.h"
#include "common/Database.h"

namespace endtoend {
namespace {

const fs::path kPrograms = kTarsus / "Program";
const fs::path kSystem = kTarsus / "System";
const fs::path kDatabases = kTarsus / "Database";

Fault Changed(const fs::path& path, const std::string& from, const std::string& to) {
  const std::string before = ReadBytes(path), after = Replaced(before, from, to);
  EXPECT_NE(before, after) << from;
  return Altered(path, after);
}

/// ASCII text as it stands in a program's wide strings.
std::string Wide(const std::string& text) {
  std::string wide;
  for (const char c : text) wide += {c, '\0'};
  return wide;
}

Fault WithoutCatalogueText(base::MessageId id) {
  const fs::path path = kDatabases / "Language.db";
  const Fault kept = Altered(path, ReadBytes(path));
  const auto database = reference::Database::Open("DRIVER=SQLite3;Database=" + Utf8(path.wstring()));
  EXPECT_TRUE(database && database->Run("DELETE FROM MSG_ENGLISH WHERE ID = " + std::to_string(static_cast<int>(id))));
  return kept;
}

/// Wine starts a process for a component whose DLL it cannot load; that one takes the DLL as soon as it is
/// back, and nobody can write to it then.
void EndHostsOfComponents() {
  EndAll(L"dllhost.exe");
}

/// What the tool prints.
std::string Check(DWORD& code, const std::string& option = {}) {
  const fs::path output = fs::temp_directory_path() / "check.txt";
  const std::string call = "C:\\Tarsus\\Program\\QXHostCheck.exe " + option;
  code = Program("cmd /c \"" + call + " >" + Utf8(output.wstring()) + "\"").WaitForEnd();
  return ReadBytes(output);
}

class HostCheck : public EndToEndTest {
 protected:
  void SetUp() override {
    EndToEndTest::SetUp();
    EndHostsOfComponents();
  }

  /// While the fault lasts, which goes with the call.
  static void ExpectNamed(const std::string& expected, const Fault&) {
    DWORD code = 0;
    const std::string output = Check(code);
    EXPECT_EQ(code, 2U) << expected;
    EXPECT_TRUE(output.starts_with("MISSING  ")) << output;
    EXPECT_NE(output.find("MISSING  " + expected), std::string::npos) << output;
    EndHostsOfComponents();
  }
};

TEST_F(HostCheck, FindsNothingMissingAndChangesNothing) {
  const auto before = Snapshot(kTarsus);
  DWORD code = 1;
  const std::string output = Check(code);
  EXPECT_EQ(output.find("MISSING"), std::string::npos) << output;
  EXPECT_NE(output.find("0 missing, "), std::string::npos) << output;
  EXPECT_EQ(output.find("ok       "), std::string::npos) << output;
  EXPECT_EQ(code, 0U);
  EXPECT_NE(Check(code, "--all").find("\r\nok       component Tarsus.AuditTrail - "), std::string::npos);
  EXPECT_TRUE(Check(code, "--json").starts_with("{\"missing\": 0, \"notes\": "));
  EXPECT_EQ(code, 0U);
  EXPECT_EQ(Check(code, "--everything"), "");
  EXPECT_EQ(code, 3U);
  EXPECT_TRUE(Snapshot(kTarsus) == before);
}

TEST_F(HostCheck, NotesWhatJobsDoNotExpectOfWindowsAndOfBatchFiles) {
  const Fault waits =
      Altered(kSystem / "Backup" / "ExportPatientList.bat", "@echo off\r\nrem choice\r\ntimeout /t 5\r\n");
  const Fault ending = WithoutValue(L"SOFTWARE\\Classes\\.js", L"");
  DWORD code = 1;
  const std::string output = Check(code);
  EXPECT_EQ(code, 0U) << "a host may live with it";
  EXPECT_NE(output.find("timeout fails in a job"), std::string::npos) << output;
  EXPECT_EQ(output.find("choice fails in a job"), std::string::npos);
  EXPECT_NE(output.find("note     scripts with the ending .js"), std::string::npos) << output;
}

TEST_F(HostCheck, NamesEachThingThatIsMissing) {
  const fs::path paths = kSystem / "Directory.ini", jobs = kSystem / "BackupList.ini";
  const fs::path components = kPrograms / "TarsusComponents.dll";
  ExpectNamed("QX32lib.dll", Altered(kPrograms / "QX32lib.dll"));
  ExpectNamed("QXNetDB.dll export QXNetDBGetDriveInfo",
              Changed(kPrograms / "QXNetDB.dll", "QXNetDBGetDriveInfo", "QXNetDBGetDriveInfx"));
  ExpectNamed("registry BackupUtility\\ColorTextR",
              WithoutValue(kHostKey + std::wstring(L"\\BackupUtility"), L"ColorTextR"));
  ExpectNamed("Directory.ini", Altered(paths));
  ExpectNamed("path table DeleteListDB", Changed(paths, "\nDeleteListDB=", "\nx="));
  ExpectNamed("path table Image = C:\\Tarsus\\Data\\Gone", Changed(paths, "Data\\Image.ddo", "Data\\Gone"));
  ExpectNamed("BackupList.ini [PATIENT_BACKUP] CommonFile=%Database%\\Patient.db",
              Changed(paths, "\nDatabase=", "\nx="));
  ExpectNamed("component Tarsus.AuditTrail (not registered)",
              WithoutValue(L"SOFTWARE\\Classes\\Tarsus.AuditTrail\\CLSID", L""));
  ExpectNamed("component Tarsus.UserQuery (cannot be created)", Altered(components));
  ExpectNamed("component Tarsus.AuditTrail.RecordCategoryPhase",
              Changed(components, Wide("RecordCategoryPhase"), Wide("RecordCategoryPhasx")));
  ExpectNamed("catalogue table MSG_ENGLISX", Changed(kDatabases / "System.db", "MSG_ENGLISH", "MSG_ENGLISX"));
  ExpectNamed("catalogue text 60326", WithoutCatalogueText(base::MessageId::PathEntryUnreadable));
  ExpectNamed("view V_MUSER", Altered(kDatabases / "Users.db"));
  ExpectNamed("study databases: SELECT * FROM Patient.dbo.T_TPATIENT", Altered(kDatabases / "Patient.db"));
  ExpectNamed("BackupList.ini [MENU_RESTORE]", Changed(jobs, "[MENU_RESTORE]", "[MENU RESTORE]"));
  ExpectNamed("BackupList.ini [LOG_BACKUP] EventLog=%System%\\BackupEventLog.exe",
              Altered(kSystem / "BackupEventLog.exe"));
  ExpectNamed("BackupVersion.ini MenuData", Changed(kSystem / "BackupVersion.ini", "MenuData=", "Menu="));
  ExpectNamed("C:\\Tarsus\\System\\Maintenance.js", Altered(kSystem / "Maintenance.js"));
}

}  // namespace
}  // namespace endtoend
