// Backups that succeed: what reaches the destination, and what is left as it was.
#include "unit/Session.h"

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
  Ticks ticks;
  Cabinets cabinets;
  Paths versions;  ///< categories of the descriptor, in its order
  Paths audit;
};

const Choice kReportChoice = {kReportOnly, {{"ReportData.cab", kReport}}, {"ReportData"}, {"Report data"}};
const Choice kChoices[] = {
    {{.patient = true}, {{"PatientData.cab", kPatient}}, {"PatientData"}, {"Patient data"}},
    {{.system = true},
     kSystemGroup,
     {"MenuData", "SystemData", "UserData", "ExplanationData", "ReportSetData"},
     {"System group"}},
    {{.log = true}, {{"LogData.cab", kLog}}, {"IPCounter"}, {"Log data"}},
    kReportChoice,
    {kEverything,
     All(),
     {"PatientData", "MenuData", "SystemData", "UserData", "ExplanationData", "IPCounter", "ReportSetData",
      "ReportData"},
     {"Patient data", "System group", "Log data", "Report data"}},
};

/// Every file of the destination, the cabinets unpacked.
void ExpectSet(Session& session, const std::string& folder, const Choice& choice = kReportChoice) {
  std::string descriptor = Lines(DescriptorLines()) + "CABFile=";
  for (const auto& [name, contents] : choice.cabinets) descriptor += name + ";";
  descriptor += "\r\n\r\n[VersionInfo]\r\n";
  for (const std::string& category : choice.versions) descriptor += category + "=V2.1\r\n";
  auto files = session.disk.Tree(folder);
  EXPECT_EQ(files["BackupInfo.ini"], descriptor + "\r\n");
  files.erase("BackupInfo.ini");
  Cabinets found;
  for (const auto& [name, bytes] : files) found[name] = session.Unpacked(folder + "\\" + name);
  EXPECT_EQ(found, choice.cabinets);
}

TEST(Backup, ReachesTheProposedFolderWhole) {
  for (const Choice& choice : kChoices) {
    SCOPED_TRACE(choice.audit.front());
    Session session;
    session.BeginBackup(choice.ticks);
    session.AcceptFolder();
    session.EndAfter({64302, 65300});
    ExpectSet(session, kProposal, choice);
    EXPECT_EQ(session.ChangedHostFiles(), Paths());
    EXPECT_EQ(session.qx32.texts["BackupDate"], "20120315");
    Paths audit = {"U004|Sign-in|Backup"};
    for (const std::string& category : choice.audit) audit.push_back("U004|Start|" + category);
    audit.push_back("U004|Sign-out|Backup");
    EXPECT_EQ(session.Told().auditRecords, audit);
    EXPECT_EQ(session.Told().logLines,
              (Paths{"Start Backup Utility", "Start Select Information for Backup", "Start Backup",
                     "Start Select Folder", "Selected Folder", "Finish Backup Utility"}));
    for (const auto& program : session.processes.started)
      EXPECT_TRUE(program.style == host::WindowStyle::Hidden && program.waitedFor) << program.commandLine;
  }
}

// Other destinations of the same backup: a root, a folder that was browsed to, an existing one.
TEST(Backup, GoesWhereTheOperatorWants) {
  for (const std::string folder : {"D:\\", "C:\\Safe", "C:\\Safe\\"}) {
    SCOPED_TRACE(folder);
    Session session;
    session.disk.MakeFolders("C:\\Safe");
    Label("C:", "BACKUP")(session);
    session.BeginBackup(kReportOnly);
    session.At<frmSelectFolder>([](frmSelectFolder& form) { fakes::Press(form.cmdRefer); });
    session.person.ExpectBrowse(folder);
    session.AcceptFolder();
    session.EndAfter({65300});
    ExpectSet(session, folder);
    EXPECT_EQ(session.shell.lastTitle, "Choose a folder");
    EXPECT_TRUE(session.components.Logged("Refer Folder"));
  }
}

