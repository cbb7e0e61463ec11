// Restores from a folder: everything back as it was, and every way in which one can fail.
#include <gtest/gtest.h>

#include "fakes/CommandLineTools.h"
#include "unit/restore/RestoreSession.h"

namespace {

constexpr const char* kInterpreter = "C:\\Windows\\System32\\CMD.exe";
constexpr const char* kStaging = "C:\\Users\\Operator\\Temp\\120315093012";

using Paths = std::vector<std::string>;

/// The host system's files but for the program's own log.
MediumFiles HostFiles(RestoreSession& session) {
  MediumFiles files = session.disk.Tree("C:\\Tarsus");
  files.erase("Log\\BackupUtility.log");
  return files;
}

void DamageEverything(RestoreSession& session) {
  for (const char* lost : {"Patient", "Explain", "Report\\2012", "Data\\Patients.bcp", "Config\\system.ini"})
    ASSERT_TRUE(session.disk.Remove(std::string("C:\\Tarsus\\") + lost));
  for (const char* changed : {"Menu\\menu.ini", "User\\users.dat", "ReportSet\\set.dat", "Counter\\ip.dat"})
    session.disk.Write(std::string("C:\\Tarsus\\") + changed, "damaged, and longer than it was before");
}

TEST(Restore, BringsEveryFileBack) {
  RestoreSession session;
  session.disk.Write("C:\\Tarsus\\Patient\\Study1\\image3.dat", std::string("\0\x1A\r\n\xFF", 5));
  session.BackUpEverything();
  MediumFiles expected = HostFiles(session);
  DamageEverything(session);
  // The common files stand in their place before a batch file runs, in its own folder.
  session.processes.Install("C:\\Tarsus\\System\\LoadPatients.bat", [](fakes::Disk& disk, const fakes::Words&) {
    const std::string dump = disk.Read("C:\\Tarsus\\Data\\Patients.bcp");
    return disk.Write("C:\\Tarsus\\Data\\Loaded.txt", dump + " in " + disk.CurrentFolder()) ? 0u : 1u;
  });
  expected["Data\\Loaded.txt"] = "dump of patients in C:\\Tarsus\\System";
  session.processes.beforeWork = [&](const std::string& command) {
    if (!command.starts_with("cabarc")) return;
    EXPECT_TRUE(session.disk.Children(std::string(kStaging) + "\\CABFILE").empty()) << "left of another category";
  };
  session.BeginRestore(kSetFolder);
  session.StartRestore();
  session.person.ExpectMessage(64402, app::kConsented).ExpectMessage(65400);
  session.EndMenu();
  session.Run();

  EXPECT_EQ(HostFiles(session), expected);
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
  EXPECT_TRUE(session.state.RestoreDone);
  EXPECT_EQ(session.Told().auditRecords,
            (Paths{"U004|Sign-in|Backup", "U004|End|Patient data", "U004|End|Menu data", "U004|End|System data",
                   "U004|End|User data", "U004|End|Explanations", "U004|End|IP counter", "U004|Sign-out|Backup"}));
  EXPECT_EQ(session.Told().logLines,
            (Paths{"Start Backup Utility", "Start Select Folder", "Selected Folder",
                   "Start Select Information for Restore", "Start Restore", "Finish Backup Utility"}));
  Paths unpacked;
  for (const fakes::StartRecord& program : session.processes.started) {
    EXPECT_EQ(program.style, host::WindowStyle::Hidden) << program.commandLine;
    EXPECT_TRUE(program.waitedFor) << program.commandLine;
    if (program.commandLine.starts_with("cabarc")) unpacked.push_back(program.commandLine);
  }
  const auto command = [](const std::string& archive) { return "cabarc -r -p X " + archive + ".cab CABFILE"; };
  EXPECT_EQ(unpacked,
            (Paths{command("PatientData"), command("MenuData"), command("SystemData"), command("UserData"),
                   command("ExplanationData"), command("ReportSetData"), command("ReportData"), command("LogData")}));
}

// Neither the report categories nor what is not ticked leave an audit record.
TEST(Restore, TouchesOnlyWhatIsTicked) {
  RestoreSession session;
  session.BackUpEverything();
  DamageEverything(session);
  session.BeginRestore(kSetFolder);
  session.StartRestore("-----xx-");
  session.person.ExpectMessage(65400);
  session.EndMenu();
  session.Run();
  EXPECT_EQ(session.ChangedHostFiles(), (Paths{"ReportSet\\set.dat", "Report\\2012\\report1.txt"}));
  EXPECT_EQ(session.Told().auditRecords, (Paths{"U004|Sign-in|Backup", "U004|Sign-out|Backup"}));
}

TEST(Restore, DeclinedCounterLeavesTheDialogUsable) {
  RestoreSession session;
  session.BackUpEverything();
  DamageEverything(session);
  session.BeginRestore(kSetFolder);
  session.StartRestore("-x-----x");
  session.person.ExpectMessage(64402, app::kRefused).ExpectMessage(65401, 0, [&] {
    EXPECT_EQ(session.ChangedHostFiles(), Paths());
    EXPECT_TRUE(session.processes.started.empty());
    EXPECT_TRUE(session.IsTemporaryFolderEmpty());
  });
  session.AtRestore([](frmRestore& form) {
    EXPECT_TRUE(form.chkMenuData.Value() && form.chkIPCounter.Value());
    fakes::Tick(form.chkIPCounter, false);
    fakes::Press(form.cmdStart);
  });
  session.person.ExpectMessage(65400);
  session.EndMenu();
  session.Run();
  EXPECT_EQ(session.ChangedHostFiles(), (Paths{"Menu\\menu.ini"}));
}

using Arrangement = std::function<void(RestoreSession&)>;

/// The job file's section for the user data; empty for none.
Arrangement UserJob(const std::vector<std::string>& section) {
  return [=](RestoreSession& session) {
    std::vector<std::string> lines = {"[MENU_RESTORE]", "Folder=Menu", "[REPORT_RESTORE]", "Folder=Report"};
    lines.insert(lines.end(), section.begin(), section.end());
    session.WriteLines("C:\\Tarsus\\System\\BackupList.ini", lines);
  };
}

/// An archiver that does `work` in place of its own on the user data.
Arrangement Archiver(const fakes::ProgramAction& work) {
  return [=](RestoreSession& session) {
    session.processes.Install("C:\\Tarsus\\Backup\\cabarc.exe", [=](fakes::Disk& disk, const fakes::Words& words) {
      return words[4] == "UserData.cab" ? work(disk, words) : fakes::RunCabarc(disk, words);
    });
  };
}

std::uint32_t DoNothing(fakes::Disk&, const fakes::Words&) {
  return 0;
}

std::uint32_t StopHalfway(fakes::Disk& disk, const fakes::Words&) {
  disk.Write("CABFILE\\User\\users.dat", "half");
  return 1;
}

void VanishMedium(RestoreSession& session) {
  session.processes.beforeWork = [&](const std::string& command) {
    if (command.find("UserData.cab\" ") != std::string::npos) session.disk.FindDrive("D:")->ready = false;
  };
}

void TruncateArchive(RestoreSession& session) {
  const std::string bytes = session.disk.Read("D:\\Set\\UserData.cab");
  session.disk.Write("D:\\Set\\UserData.cab", bytes.substr(0, bytes.size() - 1));
}

// What arrives is a whole archive, but not the one that was sent.
void ShortenCopy(RestoreSession& session) {
  session.processes.Install(kInterpreter, [](fakes::Disk& disk, const fakes::Words& words) {
    const std::uint32_t code = fakes::RunCommandInterpreter(disk, words);
    const std::string copy = std::string(kStaging) + "\\UserData.cab";
    if (disk.IsFile(copy)) disk.Write(copy, fakes::MakeCabinet({{"User\\users.dat", "half"}}));
    return code;
  });
}

Arrangement Fault(const char* contract, const char* method, std::size_t n = 1, const std::string& detail = {}) {
  return [=](RestoreSession& session) { session.calls.FailFrom(contract, method, n, detail); };
}

struct Failure {
  const char* name;
  Arrangement arrange;
  std::vector<std::int32_t> messages;
  Paths restored;
};

const std::string kMenu = "Menu\\menu.ini";
const std::string kReport = "Report\\2012\\report1.txt";
const std::string kUser = "User\\users.dat";

// Menu, user and report data, in this order: the second goes wrong.
TEST(Restore, FailureIsShownAndKeepsWhatWasRestoredBefore) {
  const Failure failures[] = {
      {"section missing", UserJob({}), {60420}, {kMenu}},
      {"unknown variable", UserJob({"[USER_RESTORE]", "Folder=%Nowhere%\\User"}), {60326, 60402}, {kMenu}},
      {"archive missing", [](RestoreSession& s) { s.disk.Remove("D:\\Set\\UserData.cab"); }, {60421}, {kMenu}},
      {"archive truncated", TruncateArchive, {60401}, {kMenu}},
      {"no archiver", Fault("Processes", "Start", 1, "cabarc -r -p X UserData.cab CABFILE"), {60401}, {kMenu}},
      {"archiver does nothing", Archiver(DoNothing), {60401}, {kMenu}},
      {"archiver stops halfway", Archiver(StopHalfway), {60401}, {kMenu}},
      {"medium vanishes", VanishMedium, {60401}, {kMenu}},
      {"copy is short", ShortenCopy, {60401}, {kMenu}},
      {"audit refused", Fault("AuditTrail", "RecordCategoryPhase", 2), {60511}, {kMenu, kReport, kUser}},
      {"target in use: passed over",
       [](RestoreSession& s) { s.disk.Find("C:\\Tarsus\\User\\users.dat")->readers = 1; },
       {65400},
       {kMenu, kReport}},
      {"batch file missing: it and the next are passed over",
       UserJob({"[USER_RESTORE]", "BatFile=%System%\\Missing.bat;%System%\\LoadPatients.bat", "Folder=User"}),
       {65400},
       {kMenu, kReport, kUser}},
      {"no parent folder: passed over",
       UserJob({"[USER_RESTORE]", "Folder=C:\\Tarsus\\Gone\\User"}),
       {65400},
       {kMenu, kReport}},
  };
  for (const Failure& failure : failures) {
    SCOPED_TRACE(failure.name);
    RestoreSession session;
    session.BackUpEverything();
    for (const std::string& path : {kMenu, kReport, kUser}) session.disk.Write("C:\\Tarsus\\" + path, "damaged");
    failure.arrange(session);
    session.BeginRestore(kSetFolder);
    session.StartRestore("-x-x--x-");
    for (const std::int32_t message : failure.messages) session.person.ExpectMessage(message);
    const bool succeeds = failure.messages.back() == 65400;
    if (!succeeds) session.CancelFolder();
    session.EndMenu();
    session.Run();
    EXPECT_EQ(session.ChangedHostFiles(), failure.restored);
    EXPECT_TRUE(session.IsTemporaryFolderEmpty());
    EXPECT_EQ(session.state.RestoreDone, succeeds);
  }
}

// It is tried again when the dialog goes; neither failure hides the outcome.
TEST(Restore, StagingFolderThatStaysIsSaid) {
  for (const bool audited : {true, false}) {
    SCOPED_TRACE(audited);
    RestoreSession session;
    session.BackUpEverything();
    session.calls.FailFrom("FileSystem", "RemoveFolder", 1, kStaging);
    if (!audited) session.calls.FailFrom("AuditTrail", "RecordCategoryPhase");
    session.BeginRestore(kSetFolder);
    session.StartRestore("-x------");
    session.person.ExpectMessage(60411).ExpectMessage(audited ? 65400 : 60511).ExpectMessage(60411);
    if (!audited) session.CancelFolder();
    session.EndMenu();
    session.Run();
    EXPECT_TRUE(session.disk.IsFolder(kStaging));
  }
}

TEST(Restore, HaltsWithoutAStagingFolder) {
  RestoreSession session;
  session.BackUpEverything();
  session.files.temporaryFolder = "E:\\Temp\\";
  session.BeginRestore(kSetFolder);
  session.StartRestore("-x------");
  session.person.ExpectMessage(60410);
  session.Run();
  EXPECT_TRUE(session.processes.ended);
  EXPECT_EQ(session.ChangedHostFiles(), Paths());
}

}  // namespace
