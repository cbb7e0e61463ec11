// Backups that succeed: what reaches the destination, and what is left as it was.
#include <gtest/gtest.h>

#include "unit/flows/Session.h"

namespace flows {
namespace {

using Cabinets = std::map<std::string, fakes::CabinetContents>;

const fakes::CabinetContents kPatient = {{"Patients.bcp", "dump of patients"},
                                         {"Patient\\patients.dat", "list of patients"},
                                         {"Patient\\Study1\\image1.dat", "pixels of image 1"},
                                         {"Patient\\Study1\\image2.dat", "pixels of image 2"}};
const fakes::CabinetContents kSystem = {{"system.ini", "station=1"},
                                        {"Tarsus.reg", "registry of HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvantis\\TARSUS"}};
const fakes::CabinetContents kLog = {{"Application.evt", "events"},
                                     {"ip.dat", "41"},
                                     {"Host\\host.log", "host log"},
                                     {"Host\\Old\\old.log", "old host log"}};
const fakes::CabinetContents kReport = {{"Report\\2012\\report1.txt", "no finding"}};
const Cabinets kSystemGroup = {{"ExplanationData.cab", {{"Explain\\hand.txt", "positioning of the hand"}}},
                               {"MenuData.cab", {{"Menu\\menu.ini", "menu=1"}}},
                               {"ReportSetData.cab", {{"ReportSet\\set.dat", "report set"}}},
                               {"SystemData.cab", kSystem},
                               {"UserData.cab", {{"User\\users.dat", "users"}}}};

Cabinets All() {
  Cabinets all = kSystemGroup;
  all.insert({{"PatientData.cab", kPatient}, {"LogData.cab", kLog}, {"ReportData.cab", kReport}});
  return all;
}

struct Choice {
  const char* name;
  Ticks ticks;
  Cabinets cabinets;
  std::vector<std::string> versions;  ///< categories of the descriptor, in its order
  std::vector<std::string> audit;
};

void PrintTo(const Choice& choice, std::ostream* out) {
  *out << choice.name;
}

const Choice kChoices[] = {
    {"Patient", {.patient = true}, {{"PatientData.cab", kPatient}}, {"PatientData"}, {"Patient data"}},
    {"System",
     {.system = true},
     kSystemGroup,
     {"MenuData", "SystemData", "UserData", "ExplanationData", "ReportSetData"},
     {"System group"}},
    {"Log", {.log = true}, {{"LogData.cab", kLog}}, {"IPCounter"}, {"Log data"}},
    {"Report", {.report = true}, {{"ReportData.cab", kReport}}, {"ReportData"}, {"Report data"}},
    {"All",
     kEverything,
     All(),
     {"PatientData", "MenuData", "SystemData", "UserData", "ExplanationData", "IPCounter", "ReportSetData",
      "ReportData"},
     {"Patient data", "System group", "Log data", "Report data"}},
};

std::string Descriptor(const Cabinets& cabinets, const std::vector<std::string>& versions) {
  std::string text = "[Info]\r\nAppVersion=3.00\r\nDate=2012/03/15 09:30:12\r\nAppType=Tarsus\r\nCABFile=";
  for (const auto& [name, contents] : cabinets) text += name + ";";
  text += "\r\n\r\n[VersionInfo]\r\n";
  for (const std::string& category : versions) text += category + "=V2.1\r\n";
  return text + "\r\n";
}

/// Every file of the destination, the cabinets unpacked.
void ExpectSet(Session& session, const std::string& folder, const Choice& choice) {
  auto files = session.disk.Tree(folder);
  EXPECT_EQ(files["BackupInfo.ini"], Descriptor(choice.cabinets, choice.versions));
  files.erase("BackupInfo.ini");
  Cabinets found;
  for (const auto& [name, bytes] : files) found[name] = session.Unpacked(folder + "\\" + name);
  EXPECT_EQ(found, choice.cabinets);
}

class BackupOf : public testing::TestWithParam<Choice> {};

TEST_P(BackupOf, ReachesTheProposedFolderWhole) {
  const Choice& choice = GetParam();
  Session session;
  session.BeginBackup(choice.ticks);
  session.AcceptFolder();
  session.person.ExpectMessage(64302, app::kConsented).ExpectMessage(65300);
  session.EndMenu();
  session.Run();

  ExpectSet(session, kProposal, choice);
  EXPECT_EQ(session.ChangedHostFiles(), std::vector<std::string>());
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
  EXPECT_EQ(session.qx32.texts["BackupDate"], "20120315");
  std::vector<std::string> audit = {"U004|Sign-in|Backup"};
  for (const std::string& category : choice.audit) audit.push_back("U004|Start|" + category);
  audit.push_back("U004|Sign-out|Backup");
  EXPECT_EQ(session.Told().auditRecords, audit);
  EXPECT_EQ(session.Told().logLines,
            (std::vector<std::string>{"Start Backup Utility", "Start Select Information for Backup", "Start Backup",
                                      "Start Select Folder", "Selected Folder", "Finish Backup Utility"}));
  for (const auto& program : session.processes.started) {
    EXPECT_EQ(program.style, host::WindowStyle::Hidden) << program.commandLine;
    EXPECT_TRUE(program.waitedFor) << program.commandLine;
  }
}

INSTANTIATE_TEST_SUITE_P(All, BackupOf, testing::ValuesIn(kChoices), [](const auto& test) { return test.param.name; });

// Other destinations of the same backup: a root, a folder that was browsed to, an existing one.
TEST(Backup, GoesWhereTheOperatorWants) {
  for (const std::string folder : {"D:\\", "C:\\Safe", "C:\\Safe\\"}) {
    SCOPED_TRACE(folder);
    Session session;
    session.disk.MakeFolders("C:\\Safe");
    session.disk.FindDrive("C:")->label = "BACKUP";
    session.BeginBackup({.report = true});
    session.person.Expect<frmSelectFolder>([](frmSelectFolder& form) { fakes::Press(form.cmdRefer); });
    session.person.ExpectBrowse(folder);
    session.AcceptFolder();
    session.person.ExpectMessage(65300);
    session.EndMenu();
    session.Run();
    ExpectSet(session, folder, kChoices[3]);
    EXPECT_EQ(session.shell.lastTitle, "Choose a folder");
    EXPECT_TRUE(session.components.Logged("Refer Folder"));
  }
}

TEST(Backup, ShowsNeededAndFreeSpaceAndFollowsTheMedium) {
  Session session;
  session.disk.Write("C:\\Tarsus\\Report\\big.dat", std::string(1572864, 'x'));
  session.disk.FindDrive("D:")->capacity = std::uint64_t{10240} * 1024 * 1024;
  session.BeginBackup({.report = true});
  session.person.Expect<frmSelectFolder>([&](frmSelectFolder& form) {
    EXPECT_EQ(form.txtFolder.Text(), kProposal);
    EXPECT_EQ(form.txtCapacity.Text(), "1.50MB / 10,240.00MB");
    EXPECT_TRUE(form.txtCapacity.Visible());
    session.disk.FindDrive("D:")->ready = false;
    form.OnDeviceChanged(2);
    EXPECT_EQ(form.txtCapacity.Text(), "1.50MB / -MB");
    session.disk.FindDrive("D:")->ready = true;
    form.OnDeviceChanged(3);
    EXPECT_EQ(form.txtCapacity.Text(), "1.50MB / -MB") << "not a volume";
    fakes::Press(form.cmdCancel);
  });
  session.LeaveBackup();
  session.Run();
  EXPECT_TRUE(session.components.Logged("Cancel Select Folder"));
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
}

TEST(Backup, StartNeedsATickAndLogDeletionNeedsTheLogs) {
  Session session;
  session.SignIn(fakes::kBackupUser);
  session.OpenBackup();
  session.person.Expect<frmBackup>([](frmBackup& form) {
    EXPECT_TRUE(form.chkPatientData.Value() && form.chkLogData.Value() && form.chkDeleteLog.Enabled());
    EXPECT_FALSE(form.chkSystemData.Value() || form.chkReportData.Value());
    fakes::Tick(form.chkLogData, false);
    EXPECT_FALSE(form.chkDeleteLog.Enabled());
    EXPECT_TRUE(form.cmdStart.Enabled());
    fakes::Tick(form.chkPatientData, false);
    EXPECT_FALSE(form.cmdStart.Enabled());
    fakes::Tick(form.chkReportData);
    EXPECT_TRUE(form.cmdStart.Enabled());
    fakes::Press(form.cmdCancel);
  });
  session.EndMenu();
  session.Run();
  EXPECT_TRUE(session.processes.started.empty());
}

// Of the system group one category is enough.
TEST(Backup, SystemGroupIsContentWithOneCategory) {
  Session session;
  for (const char* folder : {"Menu", "Explain", "ReportSet"}) session.disk.Remove(std::string("C:\\Tarsus\\") + folder);
  session.disk.Remove("C:\\Tarsus\\Config\\system.ini");
  session.disk.Remove("C:\\Windows\\System32\\Reg.exe");
  session.BeginBackup({.system = true});
  session.AcceptFolder();
  session.person.ExpectMessage(64302, app::kConsented).ExpectMessage(65300);
  session.EndMenu();
  session.Run();
  ExpectSet(session, kProposal, {"User", {}, {{"UserData.cab", {{"User\\users.dat", "users"}}}}, {"UserData"}, {}});
}

TEST(Backup, ClientLogsAreTakenInBeforeTheLogs) {
  Session session;
  session.disk.Write("C:\\Tarsus\\Update\\Maintenance_PC1.cab",
                     fakes::MakeCabinet({{"Maintenance_PC1_120314101010\\client.log", "of a client"}}));
  session.BeginBackup({.log = true});
  session.AcceptFolder();
  session.person.ExpectMessage(64302, app::kConsented).ExpectMessage(65300);
  session.EndMenu();
  session.Run();
  EXPECT_EQ(session.disk.Read("C:\\Tarsus\\ClientLog\\Maintenance_PC1_120314101010\\client.log"), "of a client");
  EXPECT_TRUE(session.disk.Children("C:\\Tarsus\\Update").empty());
}

TEST(Backup, DeletesTheHostsLogsOnlyAfterConsentAndSuccess) {
  Session session;
  session.disk.Find("C:\\Tarsus\\System\\Tarsus.log")->attributes = fakes::kReadOnly;
  Ticks ticks{.log = true};
  ticks.deleteLogs = true;
  session.BeginBackup(ticks);
  session.AcceptFolder();
  session.person.ExpectMessage(64304, app::kConsented)
      .ExpectMessage(64302, app::kConsented)
      .ExpectMessage(65300, 0, [&] {
        EXPECT_TRUE(session.disk.IsFile("C:\\Tarsus\\Log\\Host\\host.log")) << "not before the success was shown";
      });
  session.EndMenu();
  session.Run();
  EXPECT_EQ(session.ChangedHostFiles(), (std::vector<std::string>{"Log\\Host\\host.log", "System\\Tarsus.log"}));
  EXPECT_EQ(session.disk.Read("C:\\Tarsus\\Log\\Host\\Old\\old.log"), "old host log");
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
}

// The dialog stays open after a cancelled destination; what was chosen before is not in the next set.
TEST(Backup, NextStartKnowsNothingOfTheFirst) {
  Session session;
  session.BeginBackup(kEverything);
  session.CancelFolder();
  session.StartBackup({.report = true});
  session.AcceptFolder("D:\\");
  session.person.ExpectMessage(65300);
  session.EndMenu();
  session.Run();
  ExpectSet(session, "D:\\", kChoices[3]);
}

// A host whose temporary folder cannot be had, and one that names no media drive.
TEST(Backup, FallsBackToTheSystemDrive) {
  Session session;
  session.files.temporaryFolder.clear();
  session.qxNetDB.records.clear();
  session.BeginBackup({.report = true});
  session.person.Expect<frmSelectFolder>([](frmSelectFolder& form) {
    EXPECT_EQ(form.txtFolder.Text(), ":\\20120315093012\\");
    fakes::Type(form.txtFolder, "D:\\");
    fakes::Press(form.cmdOK);
  });
  session.person.ExpectMessage(65300);
  session.EndMenu();
  session.Run();
  ExpectSet(session, "D:\\", kChoices[3]);
  EXPECT_GT(session.calls.CountOf("FileSystem", "RemoveFolder"), 0u);
  EXPECT_FALSE(session.disk.IsFolder("C:\\120315093012"));
}

}  // namespace
}  // namespace flows
