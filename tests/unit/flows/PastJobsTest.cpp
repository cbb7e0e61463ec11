// What was saved where: the list of past jobs, the main menu's last backup, and the summary; and the newest set, where
// a restore is to find it.
#include "access/frmJobs.h"
#include "unit/Session.h"

namespace {

using enum base::MessageId;
using qx::access::frmJobs;

constexpr const char* kList = "C:\\Tarsus\\Log\\BackupUtilityJobs.csv";

/// Of each line: kind, result, message, folder and categories.
Names Listed(Session& session) {
  Names jobs;
  for (const app::PastJob& job : app::ParsePastJobs(session.disk.Read(kList))) {
    const std::string line = app::FormatPastJob(job);
    EXPECT_TRUE(line.starts_with("2012-03-15 09:30:12,")) << line;
    EXPECT_EQ(job.user, "U004");
    EXPECT_EQ(job.warnings, 0u) << line;
    const auto kind = line.substr(20, line.find(',', 20) - 20);
    jobs.push_back(kind + " " + (job.result == base::Result::Done ? "done " : "ended ") + fakes::NumberOf(job.message) +
                   " " + job.folder + " " + job.categories);
  }
  return jobs;
}

TEST(PastJobs, EveryJobThatBeginsIsListedWhenItEnds) {
  Session session;
  session.BeginBackup(kEverything);
  session.Cancel<frmSelectFolder>();
  session.StartBackup(kReportOnly);
  session.AcceptFolder("D:\\Away\\");
  session.See({AskMakeBackupFolder, BackupStopped}, host::Answer::Refused);
  session.Cancel<frmSelectFolder>();
  session.StartBackup(kReportOnly);
  session.AcceptFolder(kSetFolder);
  session.See({AskMakeBackupFolder});
  session.person.ExpectMessage(BackupComplete, [&] { EXPECT_EQ(Listed(session).size(), 3u) << "before it is told"; });
  session.OpenMenuItem(Menu::Backup);
  session.StartBackup(kReportOnly);
  session.AcceptFolder("Z:\\");
  session.See({BackupDriveError, BackupStopped});
  session.Cancel<frmSelectFolder>();
  session.Cancel<frmBackup>();
  session.OpenMenuItem(Menu::Restore);
  session.AcceptFolder(kSetFolder);
  session.StartRestore({Box::Report});
  session.See({RestoreComplete});
  session.OpenMenuItem(Menu::Restore);
  session.AcceptFolder(kSetFolder);
  session.At<frmRestore>([&](frmRestore& form) {
    session.disk.Write("D:\\Set\\ReportData.cab", "damaged");
    fakes::Press(form.cmdStart);
  });
  session.See({RestoreFailed});
  session.Cancel<frmSelectFolder>();
  session.OpenMenuItem(Menu::MaintenanceLog);
  session.StartMaintenance();
  session.AcceptFolder();
  session.EndAfter({AskForeignLabel, MaintenanceComplete});
  const std::string everything =
      "PatientData MenuData SystemData UserData ExplanationData ReportSetData ReportData IPCounter";
  EXPECT_EQ(Listed(session),
            (Names{"Backup ended 0  " + everything, "Backup ended 65301 D:\\Away\\ ReportData",
                   "Backup done 65300 D:\\Set\\ ReportData", "Backup ended 65301 Z:\\ ReportData",
                   "Restore done 65400 D:\\Set\\ ReportData", "Restore ended 60401 D:\\Set\\ ReportData",
                   "MaintenanceLog done 65450 " + std::string(kDesktop) + " "}));
  EXPECT_EQ(app::ParsePastJobs(session.disk.Read(kList))[2].files, 1u);
  EXPECT_EQ(app::ParsePastJobs(session.disk.Read(kList))[4].files, 1u);
}

TEST(PastJobs, TheDeletionOfLogsLeavesTheList) {
  Session session(Jobs(
      {"[REPORT_BACKUP]", "Folder=Report", "[LOG_BACKUP]", "Folder=C:\\Tarsus\\Log", "[LOG_DELETE]", "Folder=%Log%"}));
  session.BackUpTo(kSetFolder, kReportOnly);
  session.EndAfter({AskMakeBackupFolder, BackupComplete});
  session.BackUpTo("D:\\Logs\\", kLogsToDelete);
  session.EndAfter({AskDeleteLogs, AskMakeBackupFolder, BackupComplete});
  EXPECT_EQ(Listed(session).size(), 2u);
}

// The menu tells what the host notes of a backup that is not listed, and the place of one that is.
TEST(PastJobs, TheMenuShowsTheLastBackup) {
  Session session([](auto& host) { host.qx32.texts["BackupDate"] = "20120301"; });
  session.SignIn();
  session.At<frmMainMenu>([&](frmMainMenu& form) {
    EXPECT_EQ(form.lblLastBackup.Caption(), "text 66024 2012/03/01");
    EXPECT_EQ(form.lblLastFolder.Caption(), "");
    fakes::Press(Button(form, Menu::Backup));
  });
  session.StartBackup(kReportOnly);
  session.AcceptFolder(kSetFolder);
  session.See({AskMakeBackupFolder, BackupComplete});
  session.At<frmMainMenu>([&](frmMainMenu& form) {
    EXPECT_EQ(form.lblLastBackup.Caption(), "text 66024 2012/03/15 09:30:12");
    EXPECT_EQ(form.lblLastFolder.Caption(), kSetFolder);
    fakes::Press(form.cmdJobs);
  });
  session.At<frmJobs>([&](frmJobs& form) {
    EXPECT_EQ(form.lstJobs.Items(), Names{"2012/03/15 09:30:12 - text 66021 - text 66146 - D:\\Set\\"});
    const std::string& summary = form.txtSummary.Text();
    for (const char* line : {"text 66021\r\n", "\r\ntext 66149: 65300\r\n", "\r\ntext 66152: U004\r\n",
                             "\r\ntext 66153: D:\\Set\\\r\n", "\r\ntext 66154: text 66059\r\n", "text 66157: 0\r\n"})
      EXPECT_NE(summary.find(line), std::string::npos) << summary;
    fakes::Press(form.cmdPrint);
    EXPECT_TRUE(session.shell.printedDocument.ends_with(summary)) << session.shell.printedDocument;
    session.disk.Remove("C:\\Users\\Operator\\Temp\\QXBackupUtility job.txt");
    session.calls.FailFrom("Shell", "PrintDocument");
    fakes::Press(form.cmdPrint);
    EXPECT_TRUE(session.components.Logged("Summary not printed : C:\\Users\\Operator\\Temp\\QXBackupUtility job.txt"));
    session.disk.Remove("C:\\Users\\Operator\\Temp\\QXBackupUtility job.txt");
    fakes::Press(form.cmdClose);
  });
  session.EndAfter({});
}

TEST(PastJobs, AHostWithoutTheTextsHasNoButton) {
  Session session([](auto& host) {
    for (const base::MessageId id : {LastBackupCaption, PastJobsCaption}) host.catalogue.rows.erase(id);
    host.qx32.texts["BackupDate"] = "20120301";
  });
  session.SignIn();
  session.At<frmMainMenu>([&](frmMainMenu& form) {
    EXPECT_EQ(form.lblLastBackup.Caption(), "2012/03/01");
    EXPECT_FALSE(form.cmdJobs.Visible());
    fakes::Press(form.cmdEnd, kShift);
  });
  session.Run();
}

/// A set as the descriptor alone tells it.
void PutSet(Session& session, const std::string& folder, const Paths& more = {"ReportData=V2.1"}) {
  session.disk.Write(folder + "BackupInfo.ini", Lines(DescriptorLines(more)));
}

/// Presses Browse in the selection dialog, sees where the browser opens, and closes it.
void ExpectBrowseOpensAt(Session& session, const std::string& folder) {
  session.Press(&frmSelectFolder::cmdRefer);
  session.person.ExpectBrowse("");
  session.At<frmSelectFolder>([=, &session](frmSelectFolder& form) {
    EXPECT_EQ(session.shell.browsedFrom, folder);
    fakes::Press(form.cmdOK);
  });
}

TEST(NewestSet, IsProposedAfterAFolderWithoutOneAndShownByBrowse) {
  Session session;
  PutSet(session, "D:\\Old\\");
  PutSet(session, "D:\\Station\\2012\\March\\");
  PutSet(session, "D:\\too\\deep\\for\\a search\\");
  PutSet(session, "D:\\a maintenance log\\", {});
  session.disk.Write("D:\\other\\BackupInfo.ini", "AppVersion=4.00\r\nAppType=Tarsus\r\nDate=1\r\nReportData=V2.1\r\n");
  session.SignIn();
  session.OpenMenuItem(Menu::Restore);
  ExpectBrowseOpensAt(session, "D:\\Station\\2012\\March\\");  // with the drive's root proposed, as ever
  session.See({NoDescriptor});
  ExpectBrowseOpensAt(session, "D:\\Station\\2012\\March\\");  // it is proposed now, and OK goes on with it
  session.Cancel<frmRestore>();
  session.AcceptFolder("D:\\Old");
  session.Cancel<frmRestore>();
  ExpectBrowseOpensAt(session, "D:\\Old");  // a set that was chosen stays so
  session.Cancel<frmRestore>();
  session.AcceptFolder("D:\\too\\deep");
  session.See({NoDescriptor});
  session.At<frmSelectFolder>([](frmSelectFolder& form) {
    EXPECT_EQ(form.txtFolder.Text(), "D:\\too\\deep\\for\\a search\\");
    fakes::Type(form.txtFolder, "D:\\other");
    fakes::Press(form.cmdOK);
  });
  session.See({OtherVersion});
  session.At<frmSelectFolder>([](frmSelectFolder& form) {
    EXPECT_EQ(form.txtFolder.Text(), "D:\\other");
    fakes::Press(form.cmdCancel);
  });
  session.EndAfter({});
}

// Ten thousand folders and no set: the search ends, and the screen stays alive meanwhile.
TEST(NewestSet, IsLookedForWithinBounds) {
  Session session;
  for (int i = 0; i < 100; ++i)
    for (int j = 0; j < 100; ++j) session.disk.MakeFolders("D:\\" + std::to_string(i) + "\\" + std::to_string(j));
  session.SignIn();
  session.OpenMenuItem(Menu::Restore);
  session.Press(&frmSelectFolder::cmdRefer);
  session.person.ExpectBrowse("");
  session.At<frmSelectFolder>([&](frmSelectFolder& form) {
    EXPECT_LE(session.calls.CountOf("FileSystem", "List"), 2100u);
    EXPECT_GE(session.messageLoop.yields, 2000);
    fakes::Press(form.cmdCancel);
  });
  session.EndAfter({});
}

}  // namespace
