// Backups that succeed: what reaches the destination, and what is left as it was.
#include "unit/Session.h"

namespace {

using enum base::MessageId;

using Cabinets = std::map<std::string, fakes::CabinetContents>;

/// A folder of the host as an archive holds it, beside the files of other items.
fakes::CabinetContents Saved(Session& session, const std::string& folder, fakes::CabinetContents contents = {}) {
  const std::string name = folder.substr(folder.rfind('\\') + 1);
  for (const auto& [path, bytes] : session.disk.Tree("C:\\Tarsus\\" + folder)) contents[name + "\\" + path] = bytes;
  return contents;
}

/// What the archive of each category holds; that of the logs carries the counter.
Cabinets Contents(Session& session) {
  return {{"PatientData", Saved(session, "Patient", {{"Patients.bcp", "dump of patients"}})},
          {"MenuData", Saved(session, "Menu")},
          {"SystemData",
           {{"system.ini", "station=1"}, {"Tarsus.reg", "registry of HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvantis\\TARSUS"}}},
          {"UserData", Saved(session, "User")},
          {"ExplanationData", Saved(session, "Explain")},
          {"IPCounter", Saved(session, "Log\\Host", {{"Application.evt", "events"}, {"ip.dat", "41"}})},
          {"ReportSetData", Saved(session, "ReportSet")},
          {"ReportData", Saved(session, "Report")}};
}

/// Every file of the destination, the cabinets unpacked; categories in the descriptor's order.
void ExpectSet(Session& session, const std::string& folder, const Paths& categories = {"ReportData"}) {
  Cabinets wanted;
  Paths versions;
  for (const std::string& category : categories) {
    wanted[(category == "IPCounter" ? "LogData" : category) + ".cab"] = Contents(session).at(category);
    versions.push_back(category + "=V2.1");
  }
  std::string archives = "CABFile=";
  for (const auto& [name, contents] : wanted) archives += name + ";";
  auto files = session.disk.Tree(folder);
  EXPECT_EQ(files["BackupInfo.ini"],
            Lines(DescriptorLines({archives, "", "[VersionInfo]"})) + Lines(versions) + "\r\n");
  files.erase("BackupInfo.ini");
  Cabinets found;
  for (const auto& [name, bytes] : files) found[name] = session.Unpacked(folder + "\\" + name);
  EXPECT_EQ(found, wanted);
}

TEST(Backup, ReachesTheProposedFolderWhole) {
  const std::tuple<Ticks, Paths, Paths> choices[] = {
      {{.patient = true}, {"PatientData"}, {"Patient data"}},
      {{.system = true}, {"MenuData", "SystemData", "UserData", "ExplanationData", "ReportSetData"}, {"System group"}},
      {{.log = true}, {"IPCounter"}, {"Log data"}},
      {kReportOnly, {"ReportData"}, {"Report data"}},
      {kEverything,
       {"PatientData", "MenuData", "SystemData", "UserData", "ExplanationData", "IPCounter", "ReportSetData",
        "ReportData"},
       {"Patient data", "System group", "Log data", "Report data"}},
  };
  for (const auto& [ticks, categories, phases] : choices) {
    SCOPED_TRACE(phases.front());
    Session session;
    session.BackUpTo({}, ticks);
    session.EndAfter({AskMakeBackupFolder, BackupComplete});
    ExpectSet(session, kProposal, categories);
    EXPECT_EQ(session.ChangedHostFiles(), Paths());
    EXPECT_EQ(session.qx32.texts["BackupDate"], "20120315");
    Paths audit = {"U004|Sign-in|Backup"};
    for (const std::string& category : phases) audit.push_back("U004|Start|" + category);
    audit.push_back("U004|Sign-out|Backup");
    EXPECT_EQ(session.Told().auditRecords, audit);
    const std::string who = "WS-RADIOLOGY-1|U004|BackupUtility|";
    EXPECT_EQ(session.Told().operations,
              (Paths{who + "UserAuthentication|OK", who + "MainMenu|Backup", who + "MainMenu|END"}));
    EXPECT_EQ(Heads(session.Told().logLines),
              (Paths{"Start Backup Utility", "Start User Authentication", "Signed in ", "Start Main Menu",
                     "Start Select Information for Backup", "Start Backup", "Backup gathered", "Start Select Folder",
                     "Selected Folder", "Read back and compared", "Backup written to D", "Finish Backup Utility"}));
    for (const auto& program : session.processes.started)
      EXPECT_TRUE(program.style == host::WindowStyle::Hidden && program.waitedFor) << program.commandLine;
  }
}

// Other destinations of the same backup: a root, a folder that was browsed to, an existing one.
TEST(Backup, GoesWhereTheOperatorWants) {
  for (const std::string folder : {"D:\\", "C:\\Safe", "C:\\Safe\\"}) {
    SCOPED_TRACE(folder);
    Session session(Label("C:", "BACKUP"));
    session.disk.MakeFolders("C:\\Safe");
    session.BeginBackup(kReportOnly);
    session.Press(&frmSelectFolder::cmdRefer);
    session.person.ExpectBrowse(folder);
    session.AcceptFolder();
    session.EndAfter({BackupComplete});
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
    fakes::Press(form.cmdRefer);
    EXPECT_EQ(form.txtCapacity.Text(), "1.50MB / 1.39MB");
    fakes::Press(form.cmdCancel);
  });
  session.person.ExpectBrowse("A:\\");
  session.LeaveBackupAfter({});
  EXPECT_TRUE(session.components.Logged("Cancel Select Folder"));
}