TEST(Backup, ShowsNeededAndFreeSpaceAndFollowsTheMedium) {
  Session session;
  session.disk.Write("C:\\Tarsus\\Report\\big.dat", std::string(1572864, 'x'));
  session.disk.FindDrive("D:")->capacity = std::uint64_t{10240} * 1024 * 1024;
  session.BeginBackup(kReportOnly);
  session.At<frmSelectFolder>([&](frmSelectFolder& form) {
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
  session.LeaveBackupAfter({});
  EXPECT_TRUE(session.components.Logged("Cancel Select Folder"));
}

TEST(Backup, StartNeedsATickAndLogDeletionNeedsTheLogs) {
  Session session;
  session.SignIn(fakes::kBackupUser);
  session.OpenMenuItem(0);
  session.At<frmBackup>([](frmBackup& form) {
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
  session.EndAfter({});
  EXPECT_TRUE(session.processes.started.empty());
}

// Of the system group one category is enough.
TEST(Backup, SystemGroupIsContentWithOneCategory) {
  Session session;
  for (const char* lost : {"Menu", "Explain", "ReportSet", "Config\\system.ini"})
    session.disk.Remove(std::string("C:\\Tarsus\\") + lost);
  session.disk.Remove("C:\\Windows\\System32\\Reg.exe");
  session.BeginBackup({.system = true});
  session.AcceptFolder();
  session.EndAfter({64302, 65300});
  ExpectSet(session, kProposal, {{}, {{"UserData.cab", {{"User\\users.dat", "users"}}}}, {"UserData"}, {}});
}

TEST(Backup, ClientLogsAreTakenInBeforeTheLogs) {
  Session session;
  session.disk.Write("C:\\Tarsus\\Update\\Maintenance_PC1.cab",
                     fakes::MakeCabinet({{"Maintenance_PC1_120314101010\\client.log", "of a client"}}));
  session.BeginBackup({.log = true});
  session.AcceptFolder();
  session.EndAfter({64302, 65300});
  EXPECT_EQ(session.disk.Read("C:\\Tarsus\\ClientLog\\Maintenance_PC1_120314101010\\client.log"), "of a client");
  EXPECT_TRUE(session.disk.Children("C:\\Tarsus\\Update").empty());
}

TEST(Backup, DeletesTheHostsLogsOnlyAfterConsentAndSuccess) {
  Session session;
  session.disk.Find("C:\\Tarsus\\System\\Tarsus.log")->attributes = fakes::kReadOnly;
  session.BeginBackup({.log = true, .deleteLogs = true});
  session.AcceptFolder();
  session.See({64304, 64302});
  session.person.ExpectMessage(65300, 0, [&] {
    EXPECT_TRUE(session.disk.IsFile("C:\\Tarsus\\Log\\Host\\host.log")) << "not before the success was shown";
  });
  session.EndAfter({});
  EXPECT_EQ(session.ChangedHostFiles(), (Paths{"Log\\Host\\host.log", "System\\Tarsus.log"}));
  EXPECT_EQ(session.disk.Read("C:\\Tarsus\\Log\\Host\\Old\\old.log"), "old host log");
}

// The dialog stays open after a cancelled destination; what was chosen before is not in the next set.
TEST(Backup, NextStartKnowsNothingOfTheFirst) {
  Session session;
  session.BeginBackup(kEverything);
  session.Cancel<frmSelectFolder>();
  session.StartBackup(kReportOnly);
  session.AcceptFolder("D:\\");
  session.EndAfter({65300});
  ExpectSet(session, "D:\\");
}

TEST(Backup, StagesOnTheSystemDriveWithoutATemporaryFolder) {
  Session session;
  session.files.temporaryFolder.clear();
  session.BeginBackup(kReportOnly);
  session.AcceptFolder("D:\\");
  session.EndAfter({65300});
  ExpectSet(session, "D:\\");
  EXPECT_GT(session.calls.CountOf("FileSystem", "RemoveFolder"), 0u);
  EXPECT_FALSE(session.disk.IsFolder("C:\\120315093012"));
}

}  // namespace
