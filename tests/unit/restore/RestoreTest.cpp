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

struct Failure {
  const char* name;
  void (*arrange)(RestoreSession&);
  std::vector<std::int32_t> messages;
  Paths restored;
};

void PrintTo(const Failure& failure, std::ostream* out) {
  *out << failure.name;
}

const Paths kMenuOnly = {"Menu\\menu.ini"};
const Paths kAllThree = {"Menu\\menu.ini", "Report\\2012\\report1.txt", "User\\users.dat"};

void ReplaceUserJob(RestoreSession& session, const std::vector<std::string>& userJob) {
  std::vector<std::string> lines = {"[MENU_RESTORE]", "Folder=Menu"};
  lines.insert(lines.end(), userJob.begin(), userJob.end());
  lines.insert(lines.end(), {"[REPORT_RESTORE]", "Folder=Report"});
  session.WriteLines("C:\\Tarsus\\System\\BackupList.ini", lines);
}

class RestoreFailure : public testing::TestWithParam<Failure> {};

// Menu, user and report data, in this order: the second goes wrong.
TEST_P(RestoreFailure, IsShownAndKeepsWhatWasRestoredBefore) {
  const Failure& failure = GetParam();
  RestoreSession session;
  session.BackUpEverything();
  for (const std::string& path : kAllThree) session.disk.Write("C:\\Tarsus\\" + path, "damaged");
  failure.arrange(session);
  session.BeginRestore(kSetFolder);
  session.StartRestore("-x-x--x-");
  for (const std::int32_t message : failure.messages) session.person.ExpectMessage(message);
  const bool succeeds = failure.messages.back() == 65400;
  if (succeeds) {
    session.EndMenu();
  } else {
    session.LeaveSelection();
  }
  session.Run();
  Paths changed = session.ChangedHostFiles();
  std::erase(changed, "System\\BackupList.ini");
  EXPECT_EQ(changed, failure.restored);
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
  EXPECT_EQ(session.state.RestoreDone, succeeds);
}

const Failure kFailures[] = {
    {"SectionMissing", [](RestoreSession& s) { ReplaceUserJob(s, {}); }, {60420}, kMenuOnly},
    {"UnknownVariable",
     [](RestoreSession& s) {
       ReplaceUserJob(s, {"[USER_RESTORE]", "Folder=%Nowhere%\\User"});
     },
     {60326, 60402},
     kMenuOnly},
    {"ArchiveMissing", [](RestoreSession& s) { s.disk.Remove("D:\\Set\\UserData.cab"); }, {60421}, kMenuOnly},
    {"ArchiveTruncated",
     [](RestoreSession& s) {
       const std::string bytes = s.disk.Read("D:\\Set\\UserData.cab");
       s.disk.Write("D:\\Set\\UserData.cab", bytes.substr(0, bytes.size() - 1));
     },
     {60401},
     kMenuOnly},
    {"ArchiverMissing",
     [](RestoreSession& s) { s.calls.FailFrom("Processes", "Start", 1, "cabarc -r -p X UserData.cab CABFILE"); },
     {60401},
     kMenuOnly},
    {"ArchiverMakesNothing",
     [](RestoreSession& s) {
       s.processes.Install("C:\\Tarsus\\Backup\\cabarc.exe", [](fakes::Disk& disk, const fakes::Words& words) {
         return words[4] == "UserData.cab" ? 0u : fakes::RunCabarc(disk, words);
       });
     },
     {60401},
     kMenuOnly},
    {"MediumVanishes",
     [](RestoreSession& s) {
       s.processes.beforeWork = [&s](const std::string& command) {
         if (command.find("UserData.cab\" ") != std::string::npos) s.disk.FindDrive("D:")->ready = false;
       };
     },
     {60401},
     kMenuOnly},
    {"CopyIsShort",
     [](RestoreSession& s) {
       s.processes.Install(kInterpreter, [](fakes::Disk& disk, const fakes::Words& words) {
         const std::uint32_t code = fakes::RunCommandInterpreter(disk, words);
         const std::string copy = std::string(kStaging) + "\\UserData.cab";
         if (disk.IsFile(copy)) disk.Write(copy, fakes::MakeCabinet({}));
         return code;
       });
     },
     {60401},
     kMenuOnly},
    {"AuditRefused",
     [](RestoreSession& s) { s.calls.FailFrom("AuditTrail", "RecordCategoryPhase", 2); },
     {60511},
     kAllThree},
    {"TargetInUseIsPassedOver",
     [](RestoreSession& s) { s.disk.Find("C:\\Tarsus\\User\\users.dat")->readers = 1; },
     {65400},
     {"Menu\\menu.ini", "Report\\2012\\report1.txt"}},
    {"BatchFileMissingIsPassedOver",
     [](RestoreSession& s) {
       ReplaceUserJob(s, {"[USER_RESTORE]", "BatFile=%System%\\Missing.bat", "Folder=User"});
     },
     {65400},
     kAllThree},
    {"ParentFolderMissingIsPassedOver",
     [](RestoreSession& s) {
       ReplaceUserJob(s, {"[USER_RESTORE]", "Folder=C:\\Gone\\User"});
     },
     {65400},
     {"Menu\\menu.ini", "Report\\2012\\report1.txt"}},
};

INSTANTIATE_TEST_SUITE_P(All, RestoreFailure, testing::ValuesIn(kFailures),
                         [](const auto& test) { return test.param.name; });

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
