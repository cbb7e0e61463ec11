// The integrator's check tool: it finds nothing wrong with a complete host, and names each thing that is missing.

#include <functional>
#include <memory>

#include "cases/EndToEndTest.h"
#include "common/Database.h"

namespace endtoend {
namespace {

const fs::path kPrograms = kTarsus / "Program";
const fs::path kSystem = kTarsus / "System";
const fs::path kDatabases = kTarsus / "Database";

/// Something that is wrong with the host, as long as it lives.
using Fault = std::shared_ptr<void>;

Fault Without(const fs::path& path) {
  return std::make_shared<Missing>(path);
}

Fault Changed(const fs::path& path, const std::string& from, const std::string& to) {
  const std::string before = ReadBytes(path), after = Replaced(before, from, to);
  EXPECT_NE(before, after) << from;
  return std::make_shared<Altered>(path, after);
}

/// ASCII text as it stands in a program's wide strings.
std::string Wide(const std::string& text) {
  std::string wide;
  for (const char c : text) wide += {c, '\0'};
  return wide;
}

Fault WithoutCatalogueText(int id) {
  const fs::path path = kDatabases / "Language.db";
  auto kept = std::make_shared<Altered>(path, ReadBytes(path));
  const auto database = reference::Database::Open("DRIVER=SQLite3;Database=" + Utf8(path.wstring()));
  EXPECT_TRUE(database && database->Run("DELETE FROM MSG_ENGLISH WHERE ID = " + std::to_string(id)));
  return kept;
}

class Unregistered {
 public:
  explicit Unregistered(const std::wstring& progId) : key_(L"Software\\Classes\\" + progId + L"\\CLSID") {
    DWORD size = sizeof(value_);
    RegGetValueW(HKEY_LOCAL_MACHINE, key_.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, value_, &size);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, key_.c_str());
  }
  ~Unregistered() { RegSetKeyValueW(HKEY_LOCAL_MACHINE, key_.c_str(), nullptr, REG_SZ, value_, sizeof(value_)); }
  Unregistered(const Unregistered&) = delete;
  Unregistered& operator=(const Unregistered&) = delete;

 private:
  std::wstring key_;
  wchar_t value_[39] = L"";  // a GUID in braces
};

class HostCheck : public EndToEndTest {
 protected:
  void SetUp() override {
    EndToEndTest::SetUp();
    EndHostsOfComponents();
  }

  /// Wine starts a process for a component whose DLL it cannot load; that one takes the DLL as soon as it is
  /// back, and nobody can write to it then.
  static void EndHostsOfComponents() { EndAll(L"dllhost.exe"); }

  struct Result {
    DWORD code;
    std::string output;
  };

  static Result Check() {
    const fs::path output = fs::temp_directory_path() / "check.txt";
    Program program("cmd /c \"\"" + Utf8((kPrograms / "QXHostCheck.exe").wstring()) + "\" >" + Utf8(output.wstring()) +
                    "\"");
    const DWORD code = program.WaitForEnd();
    return {code, ReadBytes(output)};
  }
};

TEST_F(HostCheck, FindsNothingMissingAndChangesNothing) {
  const auto before = Snapshot(kTarsus);
  const Result result = Check();
  EXPECT_EQ(result.code, 0U) << result.output;
  EXPECT_NE(result.output.find("\r\n0 missing\r\n"), std::string::npos);
  EXPECT_TRUE(Snapshot(kTarsus) == before);
}

TEST_F(HostCheck, NamesEachThingThatIsMissing) {
  const struct {
    const char* expected;
    std::function<Fault()> plant;
  } faults[] = {
      {"QX32lib.dll", [] { return Without(kPrograms / "QX32lib.dll"); }},
      {"QXNetDB.dll export QXNetDBGetDriveInfo",
       [] { return Changed(kPrograms / "QXNetDB.dll", "QXNetDBGetDriveInfo", "QXNetDBGetDriveInfx"); }},
      {"registry BackupUtility\\ColorTextR",
       [] { return std::make_shared<MissingRegistryValue>(L"BackupUtility", L"ColorTextR"); }},
      {"Directory.ini", [] { return Without(kSystem / "Directory.ini"); }},
      {"path table DeleteListDB", [] { return Changed(kSystem / "Directory.ini", "\nDeleteListDB=", "\nx="); }},
      {"path table Image = C:\\Tarsus\\Data\\Gone",
       [] { return Changed(kSystem / "Directory.ini", "Data\\Image.ddo", "Data\\Gone"); }},
      {"BackupList.ini [PATIENT_BACKUP] CommonFile=%Database%\\Patient.db",
       [] { return Changed(kSystem / "Directory.ini", "\nDatabase=", "\nx="); }},
      {"component Tarsus.AuditTrail (not registered)",
       [] { return std::make_shared<Unregistered>(L"Tarsus.AuditTrail"); }},
      {"component Tarsus.UserQuery (cannot be created)", [] { return Without(kPrograms / "TarsusComponents.dll"); }},
      {"component Tarsus.AuditTrail.RecordCategoryPhase",
       [] {
         return Changed(kPrograms / "TarsusComponents.dll", Wide("RecordCategoryPhase"), Wide("RecordCategoryPhasx"));
       }},
      {"catalogue table MSG_ENGLISX", [] { return Changed(kDatabases / "System.db", "MSG_ENGLISH", "MSG_ENGLISX"); }},
      {"catalogue text 60326", [] { return WithoutCatalogueText(60326); }},
      {"view V_MUSER", [] { return Without(kDatabases / "Users.db"); }},
      {"study databases: SELECT * FROM Patient.dbo.T_TPATIENT", [] { return Without(kDatabases / "Patient.db"); }},
      {"BackupList.ini [MENU_RESTORE]",
       [] { return Changed(kSystem / "BackupList.ini", "[MENU_RESTORE]", "[MENU RESTORE]"); }},
      {"BackupList.ini [LOG_BACKUP] EventLog=%System%\\BackupEventLog.exe",
       [] { return Without(kSystem / "BackupEventLog.exe"); }},
      {"BackupVersion.ini MenuData", [] { return Changed(kSystem / "BackupVersion.ini", "MenuData=", "Menu="); }},
      {"C:\\Tarsus\\System\\Maintenance.js", [] { return Without(kSystem / "Maintenance.js"); }},
  };
  for (const auto& [expected, plant] : faults) {
    SCOPED_TRACE(expected);
    const Fault fault = plant();
    const Result result = Check();
    EXPECT_GT(result.code, 0U);
    EXPECT_NE(result.output.find("MISSING  " + std::string(expected)), std::string::npos) << result.output;
    EndHostsOfComponents();
  }
}

}  // namespace
}  // namespace endtoend
