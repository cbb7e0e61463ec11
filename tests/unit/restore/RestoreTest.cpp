// Restores from a folder: everything back as it was, and every way in which one can fail.
#include "unit/Session.h"

namespace {

using enum base::MessageId;

/// The host system's files but for the program's own log and list of jobs.
MediumFiles HostFiles(Session& session) {
  MediumFiles files = session.disk.Tree("C:\\Tarsus");
  files.erase("Log\\BackupUtility.log");
  files.erase("Log\\BackupUtilityJobs.csv");
  return files;
}

void DamageEverything(Session& session) {
  for (const char* lost : {"Patient", "Explain", "Report\\2012", "Data\\Patients.bcp", "Config\\system.ini"})
    ASSERT_TRUE(session.disk.Remove(std::string("C:\\Tarsus\\") + lost));
  for (const char* changed : {"Menu\\menu.ini", "User\\users.dat", "ReportSet\\set.dat", "Counter\\ip.dat"})
    session.disk.Write(std::string("C:\\Tarsus\\") + changed, "damaged, and longer than it was before");
}

TEST(Restore, BringsEveryFileBack) {
  Session session;
  session.disk.Write("C:\\Tarsus\\Patient\\Study1\\image3.dat", std::string("\0\x1A\r\n\xFF", 5));
  session.BackUpEverything();
  MediumFiles expected = HostFiles(session);
  DamageEverything(session);
  // The common files stand in their place before a batch file runs, in its own folder; folders come after it.
  session.processes.Install("C:\\Tarsus\\System\\LoadPatients.bat", [](fakes::Disk& disk, const fakes::Words&) {
    EXPECT_FALSE(disk.IsFolder("C:\\Tarsus\\Patient"));
    const std::string dump = disk.Read("C:\\Tarsus\\Data\\Patients.bcp");
    return disk.Write("C:\\Tarsus\\Data\\Loaded.txt", dump + " in " + disk.CurrentFolder()) ? 0u : 1u;
  });
  expected["Data\\Loaded.txt"] = "dump of patients in C:\\Tarsus\\System";
  Before("cabarc", [&](auto&) {
    EXPECT_TRUE(session.disk.Children(std::string(kStagingFolder) + "\\CABFILE").empty()) << "left of another category";
  })(session);
  session.SignIn();
  session.OpenMenuItem(Menu::Restore);
  session.At<frmSelectFolder>([](frmSelectFolder& form) {
    EXPECT_EQ(form.txtFolder.Text(), "D:\\") << "the media drive itself: nobody knows which of its folders holds a set";
    EXPECT_FALSE(form.txtCapacity.Visible());
    fakes::Type(form.txtFolder, kSetFolder);
    fakes::Press(form.cmdOK);
  });
  session.StartRestore();
  session.EndAfter({AskReplaceIPCounter, RestoreComplete});

  EXPECT_EQ(HostFiles(session), expected);
  EXPECT_EQ(session.Told().auditRecords,
            (Paths{"U004|Sign-in|Backup", "U004|End|Patient data", "U004|End|Menu data", "U004|End|System data",
                   "U004|End|User data", "U004|End|Explanations", "U004|End|IP counter", "U004|Sign-out|Backup"}));
  const std::string who = "WS-RADIOLOGY-1|U004|BackupUtility|";
  EXPECT_EQ(session.Told().operations, (Paths{who + "UserAuthentication|OK", who + "MainMenu|Restore",
                                              who + "Start|Restore", who + "MainMenu|END"}));
  EXPECT_EQ(Heads(session.Told().logLines),
            (Paths{"Start Backup Utility", "Start User Authentication", "Signed in ", "Start Main Menu",
                   "Start Select Folder", "Selected Folder", "Start Select Information for Restore", "Start Restore",
                   "Archives are whole", "Restored PatientData", "Restored MenuData", "Restored SystemData",
                   "Restored UserData", "Restored ExplanationData", "Restored ReportSetData", "Restored ReportData",
                   "Restored IPCounter", "Restored from D", "Finish Backup Utility"}));
  Paths unpacked;
  for (const fakes::StartRecord& program : session.processes.started) {
    EXPECT_TRUE(program.style == host::WindowStyle::Hidden && program.waitedFor) << program.commandLine;
    if (program.commandLine.starts_with("cabarc")) unpacked.push_back(program.commandLine);
  }
  Paths archives;
  for (const std::string name : {"Patient", "Menu", "System", "User", "Explanation", "ReportSet", "Report", "Log"})
    archives.push_back("cabarc -r -p X " + name + "Data.cab CABFILE");
  EXPECT_EQ(unpacked, archives);
}

TEST(Restore, DeclinedCounterLeavesTheDialogUsable) {
  Session session;
  session.BackUpEverything();
  DamageEverything(session);
  session.BeginRestore();
  session.StartRestore({Box::Menu, Box::Counter});
  session.person.ExpectMessage(AskReplaceIPCounter, host::Answer::Refused).ExpectMessage(RestoreStopped, [&] {
    EXPECT_EQ(session.ChangedHostFiles(), Paths());
    EXPECT_TRUE(session.processes.started.empty() && session.IsTemporaryFolderEmpty());
    EXPECT_TRUE(session.Told().operations.back().ends_with("|MainMenu|Restore")) << "nothing was started";
  });
  session.At<frmRestore>([](frmRestore& form) {
    EXPECT_TRUE(form.chkMenuData.Value() && form.chkIPCounter.Value());
    fakes::Tick(form.chkIPCounter, false);
    fakes::Tick(form.chkMenuData, false);
    EXPECT_FALSE(form.cmdStart.Enabled()) << "nothing is ticked";
    fakes::Tick(form.chkMenuData);
    fakes::Press(form.cmdStart);
  });
  session.EndAfter({RestoreComplete});
  EXPECT_EQ(session.ChangedHostFiles(), (Paths{"Menu\\menu.ini"}));
  EXPECT_TRUE(session.Told().operations.end()[-2].ends_with("|Start|Restore"));
}

// An empty folder item means the application root, in a restore as in the backup before it; a ";" too many means
// nothing.
TEST(Restore, PutsTheApplicationRootBack) {
  Session session([](auto& host) { host.qx32.pathTable["ApplicationRoot"] = "C:\\Tarsus\\Report"; });
  Jobs({"[REPORT_BACKUP]", "Folder=", "[MENU_BACKUP]", "Folder=C:\\Tarsus\\Menu;;", "[REPORT_RESTORE]",
        "Folder=", "[MENU_RESTORE]", "Folder=;C:\\Tarsus\\Menu;", "[SYSTEM_BACKUP]", "[USER_BACKUP]",
        "[EXPLANATION_BACKUP]", "[REPORTSET_BACKUP]"})(session);
  session.BackUpTo(kSetFolder, {.system = true, .report = true});
  session.EndAfter({AskMakeBackupFolder, BackupComplete});
  EXPECT_EQ(session.Unpacked("D:\\Set\\MenuData.cab"), (fakes::CabinetContents{{"Menu\\menu.ini", "menu=1"}}));
  const MediumFiles expected = HostFiles(session);
  session.disk.Write("C:\\Tarsus\\Menu\\menu.ini", "damaged");
  session.disk.Remove("C:\\Tarsus\\Report\\2012");
  session.BeginRestore();
  session.StartRestore({Box::Menu, Box::Report});
  session.EndAfter({RestoreComplete});
  EXPECT_EQ(HostFiles(session), expected);
}

/// The job file's section for the user data; empty for none.
Arrangement UserJob(const Paths& section) {
  Paths lines = {"[MENU_RESTORE]", "Folder=Menu", "[REPORT_RESTORE]", "Folder=Report"};
  lines.insert(lines.end(), section.begin(), section.end());
  return Jobs(lines);
}

struct Failure {
  const char* name;
  Arrangement arrange;
  Ids messages;
  Paths restored;
};

const std::string kMenu = "Menu\\menu.ini";
const std::string kReport = "Report\\2012\\report1.txt";
const std::string kUser = "User\\users.dat";

const Arrangement kNoBatchFile =
    UserJob({"[USER_RESTORE]", "BatFile=%System%\\Missing.bat;%System%\\LoadPatients.bat", "Folder=User"});
const Arrangement kEmptyPiece = UserJob({"[USER_RESTORE]", "BatFile=;%System%\\LoadPatients.bat"});
const Arrangement kNoParent = UserJob({"[USER_RESTORE]", "Folder=C:\\Tarsus\\Gone\\User"});

const Failure kFailures[] = {
    {"section missing", UserJob({}), {RestoreSectionMissing}, {kMenu}},
    {"unknown variable",
     UserJob({"[USER_RESTORE]", "Folder=%Nowhere%\\User"}),
     {PathEntryUnreadable, RestoreStepFailed},
     {kMenu}},
    {"archive missing", Gone("D:\\Set\\UserData.cab"), {ArchiveNotUnpacked}, {}},
    {"medium vanishes", Before("UserData.cab\" ", NoMedium("D:")), {RestoreFailed}, {kMenu}},
    {"audit refused", Fails("AuditTrail", "RecordCategoryPhase", 2), {RestoreNotRecorded}, {kMenu, kReport, kUser}},
    {"target in use: passed over",
     InUse("C:\\Tarsus\\User\\users.dat"),
     {RestoreWarnings, RestoreComplete},
     {kMenu, kReport}},
    {"batch file missing: it and the next are passed over",
     kNoBatchFile,
     {RestoreWarnings, RestoreComplete},
     {kMenu, kReport, kUser}},
    {"empty piece of a list: passed over", kEmptyPiece, {RestoreComplete}, {"Data\\Loaded.txt", kMenu, kReport}},
    {"no parent folder: passed over", kNoParent, {RestoreWarnings, RestoreComplete}, {kMenu, kReport}},
};

// Menu, user and report data, in this order: the second goes wrong.
TEST(Restore, FailureIsShownAndKeepsWhatWasRestoredBefore) {
  for (const Failure& failure : kFailures) {
    SCOPED_TRACE(failure.name);
    Session session;
    session.BackUpEverything();
    for (const std::string& path : {kMenu, kReport, kUser}) session.disk.Write("C:\\Tarsus\\" + path, "damaged");
    failure.arrange(session);
    session.BeginRestore();
    session.StartRestore({Box::Menu, Box::User, Box::Report});
    const bool succeeds = failure.messages.back() == RestoreComplete;
    succeeds ? session.EndAfter(failure.messages) : session.LeaveRestoreAfter(failure.messages);
    EXPECT_EQ(session.ChangedHostFiles(), failure.restored);
  }
}

// Somebody else has filled it since its room was counted. Every file that is not there as it should be is named, and
// they are counted.
TEST(Restore, AFullDiskIsToldFileByFile) {
  const Paths names = {"a.txt", "b.txt", "c.txt", "d.txt", "e.txt"};
  Session session([&](auto& host) {
    host.disk.AddDrive('E', "DATA", 1'000'000);
    for (const std::string& name : names) host.disk.Write("E:\\Report\\" + name, std::string(100, name[0]));
  });
  Jobs({"[REPORT_BACKUP]", "Folder=E:\\Report", "[REPORT_RESTORE]", "Folder=E:\\Report"})(session);
  session.BackUpTo(kSetFolder);
  session.EndAfter({AskMakeBackupFolder, BackupComplete});
  session.disk.Remove("E:\\Report");
  Before("CABFILE\\Report", Capacity("E:", 250))(session);
  session.BeginRestore();
  session.StartRestore({Box::Report});
  session.EndAfter({RestoreWarnings, RestoreComplete});
  EXPECT_EQ(session.person.Messages().end()[-2].text3, "3");
  for (const std::string& name : names) {
    const bool fits = name < "c";
    EXPECT_EQ(session.disk.Read("E:\\Report\\" + name) == std::string(100, name[0]), fits);
    const std::string log = session.disk.Read(fakes::kLogFile);
    EXPECT_EQ(
        log.find("Not copied: " + std::string(kStagingFolder) + "\\CABFILE\\Report\\" + name) == std::string::npos,
        fits);
  }
}

// It is tried again when the dialog goes; neither failure hides the outcome.
TEST(Restore, StagingFolderThatStaysIsSaid) {
  for (const bool audited : {true, false}) {
    SCOPED_TRACE(audited);
    Session session;
    session.BackUpEverything();
    session.leavesStagingFolder = true;
    session.calls.FailFrom("FileSystem", "RemoveFolder", 1, kStagingFolder);
    if (!audited) session.calls.FailFrom("AuditTrail", "RecordCategoryPhase");
    session.BeginRestore();
    session.StartRestore({Box::Menu});
    audited ? session.EndAfter({RestoreWorkFolderNotRemoved, RestoreComplete, RestoreWorkFolderNotRemoved})
            : session.LeaveRestoreAfter({RestoreWorkFolderNotRemoved, RestoreNotRecorded, RestoreWorkFolderNotRemoved});
  }
}

TEST(Restore, HaltsWithoutAStagingFolder) {
  Session session;
  session.BackUpEverything();
  session.files.temporaryFolder = "E:\\Temp\\";
  session.BeginRestore();
  session.StartRestore({Box::Menu});
  session.See({RestoreWorkFolderNotMade});
  session.Run();
  EXPECT_TRUE(session.processes.ended);
  EXPECT_EQ(session.ChangedHostFiles(), Paths());
  EXPECT_EQ(session.Told().auditRecords.back(), "U004|Sign-out|Backup");
}

}  // namespace
