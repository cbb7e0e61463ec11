// Maintenance log backups from the main menu to the bundle, and every way in which they end early.
#include <gtest/gtest.h>

#include "unit/maintenance/MaintenanceSession.h"

namespace {

using fakes::CabinetContents;

constexpr const char* kDescriptor =
    "[Info]\r\nAppVersion=3.00\r\nDate=2012/03/15 09:30:12\r\nAppType=Tarsus\r\nCABFile=MAINTENANCE.cab;\r\n\r\n"
    "[VersionInfo]\r\n\r\n";
constexpr const char* kExporter = "C:\\Tarsus\\Temp\\StudyDB\\BCP\\Export_StudyDB_TXT_PP.bat";

const CabinetContents kProtected = {{"Application.evt", "events"}, {"image.ddo", "an image"}};
const CabinetContents kUnprotected = {{"Application.evt", "events"},
                                      {"BCP\\Tarsus.log", "host log"},
                                      {"Host\\host.log", "host log"},
                                      {"Host\\Old\\old.log", "old host log"}};

/// The three files of a bundle, and nothing else.
void ExpectBundle(MaintenanceSession& session, const std::string& folder, const CabinetContents& contents,
                  const std::string& studies) {
  auto files = session.disk.Tree(folder);
  EXPECT_EQ(files.size(), 3u);
  EXPECT_EQ(files["BackupInfo.ini"], kDescriptor);
  EXPECT_EQ(files["T_TSTUDY.txt"], studies);
  EXPECT_EQ(session.Unpacked(folder + "MAINTENANCE.cab"), contents);
  EXPECT_EQ(session.disk.Read(std::string(kDesktop) + "T_TSTUDY.txt"), studies);
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
}

TEST(MaintenanceLog, ProtectedBundleReachesTheProposedDesktop) {
  MaintenanceSession session;
  session.BeginMaintenance();
  session.person.Expect<flows::frmSelectFolder>([](flows::frmSelectFolder& form) {
    EXPECT_EQ(form.txtFolder.Text(), kDesktop);
    EXPECT_TRUE(form.txtCapacity.Visible());
    fakes::Press(form.cmdOK);
  });
  session.person.ExpectMessage(64301, app::kConsented).ExpectMessage(65450);
  session.EndMenu();
  session.Run();
  ExpectBundle(session, kDesktop, kProtected, "studies without names");
  EXPECT_EQ(session.ChangedHostFiles(), std::vector<std::string>());
  EXPECT_EQ(session.qx32.texts.count("BackupDate"), 0u) << "no backup of data";
  EXPECT_EQ(session.Told().auditRecords.size(), 2u) << "sign-in and sign-out alone";
  EXPECT_EQ(session.Told().operations[1], "WS-RADIOLOGY-1|U004|BackupUtility|MainMenu|MainteLogBackup");
}

// Also after a backup in the same session, whose categories must not get into the descriptor.
TEST(MaintenanceLog, UnprotectedBundleGoesWhereTheOperatorWants) {
  MaintenanceSession session;
  session.BeginBackup({.report = true});
  session.AcceptFolder("D:\\");
  session.person.ExpectMessage(65300);
  session.OpenMaintenance();
  session.person.Expect<frmMaintenance>([](frmMaintenance& form) {
    fakes::Tick(form.Option2);
    fakes::Press(form.cmdStart);
  });
  session.person.ExpectMessage(64530, app::kConsented);
  session.AcceptFolder("D:\\Log");
  session.person.ExpectMessage(64452, app::kConsented).ExpectMessage(65450);
  session.EndMenu();
  session.Run();
  ExpectBundle(session, "D:\\Log\\", kUnprotected, "all studies");
}

TEST(MaintenanceLog, ImagesOfSomeDaysAreCollected) {
  MaintenanceSession session;
  session.WriteLines("C:\\Tarsus\\System\\BackupList.ini", {"[MAINTENANCE]", "EventLog=", "Folder=Image.DDO"});
  session.Told().studies["SELECT RIGHT(URL,LEN(URL)-7)"].rows = {{"C:\\Tarsus\\Image\\image.ddo", "2012-03-14"}};
  session.SignIn(fakes::kServiceUser);
  session.OpenMaintenance();
  session.person.Expect<frmMaintenance>([](frmMaintenance& form) {
    fakes::Tick(form.Option2);
    fakes::Tick(form.Option4);
    fakes::Type(form.txtCollectRange, "123");
    fakes::Press(form.cmdStart);
  });
  session.person.ExpectMessage(64530, app::kConsented);
  session.AcceptFolder("D:\\");
  session.person.ExpectMessage(65450);
  session.EndMenu();
  session.Run();
  ExpectBundle(session, "D:\\", {{"Application.evt", "events"}, {"Image\\image.ddo", "an image"}}, "all studies");
  EXPECT_NE(session.Told().statements.back().find("DATEADD(day,-123,GETDATE())"), std::string::npos);
  EXPECT_TRUE(session.processes.started.front().commandLine.ends_with(" 1 123"));
}

TEST(MaintenanceLog, ScriptStandsAroundTheWork) {
  MaintenanceSession session;
  std::vector<std::string> seen;
  session.processes.Install("C:\\Windows\\System32\\cscript.exe", [&](fakes::Disk& disk, const fakes::Words& words) {
    seen.push_back(words[2]);
    for (const auto& [name, bytes] : disk.Tree(words[3])) seen.back() += " " + name;
    return 1u;  // how it ends is nobody's concern
  });
  session.BeginMaintenance();
  session.CancelFolder();
  session.EndMenu();
  session.Run();
  EXPECT_EQ(seen, (std::vector<std::string>{"1", "2 Application.evt image.ddo", "3 CABFILE\\MAINTENANCE.cab"}));
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
}

TEST(MaintenanceLog, CancelledDialogLeavesNothingBehind) {
  MaintenanceSession session;
  session.SignIn(fakes::kBackupUser);
  session.OpenMaintenance();
  session.CancelMaintenance();
  session.EndMenu();
  session.Run();
  EXPECT_TRUE(session.processes.started.empty());
  EXPECT_EQ(session.ChangedHostFiles(), std::vector<std::string>());
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
  EXPECT_EQ(session.state.StagingFolder, "");
  EXPECT_EQ(session.state.CurrentOperation, app::Operation::MaintenanceLogBackup);
}

// The first of the filter's codes that is not 0, in the message's second insertion.
TEST(MaintenanceLog, TellsThatPersonalInformationIsLeft) {
  MaintenanceSession session;
  session.WriteLines("C:\\Tarsus\\System\\BackupList.ini",
                     {"[PERSONALINFOPROTECTION]", "PersonalInfo=%Image%;Report;Menu"});
  session.Told().filterAnswers = {0, 7, 9};
  session.BeginMaintenance();
  session.person.ExpectMessage(60521);
  session.AcceptFolder("D:\\");
  session.person.ExpectMessage(65450);
  session.EndMenu();
  session.Run();
  const fakes::ShownMessage& shown = session.person.Messages().front();
  EXPECT_EQ(shown.text1 + "|" + shown.text2 + "|" + shown.text3, "|7|");
}

struct Failure {
  const char* name;
  void (*arrange)(MaintenanceSession&);
  std::vector<std::int32_t> messages;
};

const Failure kCollectionFailures[] = {
    {"staging folder", [](MaintenanceSession& s) { s.disk.Remove("C:\\Users\\Operator\\Temp"); }, {60460}},
    {"section missing",
     [](MaintenanceSession& s) { s.WriteLines("C:\\Tarsus\\System\\BackupList.ini", {"[MAINTENANCE]"}); },
     {60470}},
    {"nothing to pack",
     [](MaintenanceSession& s) {
       s.WriteLines("C:\\Tarsus\\System\\BackupList.ini", {"[PERSONALINFOPROTECTION]"});
       s.calls.FailFrom("FileSystem", "MakeFolder");  // no export folder either
     },
     {60471}},
    {"archiver missing", [](MaintenanceSession& s) { s.disk.Remove("C:\\Tarsus\\Backup\\cabarc.exe"); }, {60471}},
    {"archive cannot be moved up",
     [](MaintenanceSession& s) { s.calls.FailFrom("FileSystem", "MoveTo", 3); },  // after the event log and packing
     {60471}},
};

TEST(MaintenanceLog, FailedCollectionIsShownAndClearedAway) {
  for (const Failure& failure : kCollectionFailures) {
    SCOPED_TRACE(failure.name);
    MaintenanceSession session;
    failure.arrange(session);
    session.BeginMaintenance();
    for (const std::int32_t message : failure.messages) session.person.ExpectMessage(message);
    session.EndMenu();
    session.Run();
    EXPECT_EQ(session.processes.CountStarted("Export_StudyDB"), 0);
    EXPECT_TRUE(session.IsTemporaryFolderEmpty());
  }
}

const Failure kWritingFailures[] = {
    {"no folder for temporary files named",
     [](MaintenanceSession& s) { s.qx32.pathTable.erase("Temp"); },
     {60326, 60451}},
    {"exporter missing", [](MaintenanceSession& s) { s.disk.Remove(kExporter); }, {60451}},
    {"no list exported, an old one with names lies about",
     [](MaintenanceSession& s) {
       s.disk.Write("C:\\Tarsus\\Temp\\StudyDB\\BCP\\T_TSTUDY.txt", "all studies");
       s.processes.Install(kExporter, [](fakes::Disk&, const fakes::Words&) { return 1u; });
     },
     {60451}},
    {"desktop out of reach", [](MaintenanceSession& s) { s.shell.desktop = "Q:\\Desktop"; }, {60451}},
    {"list does not reach the medium",
     [](MaintenanceSession& s) {
       s.processes.beforeWork = [&s](const std::string& command) {
         if (command.find("T_TSTUDY.txt\" \"D:") != std::string::npos) s.disk.FindDrive("D:")->ready = false;
       };
     },
     {60451}},
    {"nothing there for xcopy",
     [](MaintenanceSession& s) {
       s.processes.beforeWork = [&s](const std::string& command) {
         if (command.find("MAINTENANCE.cab\" \"D:") != std::string::npos) {
           s.disk.Remove(s.files.temporaryFolder + "120315093012\\MAINTENANCE.cab");
         }
       };
     },
     {60452}},
};

TEST(MaintenanceLog, FailedWritingIsShownAndEndsTheDialog) {
  for (const Failure& failure : kWritingFailures) {
    SCOPED_TRACE(failure.name);
    MaintenanceSession session;
    failure.arrange(session);
    session.BeginMaintenance();
    session.AcceptFolder("D:\\");
    for (const std::int32_t message : failure.messages) session.person.ExpectMessage(message);
    session.EndMenu();
    session.Run();
    EXPECT_FALSE(session.person.WasShown(65450));
    EXPECT_TRUE(session.IsTemporaryFolderEmpty());
  }
}

/// What stops the writing, with the numbers of this operation.
const Failure kStops[] = {
    {"drive error", [](MaintenanceSession& s) { s.Told().mediaStatuses['D'] = {-1}; }, {63460}},
    {"unusable drive", [](MaintenanceSession& s) { s.Told().mediaStatuses['D'] = {0}; }, {63461}},
    {"no medium", [](MaintenanceSession& s) { s.Told().mediaStatuses['D'] = {1}; }, {64450}},
    {"medium to prepare", [](MaintenanceSession& s) { s.Told().mediaStatuses['D'] = {2}; }, {64455}},
    {"no space", [](MaintenanceSession& s) { s.disk.FindDrive("D:")->capacity = 1; }, {62460}},
    {"foreign label", [](MaintenanceSession& s) { s.disk.FindDrive("D:")->label = "HOLIDAY"; }, {64301}},
    {"new folder", [](MaintenanceSession& s) { s.disk.Remove("D:\\Log"); }, {64452}},
    {"old bundle", [](MaintenanceSession& s) { s.disk.Write("D:\\Log\\MAINTENANCE.cab", "old"); }, {64453}},
};

// The dialog stays open, and the next OK goes through: the list of the first one is not in its way.
TEST(MaintenanceLog, StoppedWritingLeavesTheChoiceOpen) {
  for (const Failure& stop : kStops) {
    SCOPED_TRACE(stop.name);
    MaintenanceSession session;
    session.disk.MakeFolders("D:\\Log");
    session.disk.MakeFolders("C:\\Safe");
    stop.arrange(session);
    session.BeginMaintenance();
    session.AcceptFolder("D:\\Log");
    session.person.ExpectMessage(stop.messages[0], app::kRefused).ExpectMessage(65451, 0, [&] {
      EXPECT_LE(session.disk.Tree("D:\\").size(), 1u);
    });
    session.AcceptFolder("C:\\Safe");
    session.person.ExpectMessage(64301, app::kConsented).ExpectMessage(65450);
    session.EndMenu();
    session.Run();
    ExpectBundle(session, "C:\\Safe\\", kProtected, "studies without names");
  }
}

TEST(MaintenanceLog, FloppyHoldsTheSetAlone) {
  MaintenanceSession session;
  session.BeginMaintenance();
  session.AcceptFolder("A:\\");
  session.person.ExpectFormat(0).ExpectMessage(65450);
  session.EndMenu();
  session.Run();
  const auto disk = session.disk.Tree("A:\\");
  EXPECT_EQ(disk.size(), 2u);
  EXPECT_TRUE(disk.contains("FDDivide001") && disk.contains("BackupInfo.ini"));
  EXPECT_EQ(session.disk.Read(std::string(kDesktop) + "T_TSTUDY.txt"), "studies without names");
  EXPECT_TRUE(session.IsTemporaryFolderEmpty());
}

}  // namespace