TEST(Backup, StartNeedsATickAndLogDeletionNeedsTheLogs) {
  Session session;
  session.SignIn(fakes::kBackupUser);
  session.OpenMenuItem(Menu::Backup);
  session.At<frmBackup>([](frmBackup& form) {
    EXPECT_TRUE(form.chkPatientData.Value() && form.chkLogData.Value() && form.chkDeleteLog.Enabled());
    EXPECT_FALSE(form.chkSystemData.Value() || form.chkReportData.Value());
    fakes::Tick(form.chkLogData, false);
    EXPECT_TRUE(form.cmdStart.Enabled() && !form.chkDeleteLog.Enabled());
    fakes::Tick(form.chkPatientData, false);
    EXPECT_FALSE(form.cmdStart.Enabled());
    fakes::Press(form.cmdCancel);
  });
  session.EndAfter({});
  EXPECT_TRUE(session.processes.started.empty());
}

// Of the system group one category is enough, and nothing of one that failed gets into its archive.
TEST(Backup, SystemGroupIsContentWithOneCategory) {
  Session session(Jobs({"[MENU_BACKUP]", "CommonFile=%X%\\a", "Folder=Menu", "[SYSTEM_BACKUP]", "Folder=None",
                        "[USER_BACKUP]", "Folder=User", "[EXPLANATION_BACKUP]", "[REPORTSET_BACKUP]"}));
  session.BeginBackup({.system = true});
  session.See({PathEntryUnreadable});
  session.AcceptFolder("D:\\");
  session.EndAfter({BackupWarnings, BackupComplete});
  ExpectSet(session, "D:\\", {"UserData"});
}

// A workstation may lawfully have nothing of a category: where nothing went wrong, nothing is warned of.
TEST(Backup, WhatThereIsNothingOfIsNotMissed) {
  Session session(Jobs({"[MENU_BACKUP]", "Folder=Menu", "[SYSTEM_BACKUP]", "Folder=Nothing", "[USER_BACKUP]",
                        "[EXPLANATION_BACKUP]", "[REPORTSET_BACKUP]"}));
  session.disk.MakeFolders("C:\\Tarsus\\Nothing");
  session.BackUpTo("D:\\", {.system = true});
  session.EndAfter({BackupComplete});
  ExpectSet(session, "D:\\", {"MenuData"});
}

// What an exporter leaves elsewhere than in its own files is still taken along.
TEST(Backup, FoldersAreGatheredAfterTheExporters) {
  Session session(Jobs({"[REPORT_BACKUP]", "Folder=Report", "RegFile=%Temp%\\ExportKeys.exe"}));
  session.processes.Install("C:\\Tarsus\\Temp\\ExportKeys.exe", [](fakes::Disk& disk, const fakes::Words&) {
    return disk.Write("C:\\Tarsus\\Report\\keys.txt", "keys") ? 0u : 1u;
  });
  session.BackUpTo("D:\\");
  session.EndAfter({BackupComplete});
  EXPECT_TRUE(session.Unpacked("D:\\ReportData.cab").contains("Report\\keys.txt"));
}

// The logs of this workstation are saved all the same.
TEST(Backup, ClientLogsMayBeOutOfReach) {
  Session session(NoEntry("Update"));
  session.BeginBackup({.log = true});
  session.See({PathEntryUnreadable});
  session.AcceptFolder("D:\\");
  session.EndAfter({BackupComplete});
  ExpectSet(session, "D:\\", {"IPCounter"});
}

TEST(Backup, DeletesTheHostsLogsOnlyAfterConsentAndSuccess) {
  Session session;
  session.disk.Find("C:\\Tarsus\\System\\Tarsus.log")->attributes = fakes::kReadOnly;
  session.BackUpTo("D:\\", kLogsToDelete);
  session.See({AskDeleteLogs});
  session.person.ExpectMessage(BackupComplete, [&] {
    EXPECT_TRUE(session.disk.IsFile("C:\\Tarsus\\Log\\Host\\host.log")) << "not before the success was shown";
  });
  session.EndAfter({});
  EXPECT_EQ(session.ChangedHostFiles(), (Paths{"Log\\Host\\host.log", "System\\Tarsus.log"}));
  EXPECT_EQ(session.disk.Read("C:\\Tarsus\\Log\\Host\\Old\\old.log"), "old host log");
}

