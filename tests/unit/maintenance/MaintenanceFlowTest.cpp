// Maintenance log backups from the main menu to the bundle, and every way in which they end early.
#include "unit/Session.h"

namespace {

using fakes::CabinetContents;

constexpr const char* kExporter = "C:\\Tarsus\\Temp\\StudyDB\\BCP\\Export_StudyDB_TXT_PP.bat";

const CabinetContents kProtected = {{"Application.evt", "events"}, {"image.ddo", "an image"}};
const CabinetContents kUnprotected = {{"Application.evt", "events"},
                                      {"BCP\\Tarsus.log", "host log"},
                                      {"Host\\host.log", "host log"},
                                      {"Host\\Old\\old.log", "old host log"}};

/// The demo workstation with two images, of which one belongs to a patient on the host's list.
struct MaintenanceSession : Session {
  MaintenanceSession() {
    disk.Write("C:\\Tarsus\\Image\\image.ddo", "an image");
    disk.Write("C:\\Tarsus\\Image\\deleted.dat", "of a listed patient");
  }
  void BeginMaintenance() {
    SignIn();
    OpenMenuItem(2);
    StartMaintenance();
  }
  /// The three files of a bundle, and nothing else.
  void ExpectBundle(const std::string& folder, const CabinetContents& contents, const std::string& studies) {
    auto bundle = disk.Tree(folder);
    EXPECT_EQ(bundle.size(), 3u);
    EXPECT_EQ(bundle["BackupInfo.ini"], Lines(DescriptorLines({"CABFile=MAINTENANCE.cab;", "", "[VersionInfo]", ""})));
    EXPECT_EQ(bundle["T_TSTUDY.txt"], studies);
    EXPECT_EQ(Unpacked(folder + "MAINTENANCE.cab"), contents);
    EXPECT_EQ(disk.Read(std::string(kDesktop) + "T_TSTUDY.txt"), studies);
  }
};

TEST(MaintenanceLog, ProtectedBundleReachesTheProposedDesktop) {
  MaintenanceSession session;
  session.BeginMaintenance();
  session.At<frmSelectFolder>([](frmSelectFolder& form) {
    EXPECT_EQ(form.txtFolder.Text(), kDesktop);
    EXPECT_TRUE(form.txtCapacity.Visible());
    fakes::Press(form.cmdOK);
  });
  session.EndAfter({64301, 65450});
  session.ExpectBundle(kDesktop, kProtected, "studies without names");
  EXPECT_EQ(session.ChangedHostFiles(), Paths());
  EXPECT_FALSE(session.IsBackupDated()) << "no backup of data";
  EXPECT_EQ(session.Told().auditRecords.size(), 2u) << "sign-in and sign-out alone";
  EXPECT_EQ(session.Told().operations[1], "WS-RADIOLOGY-1|U004|BackupUtility|MainMenu|MainteLogBackup");
}

// Also after a backup in the same session, whose categories must not get into the descriptor.
TEST(MaintenanceLog, UnprotectedBundleGoesWhereTheOperatorWants) {
  MaintenanceSession session;
  session.BeginBackup(kReportOnly);
  session.AcceptFolder("D:\\");
  session.See({65300});
  session.OpenMenuItem(2);
  session.StartMaintenance(true);
  session.AcceptFolder("D:\\Log");
  session.EndAfter({64452, 65450});
  session.ExpectBundle("D:\\Log\\", kUnprotected, "all studies");
}

TEST(MaintenanceLog, ImagesOfSomeDaysAreCollected) {
  MaintenanceSession session;
  Jobs({"[MAINTENANCE]", "EventLog=", "Folder=Image.DDO"})(session);
  session.Told().studies["SELECT RIGHT(URL,LEN(URL)-7)"].rows = {{"C:\\Tarsus\\Image\\image.ddo", "2012-03-14"}};
  session.SignIn();
  session.OpenMenuItem(2);
  session.At<frmMaintenance>([](frmMaintenance& form) {
    fakes::Tick(form.Option2);
    fakes::Tick(form.Option4);
    fakes::Type(form.txtCollectRange, "123");
    fakes::Press(form.cmdStart);
  });
  session.See({64530});
  session.AcceptFolder("D:\\");
  session.EndAfter({65450});
  session.ExpectBundle("D:\\", {{"Application.evt", "events"}, {"Image\\image.ddo", "an image"}}, "all studies");
  EXPECT_NE(session.Told().statements.back().find("DATEADD(day,-123,GETDATE())"), std::string::npos);
  EXPECT_TRUE(session.processes.started.front().commandLine.ends_with(" 1 123"));
}

TEST(MaintenanceLog, ScriptStandsAroundTheWork) {
  MaintenanceSession session;
  Paths seen;
  session.processes.Install("C:\\Windows\\System32\\cscript.exe", [&](fakes::Disk& disk, const fakes::Words& words) {
    seen.push_back(words[2]);
    for (const auto& [name, bytes] : disk.Tree(words[3])) seen.back() += " " + name;
    return 1u;  // how it ends is nobody's concern
  });
  session.BeginMaintenance();
  session.Cancel<frmSelectFolder>();
  session.EndAfter({});
  EXPECT_EQ(seen, (Paths{"1", "2 Application.evt image.ddo", "3 CABFILE\\MAINTENANCE.cab"}));
}

TEST(MaintenanceLog, CancelledDialogLeavesNothingBehind) {
  MaintenanceSession session;
  session.SignIn(fakes::kBackupUser);
  session.OpenMenuItem(2);
  session.Cancel<frmMaintenance>();
  session.EndAfter({});
  EXPECT_TRUE(session.processes.started.empty());
  EXPECT_EQ(session.ChangedHostFiles(), Paths());
  EXPECT_EQ(session.state.StagingFolder, "");
  EXPECT_EQ(session.state.CurrentOperation, app::Operation::MaintenanceLogBackup);
}

// The first of the filter's codes that is not 0, in the message's second insertion.
TEST(MaintenanceLog, TellsThatPersonalInformationIsLeft) {
  MaintenanceSession session;
  Jobs({"[PERSONALINFOPROTECTION]", "PersonalInfo=%Image%;Report;Menu"})(session);
  session.Told().filterAnswers = {0, 7, 9};
  session.BeginMaintenance();
  session.See({60521});
  session.AcceptFolder("D:\\");
  session.EndAfter({65450});
  const fakes::ShownMessage& shown = session.person.Messages().front();
  EXPECT_EQ(shown.text1 + "|" + shown.text2 + "|" + shown.text3, "|7|");
}

struct Failure {
  const char* name;
  Arrangement arrange;
  Ids messages;
};

const Failure kCollectionFailures[] = {
    {"staging folder", Gone("C:\\Users\\Operator\\Temp"), {60460}},
    {"section missing", Jobs({"[MAINTENANCE]"}), {60470}},
    {"nothing to pack, nor an export folder",
     Both(Jobs({"[PERSONALINFOPROTECTION]"}), Fails("FileSystem", "MakeFolder")),
     {60471}},
    {"archiver missing", Gone(kArchiver), {60471}},
    // After the event log and packing.
    {"archive cannot be moved up", Fails("FileSystem", "MoveTo", 3), {60471}},
};

TEST(MaintenanceLog, FailedCollectionIsShownAndClearedAway) {
  for (const Failure& failure : kCollectionFailures) {
    SCOPED_TRACE(failure.name);
    MaintenanceSession session;
    failure.arrange(session);
    session.BeginMaintenance();
    session.EndAfter(failure.messages);
    EXPECT_EQ(session.processes.CountStarted("Export_StudyDB"), 0);
  }
}

const Failure kWritingFailures[] = {
    {"no folder for temporary files named", NoEntry("Temp"), {60326, 60451}},
    {"exporter missing", Gone(kExporter), {60451}},
    {"no list exported, an old one with names lies about",
     Both(File("C:\\Tarsus\\Temp\\StudyDB\\BCP\\T_TSTUDY.txt", "all studies"), Program(kExporter, DoNothing)),
     {60451}},
    {"desktop out of reach", [](auto& host) { host.shell.desktop = "Q:\\Desktop"; }, {60451}},
    {"list does not reach the medium", Before("T_TSTUDY.txt\" \"D:", NoMedium("D:")), {60451}},
    {"nothing there for xcopy",
     Before("MAINTENANCE.cab\" \"D:", Gone(std::string(kStagingFolder) + "\\MAINTENANCE.cab")),
     {60452}},
};

TEST(MaintenanceLog, FailedWritingIsShownAndEndsTheDialog) {
  for (const Failure& failure : kWritingFailures) {
    SCOPED_TRACE(failure.name);
    MaintenanceSession session;
    failure.arrange(session);
    session.BeginMaintenance();
    session.AcceptFolder("D:\\");
    session.EndAfter(failure.messages);
  }
}

/// What stops the writing, with the numbers of this operation.
const Failure kStops[] = {
    {"drive error", Statuses('D', {-1}), {63460}}, {"medium to prepare", Statuses('D', {2}), {64455}},
    {"no space", Capacity("D:", 1), {62460}},      {"foreign label", Label("D:", "HOLIDAY"), {64301}},
    {"new folder", Gone("D:\\Log"), {64452}},      {"old bundle", File("D:\\Log\\MAINTENANCE.cab", "old"), {64453}},
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
    session.See(stop.messages, app::kRefused);
    session.person.ExpectMessage(65451, 0, [&] { EXPECT_LE(session.disk.Tree("D:\\").size(), 1u); });
    session.AcceptFolder("C:\\Safe");
    session.EndAfter({64301, 65450});
    session.ExpectBundle("C:\\Safe\\", kProtected, "studies without names");
  }
}

TEST(MaintenanceLog, FloppyHoldsTheSetAlone) {
  MaintenanceSession session;
  session.BeginMaintenance();
  session.AcceptFolder("A:\\");
  session.person.ExpectFormat(0);
  session.EndAfter({65450});
  const auto disk = session.disk.Tree("A:\\");
  EXPECT_EQ(disk.size(), 2u);
  EXPECT_TRUE(disk.contains("FDDivide001") && disk.contains("BackupInfo.ini"));
  EXPECT_EQ(session.disk.Read(std::string(kDesktop) + "T_TSTUDY.txt"), "studies without names");
}

}  // namespace
