// The demo workstation: a small radiology station with data of every category.
#include "fakes/FakeHost.h"

namespace fakes {
namespace {

constexpr std::uint64_t kMiB = 1024 * 1024;

void FillLibraries(FakeHost& host) {
  auto& paths = host.qx32.pathTable;
  for (const std::string name : {"Log", "System", "Config", "ClientLog", "Update", "Temp", "Image", "Data"})
    paths[name] = "C:\\Tarsus\\" + name;
  paths.insert({{"SysMasterDB", "DSN=SysMaster"},
                {"LangStrDB", "Provider=Jet;Data Source=C:\\Tarsus\\Data\\LangStr.mdb"},
                {"ApplicationRoot", "C:\\Tarsus"},
                {"UserFolder", "C:\\Tarsus\\User\\"},
                {"Param", "C:\\Tarsus\\Param\\"},
                {"NetConfigDB", "C:\\Tarsus\\Data\\NetConfig.mdb"},
                {"DeleteListDB", "C:\\Tarsus\\Data\\DeleteList.mdb"}});
  host.qx32.texts = {{"PathAppl", "C:\\Tarsus"},
                     {"ApplicationName", "Tarsus.exe"},
                     {"Application", "C:\\Tarsus\\System"},
                     {"Font", "Tahoma"}};
  for (const char* size : {"SS", "S", "M", "L", "LL"})
    host.qx32.numbers[std::string("BackupUtility\\BUFontSize") + size] = 9;
  std::uint32_t colour = 0x101010;
  for (const char* name : {"Back", "Btn", "Str", "Ctrl", "Text", "CtrlR", "TextR"})
    host.qx32.numbers[std::string("BackupUtility\\Color") + name] = colour += 0x101010;
  host.qx32lib.connection = "DSN=SysMaster";
  host.qx32lib.values = {{"SysConfig/MsgTableName", "EN:T_MESSAGE"}};
  host.qxNetDB.location = "C:\\Tarsus\\Data\\NetConfig.mdb";
  host.qxNetDB.records = {{"READABLE", "R", "", "NONE", "reader.exe"}, {"WRITABLE", "D", "", "STANDARD", "dvdram.exe"}};
}

void FillCatalogue(FakeHost& host) {
  auto& rows = host.catalogue.rows;
  const std::pair<int, const char*> texts[] = {{10000, "Sign-in"},
                                               {10001, "Sign-out"},
                                               {10002, "Start"},
                                               {10003, "End"},
                                               {66000, "Backup"},
                                               {60444, "Copying a disk"},
                                               {66071, "Choose a folder"},
                                               {66080, "note 66080"},
                                               {66081, "note 66081"},
                                               {61300, "backup warnings"},
                                               {61400, "restore warnings"},
                                               {61450, "maintenance warnings"}};
  for (const auto& [id, text] : texts) rows[base::MessageId{id}] = text;
  int category = 66090;
  for (const char* name : {"Patient data", "System group", "Log data", "Menu data", "System data", "User data",
                           "Explanations", "IP counter", "Report data"})
    rows[base::MessageId{category++}] = name;
  for (int id = 66001; id <= 66157; ++id)
    if (id <= 66063 || (id >= 66100 && id <= 66120) || id >= 66140)
      rows.try_emplace(base::MessageId{id}, "text " + std::to_string(id));
}

void FillPeople(FakeHost& host) {
  host.Told().users = {{kBackupUser, "U001", "secret", {2601}},
                       {kRestoreUser, "U002", "secret", {2801}},
                       {kBothUser, "U003", "secret", {2601, 2801}},
                       {kServiceUser, "U004", "secret", {}, 6},
                       {kPowerlessUser, "U005", "secret", {1001}}};
  host.Told().studies = {{"SELECT * FROM Patient.dbo.T_TPATIENT", {{{"P1"}, {"P2"}, {"P3"}}}},
                         {"SELECT * FROM Study.dbo.T_TSTUDY", {{{"S1"}, {"S2"}}}},
                         {"SELECT * FROM UserData.dbo.T_MUSER", {{{"U1"}}}},
                         {"SELECT RIGHT(URL,LEN(URL)-7)", {}}};
}

void FillDisks(FakeHost& host) {
  host.disk.AddDrive('C', "SYSTEM", 4096 * kMiB);
  host.disk.AddDrive('D', "BACKUP", 700 * kMiB);
  host.disk.AddDrive('A', "", 1457664);
  host.disk.AddDrive('R', "READER", 700 * kMiB).ready = false;
  for (const char* folder : {"C:\\Users\\Operator\\Temp", "C:\\Users\\Operator\\Desktop", "C:\\Tarsus\\Log",
                             "C:\\Tarsus\\ClientLog", "C:\\Tarsus\\Update", "C:\\Tarsus\\Temp", kProgramFolder})
    host.disk.MakeFolders(folder);
  host.disk.Write("C:\\Tarsus\\System\\Directory.ini", "[Directory]\r\n");
  host.disk.Write("C:\\Tarsus\\Config\\Station.mdb", std::string("station") + FakeCompactor::kSlack);
  host.disk.Write("C:\\Tarsus\\Param\\Protocol.mdb", std::string("protocol") + FakeCompactor::kSlack);
  host.disk.Write("C:\\Tarsus\\Data\\DeleteList.mdb", "deleted.dat\n");
  host.disk.Write("C:\\Tarsus\\System\\Tarsus.log", "host log");
  host.disk.SetCurrentFolder(kProgramFolder);
}

void FillData(FakeHost& host) {
  const std::map<std::string, std::string> files = {{"Patient\\Study1\\image1.dat", "pixels of image 1"},
                                                    {"Patient\\Study1\\image2.dat", "pixels of image 2"},
                                                    {"Patient\\patients.dat", "list of patients"},
                                                    {"Menu\\menu.ini", "menu=1"},
                                                    {"Config\\system.ini", "station=1"},
                                                    {"User\\users.dat", "users"},
                                                    {"Explain\\hand.txt", "positioning of the hand"},
                                                    {"ReportSet\\set.dat", "report set"},
                                                    {"Report\\2012\\report1.txt", "no finding"},
                                                    {"Log\\Host\\host.log", "host log"},
                                                    {"Log\\Host\\Old\\old.log", "old host log"},
                                                    {"Counter\\ip.dat", "41"}};
  for (const auto& [path, bytes] : files) host.disk.Write("C:\\Tarsus\\" + path, bytes);
}

void FillJobs(FakeHost& host) {
  const std::pair<const char*, std::vector<std::string>> sections[] = {
      {"[PATIENT_BACKUP]",
       {"BatFile=%System%\\DumpPatients.bat", "CommonFile=%Data%\\Patients.bcp", "Folder=C:\\Tarsus\\Patient"}},
      {"[MENU_BACKUP]", {"Folder=Menu"}},
      {"[SYSTEM_BACKUP]", {"CommonFile=C:\\Tarsus\\Config\\*.ini", "RegFile="}},
      {"[USER_BACKUP]", {"Folder=User\\"}},
      {"[EXPLANATION_BACKUP]", {"Folder=Explain"}},
      {"[LOG_BACKUP]", {"EventLog=", "CommonFile=C:\\Tarsus\\Counter\\ip.dat", "Folder=C:\\Tarsus\\Log\\Host"}},
      {"[REPORTSET_BACKUP]", {"Folder=ReportSet"}},
      {"[REPORT_BACKUP]", {"Folder=Report"}},
      {"[LOG_DELETE]", {"CommonFile=%System%\\*.log", "Folder=C:\\Tarsus\\Log\\Host"}},
      {"[PATIENT_RESTORE]",
       {"CommonFile=%Data%\\Patients.bcp", "BatFile=%System%\\LoadPatients.bat", "Folder=C:\\Tarsus\\Patient"}},
      {"[MENU_RESTORE]", {"Folder=Menu"}},
      {"[SYSTEM_RESTORE]", {"CommonFile=C:\\Tarsus\\Config\\system.ini"}},
      {"[USER_RESTORE]", {"Folder=User"}},
      {"[EXPLANATION_RESTORE]", {"Folder=Explain"}},
      {"[IPCOUNTER_RESTORE]", {"CommonFile=C:\\Tarsus\\Counter\\ip.dat"}},
      {"[REPORTSET_RESTORE]", {"Folder=ReportSet"}},
      {"[REPORT_RESTORE]", {"Folder=Report"}},
      {"[MAINTENANCE]", {"BatFile=%System%\\DumpPatients.bat", "EventLog=", "Folder=C:\\Tarsus\\Log\\Host"}},
      {"[PERSONALINFOPROTECTION]", {"EventLog=", "PersonalInfo=%Image%\\"}}};
  std::vector<std::string> jobs = {"; jobs of the demo workstation"};
  for (const auto& [name, items] : sections) {
    jobs.emplace_back(name);
    jobs.insert(jobs.end(), items.begin(), items.end());
  }
  host.WriteLines("C:\\Tarsus\\System\\BackupList.ini", jobs);
  std::vector<std::string> versions = {"[Version]"};
  for (const char* category : {"PatientData", "MenuData", "SystemData", "UserData", "ExplanationData", "IPCounter",
                               "ReportSetData", "ReportData"})
    versions.push_back(std::string(category) + "=V2.1");
  host.WriteLines("C:\\Tarsus\\System\\BackupVersion.ini", versions);
}

// Batch files and programs that write a file into their own folder.
ProgramAction Writes(const std::string& name, const std::string& bytes) {
  return [=](Disk& disk, const Words&) { return disk.Write(name, bytes) ? 0u : 1u; };
}

void InstallPrograms(FakeHost& host) {
  FakeProcesses& programs = host.processes;
  programs.Install("C:\\Windows\\System32\\CMD.exe", RunCommandInterpreter);
  programs.Install("C:\\Windows\\System32\\Reg.exe", RunReg);
  programs.Install("C:\\Windows\\System32\\cscript.exe", [](Disk&, const Words&) { return 0u; });
  programs.Install("C:\\Tarsus\\Backup\\cabarc.exe", RunCabarc);
  programs.Install("C:\\Tarsus\\System\\Tarsus.exe", [](Disk&, const Words&) { return 0u; });
  programs.Install("C:\\Tarsus\\System\\BackupEventLog.exe", Writes("Application.evt", "events"));
  programs.Install("C:\\Tarsus\\System\\DumpPatients.bat",
                   Writes("C:\\Tarsus\\Data\\Patients.bcp", "dump of patients"));
  programs.Install("C:\\Tarsus\\System\\LoadPatients.bat", Writes("C:\\Tarsus\\Data\\Loaded.txt", "loaded"));
  programs.Install("C:\\Tarsus\\Temp\\StudyDB\\BCP\\Export_StudyDB_TXT.bat", Writes("T_TSTUDY.txt", "all studies"));
  programs.Install("C:\\Tarsus\\Temp\\StudyDB\\BCP\\Export_StudyDB_TXT_PP.bat",
                   Writes("T_TSTUDY.txt", "studies without names"));
}

}  // namespace

void FillDemoWorkstation(FakeHost& host) {
  FillLibraries(host);
  FillCatalogue(host);
  FillPeople(host);
  FillDisks(host);
  FillData(host);
  FillJobs(host);
  InstallPrograms(host);
}

}  // namespace fakes