// The box keeps its tick while it is disabled.
TEST(Backup, LogsThatAreNotSavedAreNotDeleted) {
  Session session;
  session.SignIn();
  session.OpenMenuItem(Menu::Backup);
  session.At<frmBackup>([](frmBackup& form) {
    fakes::Tick(form.chkDeleteLog);
    fakes::Tick(form.chkLogData, false);
    EXPECT_TRUE(form.chkDeleteLog.Value() && !form.chkDeleteLog.Enabled());
    fakes::Press(form.cmdStart);
  });
  session.AcceptFolder("D:\\");
  session.EndAfter({BackupComplete});
  ExpectSet(session, "D:\\", {"PatientData"});
  EXPECT_EQ(session.ChangedHostFiles(), Paths());
}

// A batch file may write the logs away into files that are deleted next; the event log and the registry may be exported
// into a folder that is emptied last.
TEST(Backup, LogsAreDeletedKindByKind) {
  const std::string folder = "C:\\Tarsus\\Log\\Host\\";
  Session session(
      Jobs({"[LOG_BACKUP]", "Folder=Log\\Host", "[LOG_DELETE]", "Folder=C:\\Tarsus\\Log\\Host", "RegFile=Registry.exe",
            "EventLog=Events.exe", "CommonFile=%Log%\\Host\\*.old", "BatFile=%System%\\Rotate.bat"}));
  session.disk.Write(folder + "week.old", "last week");
  Paths seen;
  const auto sees = [&](const std::string& program) {
    return [&, program](fakes::Disk& disk, const fakes::Words&) {
      seen.push_back(program + " in " + disk.CurrentFolder() + ":");
      for (const auto& [name, bytes] : disk.Tree(folder)) seen.back() += " " + name;
      return 0u;
    };
  };
  session.processes.Install("C:\\Tarsus\\System\\Rotate.bat", sees("Rotate"));
  session.processes.Install("C:\\Windows\\System32\\Events.exe", sees("Events"));
  session.processes.Install("C:\\Windows\\System32\\Registry.exe", sees("Registry"));
  session.BackUpTo("D:\\", kLogsToDelete);
  session.EndAfter({AskDeleteLogs, BackupComplete});
  EXPECT_EQ(seen, (Paths{"Rotate in C:\\Tarsus\\System: Old\\old.log host.log week.old",
                         "Events in " + std::string(kStagingFolder) + ": Old\\old.log host.log",
                         "Registry in " + std::string(kStagingFolder) + ": Old\\old.log host.log"}));
  EXPECT_EQ(NamesOf(session.disk.Tree(folder)), Names{"Old\\old.log"});
}

// Cancelled in the dialog, and after everything was collected.
TEST(Backup, IsWholeAfterACancelledMaintenanceLog) {
  for (const bool collected : {false, true}) {
    SCOPED_TRACE(collected);
    Session session;
    session.SignIn();
    session.OpenMenuItem(Menu::MaintenanceLog);
    if (collected) {
      session.StartMaintenance();
      session.Cancel<frmSelectFolder>();
    } else {
      session.Cancel<frmMaintenance>();
    }
    session.OpenMenuItem(Menu::Backup);
    session.StartBackup({.patient = true, .log = true, .deleteLogs = true});
    session.AcceptFolder();
    session.person.ExpectMessage(AskDeleteLogs, host::Answer::Consented);
    session.person.ExpectMessage(AskMakeBackupFolder, host::Answer::Consented);
    session.person.ExpectMessage(BackupComplete, [&] { ExpectSet(session, kProposal, {"PatientData", "IPCounter"}); });
    session.EndAfter({});
    EXPECT_EQ(session.state.CurrentOperation, app::Operation::Backup);
    EXPECT_TRUE(session.IsBackupDated());
    EXPECT_EQ(session.ChangedHostFiles(), (Paths{"Log\\Host\\host.log", "System\\Tarsus.log"}));
  }
}

TEST(Backup, StagesOnTheSystemDriveWithoutATemporaryFolder) {
  Session session([](auto& host) { host.files.temporaryFolder.clear(); });
  session.BackUpTo("D:\\");
  session.EndAfter({BackupComplete});
  ExpectSet(session, "D:\\");
  EXPECT_GT(session.calls.CountOf("FileSystem", "RemoveFolder"), 0u);
  EXPECT_FALSE(session.disk.IsFolder("C:\\120315093012"));
}

}  // namespace
