// Start-up and the way out: every check, its message, and the order in which they come.
#include "unit/Session.h"

namespace {

using enum base::MessageId;

/// One thing that can be wrong with the installation, and the message that says so.
struct Defect {
  const char* name;
  base::MessageId message;
  Arrangement plant;
};

Arrangement Runs(const char* executable) {
  return [=](fakes::FakeHost& host) { host.processes.running.push_back(executable); };
}

// In the order in which start-up looks. Of the names of sibling tools it compares fifteen characters.
const Defect kDefects[] = {
    {"no system database entry", PathEntryUnreadable, NoEntry("SysMasterDB")},
    {"system database not opened", SystemDatabaseFailed, [](auto& host) { host.qx32lib.connection = "DSN=Another"; }},
    {"no table name", MessageTableUnnamed, [](auto& host) { host.qx32lib.values.clear(); }},
    {"system database not closed", SystemDatabaseFailed, Fails("QX32lib", "SysDBClose")},
    {"log folder lost", PathEntryUnreadable, Fails("QX32", "GetString", 2, "Log")},  // the log has read it once before
    {"no font size", AppearanceUnreadable, [](auto& host) { host.qx32.numbers.erase("BackupUtility\\BUFontSizeSS"); }},
    {"no catalogue entry", PathEntryUnreadable, NoEntry("LangStrDB")},
    {"no catalogue table", CatalogueNotOpened, [](auto& host) { host.catalogue.tableName = "T_OTHER"; }},
    {"second instance", AlreadyRunning, [](auto& host) { host.processes.previousInstance = true; }},
    {"user utility runs", UserUtilityRuns, Runs("QXUserUtility.exe")},
    {"service utility runs", ServiceUtilityRuns, Runs("QXServiceUtilit")},
    {"scheduled backup runs", ScheduledBackupRuns, Runs("ScheduledBackupper.exe")},
    {"no application root", PathEntryUnreadable, NoEntry("ApplicationRoot")},
    {"no system entry", PathEntryUnreadable, NoEntry("System")},
    {"no user folder", PathEntryUnreadable, NoEntry("UserFolder")},
};

void ExpectHalt(Session& session, base::MessageId message) {
  session.See({message});
  session.Run();
  EXPECT_TRUE(session.processes.ended);
  const Paths& log = session.Told().logLines;
  ASSERT_EQ(log.size(), 3u);
  EXPECT_TRUE(log[1].starts_with("Message " + std::to_string(static_cast<std::int32_t>(message)))) << log[1];
  EXPECT_EQ(Paths({log.front(), log.back()}), (Paths{"Start Backup Utility", "Halt Backup Utility"}));
  EXPECT_TRUE(session.disk.Read(fakes::kLogFile).ends_with("30:12] [Error]       Halt Backup Utility\r\n"));
  EXPECT_TRUE(session.processes.started.empty());
  EXPECT_TRUE(session.Told().auditRecords.empty());
  EXPECT_EQ(session.catalogue.state, fakes::FakeCatalogue::State::Abandoned);
}

void ExpectEnd(Session& session, bool restarts) {
  session.Run();
  const Paths end = restarts ? Paths{"Current Directory : C:\\Tarsus\\Backup", "Finish Backup Utility and Start Tarsus"}
                             : Paths{"Finish Backup Utility"};
  const Paths& log = session.Told().logLines;
  ASSERT_GT(log.size(), end.size());
  EXPECT_EQ(Paths(log.end() - static_cast<std::ptrdiff_t>(end.size()), log.end()), end);
  EXPECT_EQ(std::ranges::count_if(
                log, [](const auto& line) { return line.starts_with("Current") || line.starts_with("Finish"); }),
            std::ssize(end));
  EXPECT_EQ(session.catalogue.state, fakes::FakeCatalogue::State::Closed);
  ASSERT_EQ(session.processes.started.size(), restarts ? 1u : 0u);
  for (const fakes::StartRecord& program : session.processes.started) {
    EXPECT_EQ(program.commandLine, "C:\\Tarsus\\System\\\\Tarsus.exe /a");
    EXPECT_EQ(program.currentFolder, fakes::kProgramFolder);
    EXPECT_TRUE(program.style == host::WindowStyle::Normal && !program.waitedFor);
  }
}

// Each defect alone, and with any later one in place too: the first is shown.
TEST(StartUp, ShowsTheFirstDefectAndHalts) {
  for (std::size_t first = 0; first < std::size(kDefects); ++first) {
    for (std::size_t second = first; second < std::size(kDefects); ++second) {
      SCOPED_TRACE(std::string(kDefects[first].name) + " before " + kDefects[second].name);
      Session session(Both(kDefects[second].plant, first == second ? Nothing : kDefects[first].plant));
      ExpectHalt(session, kDefects[first].message);
    }
  }
}

TEST(StartUp, WithoutDirectoryIniSaysSoPlainlyAndLogsNothing) {
  for (const bool keyMissing : {false, true}) {
    Session session;
    keyMissing ? session.qx32.texts.erase("PathAppl") : session.disk.Remove("C:\\Tarsus\\System\\Directory.ini");
    session.person.ExpectPlainMessage("Not Exist Directory.ini. Please Reinstall Tarsus System.");
    session.Run();
    EXPECT_FALSE(session.disk.IsFile(fakes::kLogFile));
    EXPECT_EQ(session.catalogue.state, fakes::FakeCatalogue::State::Never);
    EXPECT_TRUE(session.processes.started.empty());
  }
}

// The log cannot be found, so every line asks for its folder again, and says so.
TEST(StartUp, WithoutLogFolderComplainsWithEveryLine) {
  Session session(NoEntry("Log"));
  session.See({PathEntryUnreadable, PathEntryUnreadable, PathEntryUnreadable});
  session.Run();
  EXPECT_TRUE(session.processes.ended);
  EXPECT_FALSE(session.disk.IsFile(fakes::kLogFile));
  EXPECT_TRUE(session.disk.IsFile("C:\\BackupUtility.log")) << "the lines are written all the same";
}

TEST(StartUp, RunsBesideOtherTools) {
  Session session;
  for (const char* other : {"QXServiceUtili.exe", "qxserviceutility.exe", "QXUserUtility2.exe"}) Runs(other)(session);
  session.Cancel<frmUserAuthentication>(kShift);
  session.Run();
  EXPECT_FALSE(session.processes.ended);
}

TEST(StartUp, TellsMissingRightsBeforeAnybodySignsIn) {
  Session session;
  session.processes.administratorsRights = false;
  session.Cancel<frmUserAuthentication>(kShift);
  session.Run();
  EXPECT_EQ(session.Told().logLines.at(1), "Without administrator's rights");
}

TEST(StartUp, HandsTheCatalogueAConnectionOf256Characters) {
  const std::pair<std::string, std::string> cases[] = {{"Data Source=ü", "Data Source=ü" + std::string(243, ' ')},
                                                       {std::string(300, 'x'), std::string(256, 'x')}};
  for (const auto& [entry, connection] : cases) {
    Session session;
    session.qx32.pathTable["LangStrDB"] = entry;
    session.Cancel<frmUserAuthentication>(kShift);
    session.Run();
    EXPECT_EQ(session.catalogue.connection, connection);
  }
}

TEST(StartUp, HelpOpensTheManualOrTheLogSaysThatItCannot) {
  Session session;
  session.At<frmUserAuthentication>([&](frmUserAuthentication& form) {
    session.toolkit.HelpRequested();
    EXPECT_EQ(session.shell.openedDocument, "QXBackupUtility.html");
    EXPECT_EQ(session.disk.Read(fakes::kLogFile).find("Warning"), std::string::npos);
    session.calls.FailFrom("Shell", "OpenDocument");
    session.toolkit.HelpRequested();
    EXPECT_TRUE(session.disk.Read(fakes::kLogFile).ends_with("Manual not opened : QXBackupUtility.html\r\n"));
    fakes::Press(form.cmdCancel, kShift);
  });
  session.Run();
}

/// One start, up to the sign-in and no further; these messages come before it.
void OnlyStart(Session& session, const Ids& messages) {
  session.See(messages);
  session.Cancel<frmUserAuthentication>(kShift);
  session.Run();
}

constexpr const char* kRestoreRuns = "BackupUtility\\RestoreRunning";
const std::string kInterrupted = "A restore did not end: D:\\Set\\";

// Once, and before anybody can work on; a host whose catalogue is older has the line in the log.
TEST(StartUp, TellsOfAnInterruptedRestore) {
  for (const bool hasWords : {true, false}) {
    SCOPED_TRACE(hasWords);
    Session session;
    if (hasWords) session.catalogue.rows[RestoreInterrupted] = "interrupted";
    session.qx32.texts[kRestoreRuns] = kSetFolder;
    OnlyStart(session, hasWords ? Ids{RestoreInterrupted} : Ids{});
    EXPECT_TRUE(session.components.Logged(kInterrupted));
    if (hasWords) {
      EXPECT_EQ(session.person.Messages().front().text3, kSetFolder);
    }
    session.Told().logLines.clear();
    OnlyStart(session, {});
    EXPECT_FALSE(session.components.Logged(kInterrupted));
  }
}

// From before the first replacement until its end was told, good or bad.
TEST(StartUp, OnlyARestoreThatReplacesIsCalledInterrupted) {
  const std::tuple<const char*, Arrangement, Ids> courses[] = {
      {"succeeds", Nothing, {RestoreComplete}},
      {"fails", Fails("AuditTrail", "RecordCategoryPhase"), {RestoreNotRecorded}},
      {"does not begin", Gone("D:\\Set\\MenuData.cab"), {ArchiveNotUnpacked}},
      {"cannot be marked", Fails("QX32", "RegSetKeySZ", 1, kRestoreRuns), {RestoreComplete}}};
  for (const auto& [name, arrangement, messages] : courses) {
    SCOPED_TRACE(name);
    Session session;
    session.BackUpEverything();
    Names marks;
    Before("", [&](auto& host) { marks.push_back(host.qx32.texts[kRestoreRuns]); })(session);
    arrangement(session);
    session.BeginRestore();
    session.StartRestore({Box::Menu});
    messages.back() == RestoreComplete ? session.EndAfter(messages) : session.LeaveRestoreAfter(messages);
    const bool cannot = std::string_view(name) == "cannot be marked";
    for (const std::string& mark : marks) EXPECT_EQ(mark, cannot ? "" : kSetFolder);
    EXPECT_EQ(cannot, session.disk.Read(fakes::kLogFile).find("Restore not marked as running: ") != std::string::npos);
    EXPECT_EQ(session.qx32.texts[kRestoreRuns], "");
    OnlyStart(session, {});
  }
}

TEST(StartUp, RemovesTheWorkFolderThatARunHasLeft) {
  Session session(Fails("FileSystem", "RemoveFolder", 1, kStagingFolder));
  session.leavesStagingFolder = true;
  session.BackUpTo("D:\\");
  session.EndAfter({BackupComplete, BackupWorkFolderNotRemoved});
  session.calls.Reset();
  session.leavesStagingFolder = false;
  OnlyStart(session, {});
  EXPECT_TRUE(
      session.components.Logged("Work folder of an earlier run removed: " + std::string(kStagingFolder) + "\\"));
}

struct BusyCourse {
  const char* name;
  Arrangement arrange;
  std::function<void(Session&)> travel;
};

void Backup(Session& session, const Ids& messages) {
  session.BeginBackup(kReportOnly);
  session.At<frmSelectFolder>([&](frmSelectFolder& form) {
    EXPECT_EQ(session.shell.busyTimes, 0) << "it waits for a person";
    fakes::Type(form.txtFolder, "D:\\");
    fakes::Press(form.cmdOK);
  });
  messages.back() == BackupComplete ? session.EndAfter(messages) : session.LeaveBackupAfter(messages);
}
void Restore(Session& session, const Ids& messages) {
  session.BeginRestore();
  session.StartRestore({Box::Menu});
  messages.back() == RestoreComplete ? session.EndAfter(messages) : session.LeaveRestoreAfter(messages);
}
void CollectLog(Session& session, const Ids& messages) {
  session.SignIn();
  session.OpenMenuItem(Menu::MaintenanceLog);
  session.StartMaintenance();
  session.AcceptFolder("D:\\");
  session.EndAfter(messages);
}

const BusyCourse kBusyCourses[] = {
    {"backup", Nothing, [](Session& session) { Backup(session, {BackupComplete}); }},
    {"nothing gathered", Gone("C:\\Tarsus\\Report"),
     [](Session& session) {
       session.BeginBackup(kReportOnly);
       session.LeaveBackupAfter({BackupNotGathered});
     }},
    {"not written", Before("\"D:\\", NoMedium("D:")), [](Session& session) { Backup(session, {BackupNotWritten}); }},
    {"restore", Nothing, [](Session& session) { Restore(session, {RestoreComplete}); }},
    {"restore fails", Fails("AuditTrail", "RecordCategoryPhase"),
     [](Session& session) { Restore(session, {RestoreNotRecorded}); }},
    {"restore halts", [](auto& host) { host.files.temporaryFolder = "E:\\"; },
     [](Session& session) {
       session.BeginRestore();
       session.StartRestore({Box::Menu});
       session.See({RestoreWorkFolderNotMade});
       session.Run();
     }},
    {"maintenance log", Nothing, [](Session& session) { CollectLog(session, {MaintenanceComplete}); }},
};

// Sleep, or a shutdown without a word, would leave half a set.
TEST(EndOfProgram, IsHeldOffWhileAJobIsAtWorkAndNoLonger) {
  for (const BusyCourse& course : kBusyCourses) {
    SCOPED_TRACE(course.name);
    Session session;
    session.BackUpEverything();
    session.catalogue.rows[JobRunsReason] = "a job runs";
    session.shell.busyWith.clear();
    session.qx32.texts.erase("BackupDate");
    course.arrange(session);
    session.processes.beforeWork = [&, before = session.processes.beforeWork](const std::string& command) {
      EXPECT_EQ(session.shell.busyTimes, 1) << command;
      if (before) before(command);
    };
    course.travel(session);
    EXPECT_EQ(session.shell.busyTimes, 0);
    for (const std::string& reason : session.shell.busyWith) EXPECT_EQ(reason, "a job runs");
  }
}

// From the dialog or from the menu; the program's folder and the pointer are put back on the way.
TEST(EndOfProgram, RestartsTheHostUnlessShiftAloneIsHeld) {
  for (int held = 0; held < 8; ++held) {
    const forms::ShiftState keys{(held & 1) != 0, (held & 2) != 0, (held & 4) != 0};
    Session fromDialog;
    fromDialog.Cancel<frmUserAuthentication>(keys);
    ExpectEnd(fromDialog, held != 1);
    Session fromMenu;
    fromMenu.SignIn();
    fromMenu.At<frmMainMenu>([&](frmMainMenu& form) {
      fromMenu.disk.SetCurrentFolder("D:\\");
      fromMenu.toolkit.pointer = forms::Pointer::Hourglass;
      fakes::Press(form.cmdEnd, keys);
    });
    ExpectEnd(fromMenu, held != 1);
  }
}

// Neither failure stops it.
TEST(EndOfProgram, SaysWhatItCannotDo) {
  Session session;
  session.SignIn();
  session.At<frmMainMenu>([&](frmMainMenu& form) {
    session.Told().auditRefusal = "answered 1";
    session.disk.Remove("C:\\Tarsus\\System\\Tarsus.exe");
    fakes::Press(form.cmdEnd);
  });
  session.See({SignOutNotRecorded, HostNotStarted});
  session.Run();
  EXPECT_TRUE(session.components.Logged("Finish Backup Utility and Start Tarsus"));
}

}  // namespace
