// The integrator's check tool: it finds nothing wrong with a complete host, and names each thing that is missing.

#include <functional>

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

Fault WithoutCatalogueText(int id) {
  const fs::path path = kDatabases / "Language.db";
  const Fault kept = Altered(path, ReadBytes(path));
  const auto database = reference::Database::Open("DRIVER=SQLite3;Database=" + Utf8(path.wstring()));
  EXPECT_TRUE(database && database->Run("DELETE FROM MSG_ENGLISH WHERE ID = " + std::to_string(id)));
  return kept;
}

/// Wine starts a process for a component whose DLL it cannot load; that one takes the DLL as soon as it is
/// back, and nobody can write to it then.
void EndHostsOfComponents() {
  EndAll(L"dllhost.exe");
}

/// What the tool prints.
std::string Check(DWORD& code) {
  const fs::path output = fs::temp_directory_path() / "check.txt";
  code = Program("cmd /c \"C:\\Tarsus\\Program\\QXHostCheck.exe >" + Utf8(output.wstring()) + "\"").WaitForEnd();
  return ReadBytes(output);
}

class HostCheck : public EndToEndTest {
 protected:
  void SetUp() override {
    EndToEndTest::SetUp();
    EndHostsOfComponents();
  }
};

TEST_F(HostCheck, FindsNothingMissingAndChangesNothing) {
  const auto before = Snapshot(kTarsus);
  DWORD code = 1;
  const std::string output = Check(code);
  EXPECT_NE(output.find("\r\n0 missing\r\n"), std::string::npos) << output;
  EXPECT_EQ(code, 0U);
  EXPECT_TRUE(Snapshot(kTarsus) == before);
}

TEST_F(HostCheck, NamesEachThingThatIsMissing) {
  const std::pair<const char*, std::function<Fault()>> faults[] = {
      {"QX32lib.dll", [] { return Altered(kPrograms / "QX32lib.dll"); }},
      {"QXNetDB.dll export QXNetDBGetDriveInfo",
       [] { return Changed(kPrograms / "QXNetDB.dll", "QXNetDBGetDriveInfo", "QXNetDBGetDriveInfx"); }},
      {"registry BackupUtility\\ColorTextR",
       [] { return WithoutValue(kHostKey + std::wstring(L"\\BackupUtility"), L"ColorTextR"); }},
      {"Directory.ini", [] { return Altered(kSystem / "Directory.ini"); }},
      {"path table DeleteListDB", [] { return Changed(kSystem / "Directory.ini", "\nDeleteListDB=", "\nx="); }},
      {"path table Image = C:\\Tarsus\\Data\\Gone",
       [] { return Changed(kSystem / "Directory.ini", "Data\\Image.ddo", "Data\\Gone"); }},
      {"BackupList.ini [PATIENT_BACKUP] CommonFile=%Database%\\Patient.db",
       [] { return Changed(kSystem / "Directory.ini", "\nDatabase=", "\nx="); }},
      {"component Tarsus.AuditTrail (not registered)",
       [] { return WithoutValue(L"SOFTWARE\\Classes\\Tarsus.AuditTrail\\CLSID", L""); }},
      {"component Tarsus.UserQuery (cannot be created)", [] { return Altered(kPrograms / "TarsusComponents.dll"); }},
      {"component Tarsus.AuditTrail.RecordCategoryPhase",
       [] {
         return Changed(kPrograms / "TarsusComponents.dll", Wide("RecordCategoryPhase"), Wide("RecordCategoryPhasx"));
       }},
      {"catalogue table MSG_ENGLISX", [] { return Changed(kDatabases / "System.db", "MSG_ENGLISH", "MSG_ENGLISX"); }},
      {"catalogue text 60326", [] { return WithoutCatalogueText(60326); }},
      {"view V_MUSER", [] { return Altered(kDatabases / "Users.db"); }},
      {"study databases: SELECT * FROM Patient.dbo.T_TPATIENT", [] { return Altered(kDatabases / "Patient.db"); }},
      {"BackupList.ini [MENU_RESTORE]",
       [] { return Changed(kSystem / "BackupList.ini", "[MENU_RESTORE]", "[MENU RESTORE]"); }},
      {"BackupList.ini [LOG_BACKUP] EventLog=%System%\\BackupEventLog.exe",
       [] { return Altered(kSystem / "BackupEventLog.exe"); }},
      {"BackupVersion.ini MenuData", [] { return Changed(kSystem / "BackupVersion.ini", "MenuData=", "Menu="); }},
      {"C:\\Tarsus\\System\\Maintenance.js", [] { return Altered(kSystem / "Maintenance.js"); }},
  };
  for (const auto& [expected, plant] : faults) {
    SCOPED_TRACE(expected);
    const Fault fault = plant();
    DWORD code = 0;
    const std::string output = Check(code);
    EXPECT_GT(code, 0U);
    EXPECT_NE(output.find("MISSING  " + std::string(expected)), std::string::npos) << output;
    EndHostsOfComponents();
  }
}

}  // namespace
}  // namespace endtoend
